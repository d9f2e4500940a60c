#pragma once

#include "platform/linux/windows/ScreenSource.h"

#include <map>
#include <string>
#include <vector>

namespace kelpa {

/// A monitor as the display server tells of it.
struct Monitor {
    std::string connector;
    PixelRect pixels;
    bool primary = false;
    bool operator==(const Monitor&) const = default;
};

/// Turns monitors into screens: gives each connector a number that stays its own for as long as the program
/// runs, and counts in points upwards from the first screen's lower left corner.
class ScreenLayout {
  public:
    /// Monitors without an area are left out, and so is one that shows the very same part of the desktop as
    /// another: one window covers both. True when anything differs from before.
    bool update(std::vector<Monitor> monitors);
    [[nodiscard]] const std::vector<Screen>& screens() const { return screens_; }
    [[nodiscard]] std::string connector(std::uint32_t number) const;
    [[nodiscard]] PixelRect pixels(const Rect& frame) const;
    /// The screen at a pixel of the desktop; null beside them all.
    [[nodiscard]] const Screen* at(int x, int y) const;

  private:
    std::uint32_t numberOf(const std::string& connector);
    [[nodiscard]] Rect frame(const PixelRect& pixels) const;

    std::map<std::string, std::uint32_t> numbers_;
    std::vector<Monitor> monitors_;
    std::vector<Screen> screens_;
};

} // namespace kelpa
