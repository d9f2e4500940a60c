#pragma once

#include "platform/ports/System.h"

namespace kelpa {

/// The font files that come with the program. This process draws nothing: what draws loads the same file for
/// itself, so that registering a font here means seeing to it that it can be read.
class LinuxFonts final : public Fonts {
  public:
    /// `folder` holds the fonts as NAME.ttf.
    explicit LinuxFonts(std::string folder) : folder_(std::move(folder)) {}

    [[nodiscard]] std::optional<std::vector<unsigned char>> fontAsset(const std::string& name) const override;
    [[nodiscard]] std::optional<std::string> registerFont(const std::vector<unsigned char>& font) override;
    /// Nothing: there is no rasterizer in this process.
    [[nodiscard]] std::optional<GlyphImage> drawGlyph(const std::string& text, const std::string& fontName,
                                                      double size) override;

  private:
    std::string folder_;
};

} // namespace kelpa
