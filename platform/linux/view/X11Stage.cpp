#include "platform/linux/view/X11Stage.h"

#include "platform/linux/view/X11Host.h"

#include <QQuickWindow>

namespace kelpa::view {

std::unique_ptr<WindowHost> X11Stage::makeHost(QQuickWindow& window, QQuickItem& content, WindowRole role) {
    return std::make_unique<X11Host>(window, content, role);
}

void X11Stage::guardKeyboard(QQuickWindow* window) {
    keyboard_.guard(window);
}

void X11Stage::keepOnTop(const std::vector<QQuickWindow*>& windows) {
    std::vector<xcb_window_t> ids;
    for (const QQuickWindow* window : windows)
        ids.push_back(static_cast<xcb_window_t>(window->winId()));
    stack_.keep(std::move(ids));
}

} // namespace kelpa::view
