#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// A drawn glyph: premultiplied 32-bit ARGB pixels, row by row.
struct GlyphImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// The bundled fonts and the system's font registry.
class Fonts {
  public:
    virtual ~Fonts() = default;
    /// The bytes of a data asset; nothing when it is missing or no font can be made of it.
    [[nodiscard]] virtual std::optional<std::vector<unsigned char>>
    fontAsset(const std::string& name) const = 0;
    /// Makes a font known to this process; gives the error's description when the system refuses it.
    [[nodiscard]] virtual std::optional<std::string> registerFont(const std::vector<unsigned char>& font) = 0;
    /// Draws a text into an image of `size` × `size` points; nothing where the font cannot be made here.
    [[nodiscard]] virtual std::optional<GlyphImage> drawGlyph(const std::string& text,
                                                              const std::string& fontName, double size) = 0;
};

} // namespace kelpa
