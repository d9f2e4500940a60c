#include "platform/linux/windows/RemoteWindow.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"
#include "platform/linux/windows/RemoteWindowSystem.h"

#include <algorithm>

namespace kelpa {

namespace word = wire::view;

namespace {

/// The break screen as a few properties of its window.
class RemoteBreakScreen final : public BreakScreenFace {
  public:
    RemoteBreakScreen(RemoteWindow& window, BreakScreenClient& client) : window_(window) {
        window_.setActionHandler([&client](const std::string& action, const std::string& /*value*/) {
            if (action == "skip")
                client.skipPressed();
            else if (action == "notice")
                client.noticeTapped();
        });
    }
    ~RemoteBreakScreen() override { window_.setActionHandler(nullptr); }
    RemoteBreakScreen(const RemoteBreakScreen&) = delete;
    RemoteBreakScreen& operator=(const RemoteBreakScreen&) = delete;

    void setTexts(const BreakScreenTexts& texts) override { window_.setProperty("texts", partsJson(texts)); }
    void setPrompt(const std::string& prompt) override {
        window_.setProperty("prompt", shortened(prompt, word::longestText));
    }
    void setCount(const std::string& count) override { window_.setProperty("count", count); }
    void setSkipOffered(bool offered) override { window_.setProperty("skipOffered", offered ? "1" : "0"); }

  private:
    RemoteWindow& window_;
};

void tapped(WaterPanelClient& client, const std::string& amount) {
    if (const auto millilitres = wholeNumber<std::int64_t>(amount))
        client.amountTapped(*millilitres);
}

void act(WaterPanelClient& client, const std::string& action, const std::string& value) {
    if (action == "amount")
        tapped(client, value);
    else if (action == "skip")
        client.skipPressed();
    else if (action == "done")
        client.donePressed();
    else if (action == "close")
        client.closePressed();
}

/// The water panel as a few properties of its window.
class RemoteWaterPanel final : public WaterPanelFace {
  public:
    RemoteWaterPanel(RemoteWindow& window, WaterPanelClient& client) : window_(window) {
        window_.setActionHandler(
            [&client](const std::string& action, const std::string& value) { act(client, action, value); });
    }
    ~RemoteWaterPanel() override { window_.setActionHandler(nullptr); }
    RemoteWaterPanel(const RemoteWaterPanel&) = delete;
    RemoteWaterPanel& operator=(const RemoteWaterPanel&) = delete;

    void setTexts(const WaterPanelTexts& texts, const std::vector<WaterAmount>& amounts) override {
        window_.setProperty("texts", partsJson(texts));
        std::vector<std::pair<std::string, std::string>> entries;
        for (const auto& [millilitres, text] : amounts)
            entries.emplace_back(std::to_string(millilitres), text);
        window_.setProperty("amounts", choicesJson(entries));
    }
    void setProgress(const WaterProgress& progress) override {
        window_.setProperty("progress", partsJson(progress));
    }
    void setCounting(const WaterCounting& counting) override {
        window_.setProperty("tip", counting.tip);
        window_.setProperty("remaining", counting.remaining);
    }
    void setSelectedAmount(std::int64_t millilitres) override {
        window_.setProperty("selectedAmount", std::to_string(millilitres));
    }
    void offerAnswers() override { window_.assertProperty("answered", "0"); }

  private:
    RemoteWindow& window_;
};

} // namespace

RemoteWindow::RemoteWindow(RemoteWindowSystem& system, std::string_view kind, const WindowSpec& spec,
                           Placing placing)
    : system_(&system), id_(system.join(*this)), idText_(std::to_string(id_)), kind_(kind), spec_(spec),
      placing_(placing) {
    if (placing == Placing::Ours) {
        pixels_ = system.layout().pixels(spec.frame);
        connector_ = system.layout().connector(spec.screen);
    }
    sendOpen();
}

RemoteWindow::~RemoteWindow() {
    close();
    sendDrop();
    if (system_ != nullptr)
        system_->forget(*this);
}

std::unique_ptr<BreakScreenFace> RemoteWindow::hostBreakScreen(BreakScreenClient& client) {
    return std::make_unique<RemoteBreakScreen>(*this, client);
}

std::unique_ptr<WaterPanelFace> RemoteWindow::hostWaterPanel(WaterPanelClient& client) {
    return std::make_unique<RemoteWaterPanel>(*this, client);
}

bool RemoteWindow::known() const {
    return system_ != nullptr && (visible_ || placing_ == Placing::Ours);
}

template <typename... Values>
void RemoteWindow::send(std::string_view verb, const Values&... values) const {
    if (known())
        system_->view().send({idText_, verb, values...});
}

void RemoteWindow::sendOpen() const {
    if (known())
        system_->view().send({word::open, idText_, kind_, spec_.title, std::to_string(pixels_.x),
                              std::to_string(pixels_.y), std::to_string(pixels_.width),
                              std::to_string(pixels_.height), connector_});
}

void RemoteWindow::sendDrop() const {
    if (known())
        system_->view().send({word::drop, idText_});
}

void RemoteWindow::setTitle(const std::string& title) {
    if (title == spec_.title)
        return;
    spec_.title = title;
    sendOpen();
}

void RemoteWindow::setFrame(const Rect& frame, std::uint32_t screen) {
    spec_.frame = frame;
    spec_.screen = screen;
    place();
}

/// Of a window whose screen is gone, the core decides what becomes.
void RemoteWindow::place() {
    if (system_ == nullptr || placing_ != Placing::Ours)
        return;
    const std::string connector = system_->layout().connector(spec_.screen);
    if (!connector.empty())
        setPlace(system_->layout().pixels(spec_.frame), connector);
}

void RemoteWindow::setPlace(const PixelRect& pixels, const std::string& connector) {
    if (pixels == pixels_ && connector == connector_)
        return;
    pixels_ = pixels;
    connector_ = connector;
    sendOpen();
}

void RemoteWindow::hear(const wire::Message& message) {
    if (message.verb() == word::action)
        didAct(message.field(1), message.field(2));
    else if (message.verb() == word::closed)
        didClose(message);
    else if (message.verb() == word::dragged)
        didDrag(message);
}

/// It comes back where it stood.
void RemoteWindow::didClose(const wire::Message& message) {
    pixels_ = {message.number(1).value_or(0), message.number(2).value_or(0), message.number(3).value_or(0),
               message.number(4).value_or(0)};
    didAct(std::string(word::closedAction), "");
}

void RemoteWindow::didDrag(const wire::Message& message) {
    const auto x = message.number(1);
    const auto y = message.number(2);
    if (!x || !y)
        return;
    pixels_.x = *x;
    pixels_.y = *y;
    system_->didDrag(*this);
}

/// Keeps the value; false when it was that already.
bool RemoteWindow::store(std::string_view name, std::string_view value) {
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

void RemoteWindow::setProperty(std::string_view name, std::string_view value) {
    if (store(name, value))
        send(word::set, name, value);
}

void RemoteWindow::assertProperty(std::string_view name, std::string_view value) {
    store(name, value);
    send(word::set, name, value);
}

void RemoteWindow::setAlpha(double alpha) {
    if (system_ == nullptr || !visible_)
        return sendAlpha(alpha);
    // A fade may follow at once: it starts from what is seen, and a window that was going comes back without
    // vanishing first.
    alphaLater_ = system_->loop().afterReal(0, [this, alpha] {
        alphaLater_.cancel();
        sendAlpha(alpha);
    });
}

void RemoteWindow::sendAlpha(double alpha) {
    alpha_ = alpha;
    fadeEnd_ = 0;
    send(word::alpha, wire::realText(alpha));
}

void RemoteWindow::fadeTo(double alpha, double seconds, std::function<void()> done) {
    alphaLater_.cancel();
    startFade(alpha, seconds);
    if (!done || system_ == nullptr)
        return;
    const auto place = fades_.emplace(fades_.end());
    *place = system_->loop().afterReal(seconds, [this, place, ended = std::move(done)] {
        fades_.erase(place);
        ended();
    });
}

void RemoteWindow::startFade(double alpha, double seconds) {
    fadeFrom_ = opacityNow();
    alpha_ = alpha;
    fadeEnd_ = monotonicSeconds() + seconds;
    fadeSeconds_ = seconds;
    send(word::fade, wire::realText(alpha), wire::realText(seconds));
}

/// What is seen of the window, were it drawn by the clock.
double RemoteWindow::opacityNow() const {
    const double left = fadeEnd_ - monotonicSeconds();
    return left > 0 ? alpha_ + (fadeFrom_ - alpha_) * left / fadeSeconds_ : alpha_;
}

void RemoteWindow::orderFrontRegardless() {
    const bool wasKnown = known();
    if (placing_ == Placing::WindowManagers && !visible_ && system_ != nullptr)
        if (const Screen* screen = system_->mainScreen())
            connector_ = system_->layout().connector(screen->number);
    visible_ = true;
    if (system_ == nullptr)
        return;
    // A view that starts only now is told everything anyway.
    if (!wasKnown)
        replay();
    system_->visibilityChanged();
    if (wasKnown)
        send(word::show);
}

void RemoteWindow::close() {
    if (!visible_)
        return;
    if (placing_ == Placing::Ours)
        send(word::hide);
    else
        sendDrop();
    visible_ = false;
    if (system_ != nullptr)
        system_->visibilityChanged();
}

void RemoteWindow::didAct(const std::string& action, const std::string& value) const {
    // A copy, because what it sets off may take the window away.
    const auto handler = handler_;
    if (visible_ && handler)
        handler(action, value);
}

void RemoteWindow::replay() const {
    sendOpen();
    for (const auto& [name, value] : properties_)
        send(word::set, name, value);
    if (replayed_)
        replayed_();
    replayOpacity();
    if (visible_)
        send(word::show);
}

void RemoteWindow::replayOpacity() const {
    const double left = fadeEnd_ - monotonicSeconds();
    send(word::alpha, wire::realText(opacityNow()));
    if (left > 0)
        send(word::fade, wire::realText(alpha_), wire::realText(left));
}

} // namespace kelpa
