#include "platform/linux/windows/RemoteWindowSystem.h"

#include "platform/linux/Memory.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace word = wire::view;

RemoteWindowSystem::RemoteWindowSystem(const WindowSystemParts& parts, std::string program)
    : parts_(parts), view_(parts.loop, std::move(program), *this, Answers::Watched) {
    parts_.screens.observe([this] { screensChanged(); });
}

RemoteWindowSystem::~RemoteWindowSystem() {
    parts_.screens.observe(nullptr);
    for (RemoteWindow* window : windows_)
        window->leave();
}

void RemoteWindowSystem::screensChanged() {
    for (RemoteWindow* window : windows_)
        window->place();
    if (client_ != nullptr)
        client_->screensChanged();
}

int RemoteWindowSystem::join(RemoteWindow& window) {
    windows_.push_back(&window);
    view_.add(++lastId_, window);
    return lastId_;
}

void RemoteWindowSystem::forget(RemoteWindow& window) {
    std::erase(windows_, &window);
    view_.remove(window.id());
    visibilityChanged();
}

std::unique_ptr<NativeWindow> RemoteWindowSystem::makeWindow(const WindowSpec& spec) {
    const bool panel = spec.style == WindowStyle::Panel;
    const auto ready = reserved_.find(spec.screen);
    if (panel || ready == reserved_.end())
        return std::make_unique<RemoteWindow>(*this, panel ? word::waterKind : word::breakKind, spec,
                                              Placing::Ours);
    auto window = std::move(ready->second);
    reserved_.erase(ready);
    window->setTitle(spec.title);
    window->setFrame(spec.frame, spec.screen);
    return window;
}

std::unique_ptr<RemoteWindow> RemoteWindowSystem::makeManaged(std::string_view kind,
                                                              const std::string& title) {
    return std::make_unique<RemoteWindow>(*this, kind, WindowSpec{title, {}}, Placing::WindowManagers);
}

/// A break window that the core will ask for by the same title a moment later.
void RemoteWindowSystem::reserveBreakWindows() {
    for (const Screen& screen : parts_.screens.all()) {
        const std::string title = std::to_string(screen.number);
        const bool known = std::any_of(windows_.begin(), windows_.end(), [&title](const auto* window) {
            return window->kind() == word::breakKind && window->title() == title;
        });
        if (!known)
            reserved_[screen.number] = std::make_unique<RemoteWindow>(
                *this, word::breakKind,
                WindowSpec{title, screen.frame, 0, WindowStyle::FullSizeContent, screen.number},
                Placing::Ours);
    }
}

void RemoteWindowSystem::prepare() {
    reserveBreakWindows();
    startView();
    visibilityChanged();
}

bool RemoteWindowSystem::anyVisible() const {
    return std::any_of(windows_.begin(), windows_.end(),
                       [](const auto* window) { return window->visible(); });
}

bool RemoteWindowSystem::coverEveryScreen() const {
    const auto& screens = parts_.screens.all();
    const auto covered = [this](const Screen& screen) {
        const std::string connector = parts_.screens.connector(screen.number);
        return std::any_of(windows_.begin(), windows_.end(), [&connector](const auto* window) {
            return window->kind() == word::breakKind && window->staying() && window->connector() == connector;
        });
    };
    return !screens.empty() && std::all_of(screens.begin(), screens.end(), covered);
}

double RemoteWindowSystem::secondsSinceInput() const {
    return monotonicSeconds() - usedAt_;
}

void RemoteWindowSystem::visibilityChanged() {
    if (anyVisible()) {
        idle_.cancel();
        startView();
    } else if (view_.running()) {
        idle_ = parts_.loop.afterReal(parts_.idleSeconds, [this] { endView(); });
    }
}

void RemoteWindowSystem::startView() {
    if (view_.running())
        return;
    const std::string refused = view_.start();
    if (!refused.empty())
        return reportFailure("The windows cannot be drawn: " + refused);
    replay();
}

void RemoteWindowSystem::replay() {
    for (const RemoteWindow* window : windows_)
        window->replay();
    if (active_)
        view_.send({word::activate});
}

void RemoteWindowSystem::endView() {
    idle_.cancel();
    view_.end();
    reserved_.clear();
    releaseMemory();
}

void RemoteWindowSystem::reportFailure(const std::string& text) {
    if (!failing_)
        parts_.report.warning(text);
    failing_ = true;
}

void RemoteWindowSystem::helperFailed(const std::string& how) {
    idle_.cancel();
    if (restarts_.spend(monotonicSeconds())) {
        parts_.report.warning("kelpa-view " + how);
        if (anyVisible())
            startView();
    } else {
        reportFailure("kelpa-view " + how + " again and is left alone for now");
    }
}

void RemoteWindowSystem::helperSaid(const wire::Message& message) {
    if (message.verb() == word::ready)
        failing_ = false;
    else if (message.verb() == word::input)
        usedAt_ = monotonicSeconds();
    else if (message.verb() == word::warning)
        parts_.report.warning("kelpa-view: " + message.field(1));
}

void RemoteWindowSystem::didDrag(const RemoteWindow& window) {
    if (client_ != nullptr)
        client_->panelDragged(parts_.screens.frame(window.pixels()));
}

/// Whether something shows that takes the keyboard past the window manager, and so has to give it back.
bool RemoteWindowSystem::anyTakesFocus() const {
    return std::any_of(windows_.begin(), windows_.end(), [](const auto* window) {
        return window->placing() == Placing::Ours && window->staying();
    });
}

void RemoteWindowSystem::activate() {
    if (anyTakesFocus()) {
        parts_.focus.remember();
        active_ = true;
    }
    view_.send({word::activate});
}

void RemoteWindowSystem::deactivate() {
    active_ = false;
    view_.send({word::deactivate});
    parts_.focus.giveBack();
}

} // namespace kelpa
