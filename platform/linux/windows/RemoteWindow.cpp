#include "platform/linux/windows/RemoteWindow.h"

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/RemoteBreakScreen.h"
#include "platform/linux/windows/RemoteWaterPanel.h"

namespace kelpa {

RemoteWindow::RemoteWindow(std::weak_ptr<RemoteWindowHome> home, const WindowSpec& spec)
    : home_(std::move(home)), spec_(spec) {}

RemoteWindow::~RemoteWindow() {
    leave();
}

void RemoteWindow::leave() {
    const auto home = home_.lock();
    if (record_ && home)
        home->forget(record_);
    record_ = nullptr;
}

std::unique_ptr<BreakScreenFace> RemoteWindow::hostBreakScreen(BreakScreenClient& client) {
    if (!fill(wire::view::breakKind))
        return nullptr;
    return std::make_unique<RemoteBreakScreen>(record_, client);
}

std::unique_ptr<WaterPanelFace> RemoteWindow::hostWaterPanel(WaterPanelClient& client) {
    if (!fill(wire::view::waterKind))
        return nullptr;
    return std::make_unique<RemoteWaterPanel>(record_, client);
}

bool RemoteWindow::fill(std::string_view kind) {
    leave();
    if (const auto home = home_.lock()) {
        record_ = home->record(spec_, kind);
        screens_ = home->observeScreens([this] { place(); });
    }
    return record_ != nullptr;
}

void RemoteWindow::setAlpha(double alpha) {
    if (!record_)
        return;
    const auto home = home_.lock();
    if (!home || !record_->visible())
        return record_->setAlpha(alpha);
    // A fade may follow at once: it starts from what is seen, and a window that was going comes back without
    // vanishing first.
    alphaLater_ = home->loop().afterReal(0, [this, alpha] {
        alphaLater_.cancel();
        record_->setAlpha(alpha);
    });
}

void RemoteWindow::fadeTo(double alpha, double seconds, std::function<void()> done) {
    alphaLater_.cancel();
    if (record_)
        record_->fadeTo(alpha, seconds);
    const auto home = home_.lock();
    if (!done || !home)
        return;
    const auto place = fades_.emplace(fades_.end());
    *place = home->loop().afterReal(seconds, [this, place, ended = std::move(done)] {
        fades_.erase(place);
        ended();
    });
}

void RemoteWindow::orderFrontRegardless() {
    if (record_)
        record_->show();
}

void RemoteWindow::close() {
    if (record_)
        record_->hide();
}

void RemoteWindow::setFrame(const Rect& frame, std::uint32_t screen) {
    spec_.frame = frame;
    spec_.screen = screen;
    place();
}

/// Of a window whose screen is gone, the core decides what becomes.
void RemoteWindow::place() {
    const auto home = home_.lock();
    if (!record_ || !home)
        return;
    const WindowPlace place = home->place(spec_.frame, spec_.screen);
    if (!place.connector.empty())
        record_->setPlace(place);
}

} // namespace kelpa
