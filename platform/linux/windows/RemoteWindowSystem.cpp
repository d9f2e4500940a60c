#include "platform/linux/windows/RemoteWindowSystem.h"

#include "platform/linux/helper/ProcessState.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace view = wire::view;

RemoteWindowSystem::RemoteWindowSystem(const WindowSystemParts& parts, std::string program)
    : parts_(parts), home_(static_cast<RemoteWindowHome*>(this), [](RemoteWindowHome*) {}),
      view_(parts.loop, std::move(program), *this), answers_(parts.loop, *this) {
    parts_.screens.observe([this] {
        screensChanged_.tell();
        if (client_ != nullptr)
            client_->screensChanged();
    });
}

RemoteWindowSystem::~RemoteWindowSystem() {
    parts_.screens.observe(nullptr);
    home_.reset();
    for (const auto& record : std::exchange(records_, {}))
        record->leave();
}

void RemoteWindowSystem::setClient(WindowSystemClient& client) {
    client_ = &client;
}

std::unique_ptr<NativeWindow> RemoteWindowSystem::makeWindow(const WindowSpec& spec) {
    return std::make_unique<RemoteWindow>(home_, spec);
}

WindowPlace RemoteWindowSystem::place(const Rect& frame, std::uint32_t screen) const {
    return {parts_.screens.pixels(frame), parts_.screens.connector(screen)};
}

std::shared_ptr<WindowRecord> RemoteWindowSystem::makeRecord(std::string_view kind, const std::string& title,
                                                             const WindowPlace& place, Presence presence) {
    ViewLink& link = *this;
    const auto record =
        std::make_shared<WindowRecord>(link, nextId_++, std::string(kind), title, place, presence);
    records_.push_back(record);
    return record;
}

std::shared_ptr<WindowRecord> RemoteWindowSystem::record(const WindowSpec& spec, std::string_view kind) {
    const WindowPlace where = place(spec.frame, spec.screen);
    const auto ready = reserved_.find(spec.screen);
    if (kind != view::breakKind || ready == reserved_.end())
        return makeRecord(kind, spec.title, where);
    const auto record = ready->second;
    reserved_.erase(ready);
    record->setTitle(spec.title);
    record->setPlace(where);
    return record;
}

std::shared_ptr<WindowRecord> RemoteWindowSystem::makeManaged(std::string_view kind,
                                                              const std::string& title) {
    return makeRecord(kind, title, {}, Presence::WhileShown);
}

void RemoteWindowSystem::showManaged(WindowRecord& window) {
    const Screen* screen = parts_.screens.mainScreen();
    if (!window.visible() && screen != nullptr)
        window.setPlace({{}, parts_.screens.connector(screen->number)});
    window.show();
}

void RemoteWindowSystem::forget(const std::shared_ptr<WindowRecord>& record) {
    std::erase(records_, record);
    record->leave();
    visibilityChanged();
}

/// A break window that the core will ask for by the same title a moment later.
void RemoteWindowSystem::reserveBreakWindows() {
    for (const Screen& screen : parts_.screens.screens()) {
        const std::string title = std::to_string(screen.number);
        const bool known = std::any_of(records_.begin(), records_.end(), [&title](const auto& record) {
            return record->kind() == view::breakKind && record->title() == title;
        });
        if (!known)
            reserved_[screen.number] = makeRecord(view::breakKind, title, place(screen.frame, screen.number));
    }
}

void RemoteWindowSystem::prepare() {
    reserveBreakWindows();
    startView();
    visibilityChanged();
}

bool RemoteWindowSystem::anyVisible() const {
    return std::any_of(records_.begin(), records_.end(),
                       [](const auto& record) { return record->visible(); });
}

bool RemoteWindowSystem::coverEveryScreen() const {
    const auto& screens = parts_.screens.screens();
    const auto covered = [this](const Screen& screen) {
        const std::string connector = parts_.screens.connector(screen.number);
        return std::any_of(records_.begin(), records_.end(), [&connector](const auto& record) {
            return record->kind() == view::breakKind && record->staying() && record->connector() == connector;
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
    answers_.begin();
    replay();
}

void RemoteWindowSystem::send(std::initializer_list<std::string_view> fields) {
    view_.send(fields);
    answers_.sent();
}

bool RemoteWindowSystem::helperBusy() const {
    return heldUpByWork(view_.pid());
}

void RemoteWindowSystem::ask() {
    send({view::ping});
}

void RemoteWindowSystem::replay() {
    for (const auto& record : records_)
        record->replay();
    if (active_)
        send({view::activate});
}

void RemoteWindowSystem::endView() {
    idle_.cancel();
    answers_.end();
    view_.end();
    for (const auto& [screen, record] : reserved_)
        std::erase(records_, record);
    reserved_.clear();
}

void RemoteWindowSystem::reportFailure(const std::string& text) {
    if (!failing_)
        parts_.report.warning(text);
    failing_ = true;
}

void RemoteWindowSystem::helperHangs(double seconds) {
    view_.kill();
    helperFailed("has not answered for " + wire::realText(seconds) + " s");
}

void RemoteWindowSystem::helperFailed(const std::string& how) {
    idle_.cancel();
    answers_.end();
    if (restarts_.take(monotonicSeconds())) {
        parts_.report.warning("kelpa-view " + how);
        if (anyVisible())
            startView();
    } else {
        reportFailure("kelpa-view " + how + " again and is left alone for now");
    }
}

void RemoteWindowSystem::helperSaid(const wire::Message& message) {
    if (message.verb() == view::taken)
        answers_.taken(message.number(1).value_or(0));
    else if (message.verb() == view::ready)
        failing_ = false;
    else if (message.verb() == view::action || message.verb() == view::did)
        didAct(message);
    else if (message.verb() == view::dragged)
        didDrag(message);
    else if (message.verb() == view::input)
        usedAt_ = monotonicSeconds();
    else if (message.verb() == view::warning)
        parts_.report.warning("kelpa-view: " + message.field(1));
}

std::shared_ptr<WindowRecord> RemoteWindowSystem::recordOf(const wire::Message& message) const {
    const auto id = message.number(1);
    const auto found = std::find_if(records_.begin(), records_.end(),
                                    [id](const auto& record) { return record->id() == id; });
    return found == records_.end() ? nullptr : *found;
}

void RemoteWindowSystem::didAct(const wire::Message& message) {
    const auto record = recordOf(message);
    if (record && message.verb() == view::did)
        record->didToControl(message);
    else if (record)
        record->didAct(message.field(2), message.field(3));
}

void RemoteWindowSystem::didDrag(const wire::Message& message) {
    const auto record = recordOf(message);
    const auto x = message.number(2);
    const auto y = message.number(3);
    if (!record || !x || !y)
        return;
    record->didMove(*x, *y);
    if (client_ != nullptr)
        client_->panelDragged(parts_.screens.frame(record->pixels()));
}

/// Whether something shows that takes the keyboard past the window manager, and so has to give it back.
bool RemoteWindowSystem::anyTakesFocus() const {
    return std::any_of(records_.begin(), records_.end(), [](const auto& record) {
        return record->presence() == Presence::Always && record->staying();
    });
}

void RemoteWindowSystem::activate() {
    if (anyTakesFocus()) {
        parts_.focus.remember();
        active_ = true;
    }
    send({view::activate});
}

void RemoteWindowSystem::deactivate() {
    active_ = false;
    send({view::deactivate});
    parts_.focus.giveBack();
}

} // namespace kelpa
