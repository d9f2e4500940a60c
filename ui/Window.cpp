#include "ui/Window.h"

#include <algorithm>
#include <numeric>

namespace kelpa {

namespace {

constexpr double fadeSeconds = 2.0;
constexpr double roundingError = 0.5; ///< in square points

double overlap(const Rect& a, const Rect& b) {
    const double width = std::min(a.maxX(), b.maxX()) - std::max(a.x, b.x);
    const double height = std::min(a.maxY(), b.maxY()) - std::max(a.y, b.y);
    return std::max(width, 0.0) * std::max(height, 0.0);
}

double seenOn(const std::vector<Screen>& screens, const Rect& frame) {
    return std::accumulate(screens.begin(), screens.end(), 0.0, [&frame](double sum, const Screen& screen) {
        return sum + overlap(frame, screen.frame);
    });
}

} // namespace

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

void PanelPlace::dropped(const Rect& frame, const std::vector<Screen>& screens) {
    const auto most =
        std::max_element(screens.begin(), screens.end(), [&frame](const Screen& a, const Screen& b) {
            return overlap(frame, a.frame) < overlap(frame, b.frame);
        });
    const double seen = seenOn(screens, frame);
    if (seen > 0)
        drop_ = Drop{most->number, frame.x - most->frame.x, most->frame.maxY() - frame.maxY(), seen};
}

Rect PanelPlace::dragged(const Drop& drop, const Rect& screen) const {
    return {screen.x + drop.right, screen.maxY() - drop.down - size_.height, size_.width, size_.height};
}

Rect PanelPlace::corner(const Rect& screen) const {
    return {screen.maxX() - size_.width, screen.maxY() - size_.height, size_.width, size_.height};
}

PanelPlace::Place PanelPlace::on(const std::vector<Screen>& screens, const Screen& home) const {
    const auto dropScreen = std::find_if(screens.begin(), screens.end(), [this](const Screen& screen) {
        return drop_ && screen.number == drop_->screen;
    });
    if (dropScreen != screens.end()) {
        const Rect frame = dragged(*drop_, dropScreen->frame);
        if (seenOn(screens, frame) > drop_->seen - roundingError)
            return {dropScreen->number, frame};
    }
    return {home.number, corner(home.frame)};
}

} // namespace kelpa
