#include "platform/linux/windows/RemotePreferencesWindow.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"

#include <optional>

namespace kelpa {

namespace view = wire::view;

namespace {

std::string propertyName(std::string_view field, const std::string& id) {
    return std::string(field) + ":" + id;
}

/// Hour and minute from the second and third field; nothing when they are no time of day.
std::optional<TimePoint> timeIn(const wire::Message& message) {
    const auto hour = message.number(1);
    const auto minute = message.number(2);
    if (!hour || !minute || *hour < 0 || *hour > 23 || *minute < 0 || *minute > 59)
        return std::nullopt;
    return TimePoint{*hour, *minute, {}, {}};
}

} // namespace

RemotePreferencesWindow::~RemotePreferencesWindow() {
    if (record_)
        record_->setActionHandler(nullptr);
}

void RemotePreferencesWindow::setLayout(const PreferencesLayout& layout, PreferencesClient& client) {
    client_ = &client;
    record_ = windows_.makeManaged(view::preferencesKind, layout.title);
    record_->setProperty(view::layout, layoutJson(layout));
    record_->setActionHandler(
        [this](const std::string& action, const std::string& value) { didAct(action, value); });
}

void RemotePreferencesWindow::show() {
    if (record_)
        windows_.showManaged(*record_);
}

void RemotePreferencesWindow::set(std::string_view field, const std::string& id, std::string_view value) {
    if (record_)
        record_->setProperty(propertyName(field, id), value);
}

void RemotePreferencesWindow::setCopyright(const std::string& line) {
    if (record_)
        record_->setProperty(view::copyright, line);
}

void RemotePreferencesWindow::setSwitch(const std::string& id, bool on) {
    set(view::onField, id, on ? "1" : "0");
}

void RemotePreferencesWindow::setText(const std::string& id, const std::string& text) {
    // Also when it is what was set last: something else may have been typed since.
    const std::string shown = texts_.show(id, {text}).front();
    if (record_)
        record_->assertProperty(propertyName(view::textField, id), shown);
}

void RemotePreferencesWindow::setChoices(const std::string& id,
                                         const std::vector<PreferencesChoice>& choices) {
    set(view::entriesField, id, choicesJson(choices));
}

void RemotePreferencesWindow::setChosen(const std::string& id, std::int64_t value) {
    set(view::chosenField, id, std::to_string(value));
}

void RemotePreferencesWindow::setTimeOfDay(const std::string& id, int hour, int minute) {
    set(view::timeField, id, std::to_string(hour) + ":" + std::to_string(minute));
}

void RemotePreferencesWindow::setTimePoints(const std::string& id, const std::vector<TimePoint>& points) {
    set(view::entriesField, id, timePointsJson(points));
}

void RemotePreferencesWindow::setPrompts(const std::string& id, const std::vector<std::string>& prompts) {
    set(view::entriesField, id, promptsJson(texts_.show(id, prompts)));
}

void RemotePreferencesWindow::setHint(const std::string& id, const std::string& hint) {
    set(view::hintField, id, hint);
}

void RemotePreferencesWindow::setProblem(const std::string& id, const std::string& problem) {
    set(view::problemField, id, problem);
}

void RemotePreferencesWindow::setEnabled(const std::string& id, bool enabled) {
    set(view::enabledField, id, enabled ? "1" : "0");
}

void RemotePreferencesWindow::setVisible(const std::string& id, bool visible) {
    set(view::visibleField, id, visible ? "1" : "0");
}

void RemotePreferencesWindow::didAct(const std::string& action, const std::string& value) {
    if (didActOnWindow(action, value))
        return;
    const auto message = wire::decode(value);
    if (message && !didActOnControl(action, *message))
        didActOnList(action, *message);
}

bool RemotePreferencesWindow::didActOnWindow(const std::string& action, const std::string& value) {
    if (action == view::closedAction) {
        record_->setProperty(view::bounds, value);
        record_->hide();
        record_->noteProperty(view::currentPane, "0");
        client_->closed();
    } else if (action == view::turnedAction) {
        record_->noteProperty(view::currentPane, value);
    } else if (action == view::cameToFrontAction) {
        client_->cameToFront();
    } else {
        return false;
    }
    return true;
}

/// The view shows at once what a person chose. What the program made of it may be something else.
void RemotePreferencesWindow::showAgain(std::string_view field, const std::string& id) {
    record_->repeatProperty(propertyName(field, id));
}

bool RemotePreferencesWindow::didActOnControl(const std::string& action, const wire::Message& message) {
    const std::string& id = message.field(0);
    if (action == view::switchedAction) {
        client_->switched(id, message.field(1) == "1");
        showAgain(view::onField, id);
    } else if (action == view::typedAction) {
        record_->noteProperty(propertyName(view::textField, id), message.field(1));
        client_->typed(id, texts_.whole(id, message.field(1)));
    } else if (action == view::enteredAction) {
        record_->noteProperty(propertyName(view::textField, id), message.field(1));
        client_->entered(id, texts_.whole(id, message.field(1)));
    } else if (action == view::steppedAction) {
        client_->stepped(id, message.field(1) == "-1" ? -1 : 1);
    } else if (action == view::chosenAction) {
        if (const auto value = wholeNumber<std::int64_t>(message.field(1)))
            client_->chosen(id, *value);
        showAgain(view::chosenField, id);
    } else if (action == view::timeEnteredAction) {
        if (const auto time = timeIn(message))
            client_->timeEntered(id, time->hour, time->minute);
        showAgain(view::timeField, id);
    } else {
        return false;
    }
    return true;
}

void RemotePreferencesWindow::didActOnList(const std::string& action, const wire::Message& message) {
    const std::string& id = message.field(0);
    const auto time = timeIn(message);
    if (action == view::timePointAddedAction && time)
        client_->timePointAdded(id, time->hour, time->minute);
    else if (action == view::timePointRemovedAction && time)
        client_->timePointRemoved(id, time->hour, time->minute);
    else if (action == view::promptAddedAction)
        client_->promptAdded(id, message.field(1));
    else if (action == view::promptEditedAction)
        client_->promptEdited(id, texts_.whole(id, message.field(1)), message.field(2));
    else if (action == view::promptDeletedAction)
        client_->promptDeleted(id, texts_.whole(id, message.field(1)));
    else if (action == view::promptsResetAction)
        client_->promptsReset(id);
}

} // namespace kelpa
