#pragma once

#include "platform/linux/display/ScreenSource.h"

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

/// What becomes of monitors that show the very same part of the desktop.
enum class Mirrors {
    ShareOneWindow, ///< the window shows on all of them, as on X11
    EachItsOwn,     ///< a window is shown on one output, as on Wayland
};

/// Turns monitors into screens: gives each connector a number that stays its own for as long as the program
/// runs, and counts in points upwards from the first screen's lower left corner. Where windows belong there
/// has to be a screen: while there is no monitor, as on a laptop that wakes with its lid closed, there is one
/// of a common size, on a connector that nobody has.
class ScreenLayout {
  public:
    explicit ScreenLayout(Mirrors mirrors = Mirrors::ShareOneWindow) : mirrors_(mirrors) {}
    /// Monitors without an area are left out, and so is one for which another's window does. True when
    /// the screens differ from before.
    bool update(std::vector<Monitor> monitors);
    [[nodiscard]] const std::vector<Screen>& screens() const { return screens_; }
    /// Null before the first update.
    [[nodiscard]] const Screen* first() const { return screens_.empty() ? nullptr : &screens_.front(); }
    [[nodiscard]] std::string connector(std::uint32_t number) const;
    [[nodiscard]] PixelRect pixels(const Rect& frame) const;
    [[nodiscard]] Rect frame(const PixelRect& pixels) const;
    /// The screen at a pixel of the desktop; null beside them all.
    [[nodiscard]] const Screen* at(int x, int y) const;

  private:
    void tidy(std::vector<Monitor>& monitors) const;
    std::uint32_t numberOf(const std::string& connector);

    Mirrors mirrors_;
    std::map<std::string, std::uint32_t> numbers_;
    std::vector<Monitor> monitors_;
    std::vector<Screen> screens_;
};

} // namespace kelpa
