#pragma once

#include "platform/ports/System.h"

namespace kelpa {

/// The fonts among the bundle's resources, and Core Text's registry.
class MacFonts final : public Fonts {
  public:
    [[nodiscard]] std::optional<std::vector<unsigned char>> fontAsset(const std::string& name) const override;
    [[nodiscard]] std::optional<std::string> registerFont(const std::vector<unsigned char>& font) override;
    [[nodiscard]] std::optional<GlyphImage> drawGlyph(const std::string& text, const std::string& fontName,
                                                      double size) override;
};

} // namespace kelpa
