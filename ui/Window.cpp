#include "ui/Window.h"

namespace kelpa {

namespace {
constexpr double fadeSeconds = 2.0;
}

Window::Window(WindowSystem& system, WindowSpec spec)
    : spec_(std::move(spec)), native_(system.makeWindow(spec_)) {}

void Window::show() {
    closing_.reset();
    native_->setAlpha(0.0);
    native_->fadeTo(1.0, fadeSeconds, {});
    native_->orderFrontRegardless();
}

void Window::close() {
    if (closing_)
        return;
    closing_ = std::make_shared<bool>(true);
    native_->fadeTo(0.0, fadeSeconds, [this, still = std::weak_ptr<bool>(closing_)] {
        if (still.expired())
            return;
        closing_.reset();
        native_->close();
    });
}

void Window::withdraw() {
    closing_.reset();
    native_->close();
}

void Window::setFrame(const Rect& frame) {
    if (frame == spec_.frame)
        return;
    spec_.frame = frame;
    native_->setFrame(frame);
}

} // namespace kelpa
