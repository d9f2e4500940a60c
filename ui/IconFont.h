#pragma once

#include "platform/ports/System.h"
#include "platform/ports/WindowSystem.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// A text in a font that is known by its name.
struct GlyphView {
    std::string text;
    std::string fontName;
    double pointSize = 0;
};

/// The program's own icon font. Its glyphs lie in the private-use area.
class IconFont {
  public:
    static const IconFont kelpa;
    static const IconFont kelpagun;

    /// A text of one character.
    [[nodiscard]] const std::string& rawValue() const { return rawValue_; }

    /// The registry to use; it must outlive the process's last use of the font.
    static void wire(Fonts& registry);
    /// Registers the font on first use and gives its name. A missing or refused font ends the process.
    [[nodiscard]] static const std::string& name();

    /// The glyph as a text of a size in points.
    [[nodiscard]] GlyphView view(double size) const;
    /// The glyph as an image of `size` × `size` points; nothing when the font cannot be made.
    [[nodiscard]] std::optional<GlyphImage> loadIcon(double size) const;

  private:
    explicit IconFont(std::string rawValue) : rawValue_(std::move(rawValue)) {}
    std::string rawValue_;
};

} // namespace kelpa
