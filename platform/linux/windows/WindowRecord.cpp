#include "platform/linux/windows/WindowRecord.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <algorithm>

namespace kelpa {

WindowRecord::WindowRecord(ViewLink& link, int id, std::string kind, std::string title, WindowPlace place,
                           Presence presence)
    : link_(&link), id_(id), idText_(std::to_string(id)), presence_(presence), kind_(std::move(kind)),
      title_(std::move(title)), place_(std::move(place)) {
    sendOpen();
}

bool WindowRecord::known() const {
    return link_ != nullptr && (visible_ || presence_ == Presence::Always);
}

template <typename... Values>
void WindowRecord::send(std::string_view verb, const Values&... values) const {
    if (known())
        link_->send({verb, idText_, values...});
}

void WindowRecord::sendOpen() const {
    const PixelRect& at = place_.pixels;
    send(wire::view::open, kind_, title_, std::to_string(at.x), std::to_string(at.y),
         std::to_string(at.width), std::to_string(at.height), place_.connector);
}

void WindowRecord::setTitle(const std::string& title) {
    if (title == title_)
        return;
    title_ = title;
    sendOpen();
}

void WindowRecord::setPlace(const WindowPlace& place) {
    if (place == place_)
        return;
    place_ = place;
    sendOpen();
}

void WindowRecord::didMove(int x, int y) {
    place_.pixels.x = x;
    place_.pixels.y = y;
}

/// Keeps the value; false when it was that already.
bool WindowRecord::store(std::string_view name, std::string_view value) {
    const auto found = std::find_if(properties_.begin(), properties_.end(),
                                    [name](const auto& property) { return property.first == name; });
    if (found == properties_.end())
        properties_.emplace_back(name, value);
    else if (found->second == value)
        return false;
    else
        found->second.assign(value);
    return true;
}

void WindowRecord::setProperty(std::string_view name, std::string_view value) {
    if (store(name, value))
        send(wire::view::set, name, value);
}

void WindowRecord::assertProperty(std::string_view name, std::string_view value) {
    store(name, value);
    send(wire::view::set, name, value);
}

void WindowRecord::tell(std::string_view control, std::string_view field, std::string_view type,
                        std::string_view value) const {
    send(wire::view::tell, control, field, type, value);
}

void WindowRecord::setAlpha(double alpha) {
    alpha_ = alpha;
    fadeLength_ = {};
    send(wire::view::alpha, wire::realText(alpha));
}

void WindowRecord::fadeTo(double alpha, double seconds) {
    fadeFrom_ = opacityNow();
    alpha_ = alpha;
    fadeStart_ = Clock::now();
    fadeLength_ = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    send(wire::view::fade, wire::realText(alpha), wire::realText(seconds));
}

void WindowRecord::show() {
    const bool wasKnown = known();
    visible_ = true;
    if (link_ == nullptr)
        return;
    // A view that starts only now is told everything anyway.
    if (!wasKnown)
        replay();
    link_->visibilityChanged();
    if (wasKnown)
        send(wire::view::show);
}

void WindowRecord::hide() {
    if (!visible_)
        return;
    send(presence_ == Presence::Always ? wire::view::hide : wire::view::drop);
    visible_ = false;
    if (link_ != nullptr)
        link_->visibilityChanged();
}

void WindowRecord::leave() {
    hide();
    send(wire::view::drop);
    link_ = nullptr;
    handler_ = nullptr;
    controlHandler_ = nullptr;
    replayed_ = nullptr;
}

void WindowRecord::setActionHandler(ActionHandler handler) {
    handler_ = std::move(handler);
}

void WindowRecord::didAct(const std::string& action, const std::string& value) const {
    // A copy, because what it sets off may take the window away.
    const auto handler = handler_;
    if (visible_ && handler)
        handler(action, value);
}

void WindowRecord::setControlHandler(std::function<void(const wire::Message&)> handler) {
    controlHandler_ = std::move(handler);
}

void WindowRecord::didToControl(const wire::Message& message) const {
    if (visible_ && controlHandler_)
        controlHandler_(message);
}

void WindowRecord::replay() const {
    sendOpen();
    for (const auto& [name, value] : properties_)
        send(wire::view::set, name, value);
    if (replayed_)
        replayed_();
    replayOpacity();
    if (visible_)
        send(wire::view::show);
}

/// What is seen of the window, were it drawn by the clock.
double WindowRecord::opacityNow() const {
    const auto left = fadeStart_ + fadeLength_ - Clock::now();
    if (left <= Clock::duration::zero())
        return alpha_;
    const double part = std::chrono::duration<double>(left) / std::chrono::duration<double>(fadeLength_);
    return alpha_ + (fadeFrom_ - alpha_) * part;
}

void WindowRecord::replayOpacity() const {
    const std::chrono::duration<double> left = fadeStart_ + fadeLength_ - Clock::now();
    send(wire::view::alpha, wire::realText(opacityNow()));
    if (left.count() > 0)
        send(wire::view::fade, wire::realText(alpha_), wire::realText(left.count()));
}

} // namespace kelpa
