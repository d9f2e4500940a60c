#pragma once

#include "platform/ports/WindowSystem.h"

#include <cstdint>
#include <functional>
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

/// The screens as the window system knows them.
class ScreenSource {
  public:
    virtual ~ScreenSource() = default;
    /// The primary screen comes first. Never empty: while there is no monitor, one screen is told of that no
    /// monitor ever shows.
    [[nodiscard]] virtual const std::vector<Screen>& screens() const = 0;
    /// The one that has the keyboard focus, else the first.
    [[nodiscard]] virtual const Screen* mainScreen() = 0;
    /// The connector's name; empty for a number that no screen has now.
    [[nodiscard]] virtual std::string connector(std::uint32_t number) const = 0;
    /// Where a frame lies with the screens as they are now.
    [[nodiscard]] virtual PixelRect pixels(const Rect& frame) const = 0;
    /// The frame that lies there.
    [[nodiscard]] virtual Rect frame(const PixelRect& pixels) const = 0;
    /// `changed` runs from the main loop, once for a burst of changes; an empty one ends that.
    virtual void observe(std::function<void()> changed) = 0;
};

/// Who has the keyboard.
class FocusMemory {
  public:
    virtual ~FocusMemory() = default;
    /// Keeps in mind who has the keyboard now, unless that is already kept.
    virtual void remember() = 0;
    /// Gives the keyboard back and forgets; does nothing when nothing is kept.
    virtual void giveBack() = 0;
};

} // namespace kelpa
