#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// A picture of the item as raw pixels: 32 bits each, alpha first, row by row.
struct Pixmap {
    int size = 0;
    std::string pixels;
};

// The pictures that come with the program, in its data folder `data`. They are read when a host asks, which
// is seldom, and not kept.

/// The item's picture in the sizes that there are; those that are missing or damaged are left out.
[[nodiscard]] std::vector<Pixmap> itemPixmaps(const std::string& data);
/// The drawing of a menu symbol as a PNG file's bytes; nothing where there is none.
[[nodiscard]] std::optional<std::string> symbolPicture(const std::string& data, const std::string& name);

} // namespace kelpa
