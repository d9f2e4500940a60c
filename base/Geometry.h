#pragma once

namespace kelpa {

/// A size in points.
struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

/// A rectangle in points on the desktop. The y axis points up, as on paper: `y` is the lower edge, and the
/// first screen's lower left corner is (0, 0). A face whose desktop counts downwards converts.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double maxY() const { return y + height; }
    bool operator==(const Rect&) const = default;
};

} // namespace kelpa
