#include "platform/linux/LinuxFonts.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <iterator>

namespace kelpa {

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t headerSize = 12;
constexpr std::size_t recordSize = 16;

std::uint32_t number(const Bytes& font, std::size_t position, std::size_t width) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i)
        value = value << 8 | font[position + i];
    return value;
}

bool hasOutlineTag(const Bytes& font) {
    constexpr std::array<std::uint32_t, 3> tags = {0x00010000, 0x4F54544F /* OTTO */, 0x74727565 /* true */};
    return font.size() >= headerSize && std::find(tags.begin(), tags.end(), number(font, 0, 4)) != tags.end();
}

/// Whether the table's record lies inside the file, and the table as well.
bool tableFits(const Bytes& font, std::size_t index) {
    const std::size_t record = headerSize + index * recordSize;
    if (record + recordSize > font.size())
        return false;
    const std::uint64_t offset = number(font, record + 8, 4), length = number(font, record + 12, 4);
    return offset + length <= font.size();
}

bool hasTable(const Bytes& font, std::size_t count, const char* tag) {
    for (std::size_t i = 0; i < count; ++i)
        if (std::memcmp(&font[headerSize + i * recordSize], tag, 4) == 0)
            return true;
    return false;
}

/// What is wrong with a font file; nothing when a font can be made of it.
std::optional<std::string> defectOf(const Bytes& font) {
    if (!hasOutlineTag(font))
        return "not a TrueType or OpenType font";
    const std::size_t count = number(font, 4, 2);
    for (std::size_t i = 0; i < count; ++i)
        if (!tableFits(font, i))
            return "a font table lies outside the file";
    for (const char* tag : {"cmap", "head", "hhea", "hmtx", "maxp", "name"})
        if (!hasTable(font, count, tag))
            return std::string("the font has no table ") + tag;
    return std::nullopt;
}

class LinuxFonts final : public Fonts {
  public:
    explicit LinuxFonts(std::string folder) : folder_(std::move(folder)) {}

    [[nodiscard]] std::optional<Bytes> fontAsset(const std::string& name) const override {
        std::ifstream file(folder_ + "/" + name + ".ttf", std::ios::binary);
        if (!file)
            return std::nullopt;
        Bytes font{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        return defectOf(font) ? std::nullopt : std::optional(std::move(font));
    }

    [[nodiscard]] std::optional<std::string> registerFont(const Bytes& font) override {
        return defectOf(font);
    }

    /// Nothing: there is no rasterizer in this process.
    [[nodiscard]] std::optional<GlyphImage>
    drawGlyph(const std::string& /*text*/, const std::string& /*fontName*/, double /*size*/) override {
        return std::nullopt;
    }

  private:
    std::string folder_;
};

} // namespace

std::unique_ptr<Fonts> makeLinuxFonts(std::string folder) {
    return std::make_unique<LinuxFonts>(std::move(folder));
}

} // namespace kelpa
