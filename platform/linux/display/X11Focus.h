#pragma once

#include "platform/linux/display/ScreenSource.h"
#include "platform/linux/display/X11Connection.h"

#include <optional>

namespace kelpa {

/// Remembers the X window that has the input focus and gives it back.
class X11Focus final : public FocusMemory {
  public:
    /// The connection outlives the memory.
    explicit X11Focus(X11Connection& connection) : connection_(connection) {}
    void remember() override;
    void giveBack() override;

  private:
    struct Focus {
        xcb_window_t window;
        std::uint8_t revertTo;
    };
    [[nodiscard]] bool othersHaveIt();
    [[nodiscard]] bool canHaveFocus(xcb_window_t window);
    void activateTopmost();

    X11Connection& connection_;
    std::optional<Focus> kept_;
};

} // namespace kelpa
