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

/// The pictures that come with the program. They are read when a host asks, which is seldom, and not kept.
class ItemPictures {
  public:
    /// `folder` is the program's data folder.
    explicit ItemPictures(std::string folder) : folder_(std::move(folder)) {}

    /// Where hosts find the symbolic icon by its name.
    [[nodiscard]] std::string themeFolder() const { return folder_ + "/icons"; }
    /// The item's picture in the sizes that there are; those that are missing or damaged are left out.
    [[nodiscard]] std::vector<Pixmap> pixmaps() const;
    /// The drawing of a menu symbol as a PNG file's bytes; nothing where there is none.
    [[nodiscard]] std::optional<std::string> symbol(const std::string& name) const;

  private:
    std::string folder_;
};

} // namespace kelpa
