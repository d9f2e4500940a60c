#pragma once

#include "platform/linux/EventLoop.h"

#include <functional>
#include <utility>

namespace kelpa {

/// What comes of a click on the item that its host leaves to the program: the menu opens where one can be
/// shown, and else the settings. Some hosts open the menu themselves and tell of the click as well, before or
/// after; then nothing more is shown.
class ItemActivation {
  public:
    /// Real seconds in which a host's own menu comes, counted from the click it told of. A person does not
    /// wait for longer.
    static constexpr double patience = 0.2;
    /// Real seconds in which a menu that has just opened or closed belongs to the click that is told of.
    static constexpr double clickLasts = 0.5;

    struct Ways {
        std::function<bool()> showMenu; ///< false where none can be shown
        std::function<void()> closeMenu;
        std::function<void()> showSettings;
    };

    /// The loop outlives the object.
    ItemActivation(EventLoop& loop, Ways ways) : loop_(loop), ways_(std::move(ways)) {}

    /// A host tells of a click.
    void activate() {
        const bool menusClick = monotonicSeconds() - menuMoved_ < clickLasts;
        if (!menusClick && !waiting_.active())
            waiting_ = loop_.afterReal(patience, [this] { show(); });
    }

    /// A host has opened or closed its own menu.
    void hostsMenuMoved(bool open) {
        menuMoved_ = monotonicSeconds();
        if (!open)
            return;
        waiting_.cancel();
        ways_.closeMenu();
    }

    /// The menu that was shown here has closed, as by a click on the item, which is then told of.
    void menuClosed() { menuMoved_ = monotonicSeconds(); }

  private:
    void show() {
        waiting_.cancel();
        if (!ways_.showMenu())
            ways_.showSettings();
    }

    EventLoop& loop_;
    Ways ways_;
    Subscription waiting_;
    double menuMoved_ = -clickLasts; ///< when a menu last opened or closed, on the monotonic clock
};

} // namespace kelpa
