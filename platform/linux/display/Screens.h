#pragma once

#include "platform/ports/WindowSystem.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kelpa {

/// A rectangle in pixels of the desktop, whose y axis points down.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;
};

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

/// The monitors as screens: each connector has a number that stays its own for as long as the program runs,
/// and points count upwards from the first screen's lower left corner. Where windows belong there has to be a
/// screen: while there is no monitor, as on a laptop that wakes with its lid closed, there is one of a common
/// size, on a connector that nobody has.
class Screens {
  public:
    explicit Screens(Mirrors mirrors = Mirrors::ShareOneWindow) : mirrors_(mirrors) {}
    virtual ~Screens() = default;
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;

    /// The primary screen comes first. Never empty once there was an update.
    [[nodiscard]] const std::vector<Screen>& all() const { return screens_; }
    /// The one that has the keyboard focus, else the first; null before the first update.
    [[nodiscard]] virtual const Screen* mainScreen() { return first(); }
    /// The connector's name; empty for a number that no screen has now.
    [[nodiscard]] std::string connector(std::uint32_t number) const;
    /// Where a frame lies with the screens as they are now.
    [[nodiscard]] PixelRect pixels(const Rect& frame) const;
    /// The frame that lies there.
    [[nodiscard]] Rect frame(const PixelRect& pixels) const;
    /// The screen at a pixel of the desktop; null beside them all.
    [[nodiscard]] const Screen* at(int x, int y) const;

    /// `changed` runs whenever the screens are others; an empty one ends that.
    void observe(std::function<void()> changed) { changed_ = std::move(changed); }
    /// These are the monitors from now on. Those without an area are left out, and so is one for which
    /// another's window does. True when the screens differ from before.
    bool update(std::vector<Monitor> monitors);

  protected:
    [[nodiscard]] const Screen* first() const { return screens_.empty() ? nullptr : &screens_.front(); }

  private:
    void tidy(std::vector<Monitor>& monitors) const;
    std::uint32_t numberOf(const std::string& connector);

    Mirrors mirrors_;
    std::map<std::string, std::uint32_t> numbers_;
    std::vector<Monitor> monitors_;
    std::vector<Screen> screens_;
    std::function<void()> changed_;
};

} // namespace kelpa
