#include "platform/linux/tray/ItemActivation.h"

namespace kelpa {

void ItemActivation::activate() {
    const bool menusClick = monotonicSeconds() - menuMoved_ < clickLasts;
    if (!menusClick && !waiting_.active())
        waiting_ = loop_.afterReal(patience, [this] { show(); });
}

void ItemActivation::show() {
    waiting_.cancel();
    if (!ways_.showMenu())
        ways_.showSettings();
}

void ItemActivation::hostsMenuMoved(bool open) {
    menuMoved_ = monotonicSeconds();
    if (!open)
        return;
    waiting_.cancel();
    ways_.closeMenu();
}

/// A click on the item closes the menu, and is then told of.
void ItemActivation::menuClosed() {
    menuMoved_ = monotonicSeconds();
}

} // namespace kelpa
