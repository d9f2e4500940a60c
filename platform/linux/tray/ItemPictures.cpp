#include "platform/linux/tray/ItemPictures.h"

#include <fstream>
#include <iterator>

namespace kelpa {

namespace {

constexpr int sizes[] = {16, 22, 24, 32, 44, 48};
constexpr std::size_t bytesAPixel = 4;

std::optional<std::string> contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::size_t bytesOf(int size) {
    return static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * bytesAPixel;
}

} // namespace

std::vector<Pixmap> itemPixmaps(const std::string& data) {
    std::vector<Pixmap> found;
    for (const int size : sizes) {
        auto pixels = contentOf(data + "/pixmaps/kelpa-" + std::to_string(size) + ".argb");
        if (pixels && pixels->size() == bytesOf(size))
            found.push_back({size, std::move(*pixels)});
    }
    return found;
}

std::optional<std::string> symbolPicture(const std::string& data, const std::string& name) {
    // A name is never a path that leads elsewhere.
    if (name.empty() || name.find('/') != std::string::npos)
        return std::nullopt;
    return contentOf(data + "/symbols/" + name + ".png");
}

} // namespace kelpa
