#pragma once

#include "platform/linux/view/Delay.h"
#include "platform/linux/view/X11.h"

#include <QDeadlineTimer>
#include <map>
#include <vector>

namespace kelpa::view {

/// Brings windows back to the top when something was put above them. It gives up against a window that climbs
/// again and again, as a screen locker's does, for the rest of a minute or until it is told of windows anew.
class StackKeeper : private x11::EventFilter {
  public:
    StackKeeper() = default;
    ~StackKeeper() override { keepBottom(false); }
    StackKeeper(const StackKeeper&) = delete;
    StackKeeper& operator=(const StackKeeper&) = delete;
    /// Keeps these on top from now on, and no others; the first is the lowest of them.
    void keep(std::vector<xcb_window_t> windows);

  private:
    void hear(int type, const xcb_generic_event_t& event) override;
    [[nodiscard]] bool isOurs(xcb_window_t window) const;
    void answer(xcb_window_t climber);
    void raiseAll();
    void keepBottom(bool wanted);

    /// How often a window was answered that climbed.
    struct Answers {
        QDeadlineTimer forgotten;
        int given = 0;
    };

    std::vector<xcb_window_t> windows_;
    xcb_window_t bottom_ = XCB_WINDOW_NONE; ///< while windows are kept and something composites them
    Delay soon_{std::chrono::milliseconds(100), [this] { raiseAll(); }};
    std::map<xcb_window_t, Answers> answers_;
};

} // namespace kelpa::view
