#include "ui/Window.h"

namespace kelpa {

namespace {
constexpr double fadeSeconds = 2.0;
}

Window::Window(WindowSystem& system, WindowSpec spec)
    : spec_(std::move(spec)), native_(system.makeWindow(spec_)) {}

void Window::show() {
    const bool hidden = !visible();
    closing_.reset();
    native_->setAlpha(0.0);
    native_->fadeTo(1.0, fadeSeconds, {});
    native_->orderFrontRegardless();
    if (!content_)
        return;
    if (hidden)
        content_->appeared();
    content_->shown();
}

void Window::close() {
    if (closing_)
        return;
    closing_ = std::make_shared<bool>(true);
    native_->fadeTo(0.0, fadeSeconds, [this, still = std::weak_ptr<bool>(closing_)] {
        if (!still.expired())
            withdraw();
    });
}

void Window::withdraw() {
    const bool shown = visible();
    closing_.reset();
    native_->close();
    if (shown && content_)
        content_->disappeared();
}

void Window::setFrame(const Rect& frame, std::uint32_t screen) {
    if (frame == spec_.frame && screen == spec_.screen)
        return;
    spec_.frame = frame;
    spec_.screen = screen;
    native_->setFrame(frame, screen);
}

} // namespace kelpa
