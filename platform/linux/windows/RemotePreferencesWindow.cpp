#include "platform/linux/windows/RemotePreferencesWindow.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace view = wire::view;

void RemotePreferencesWindow::setLayout(const PreferencesLayout& layout, PreferencesClient& client) {
    client_ = &client;
    window_ = windows_.makeManaged(view::preferencesKind, layout.title);
    window_->setProperty(view::layout, partsJson(layout));
    window_->setActionHandler(
        [this](const std::string& action, const std::string& value) { didAct(action, value); });
    window_->setReplayed([this] { client_->showAgain(); });
    // In the window's place, which is handed on what is not about controls.
    windows_.view().add(window_->id(), *this);
}

void RemotePreferencesWindow::show() {
    if (window_)
        window_->orderFrontRegardless();
}

void RemotePreferencesWindow::show(const std::string& id, PreferencesField field,
                                   const PreferencesValue& value) {
    // What nobody sees now is said again when the window is shown.
    if (!window_ || !window_->visible())
        return;
    const auto tell = [&](std::string_view type, std::string_view shown) {
        windows_.view().send(
            {std::to_string(window_->id()), view::tell, id, nameOf(view::fields, field), type, shown});
    };
    if (const auto* on = std::get_if<bool>(&value))
        tell(view::boolType, *on ? "1" : "0");
    else if (const auto* number = std::get_if<std::int64_t>(&value))
        tell(view::numberType, std::to_string(*number));
    else if (const auto* text = std::get_if<std::string>(&value))
        tell(view::textType,
             field == PreferencesField::Value ? shorten(id, {{0, *text, {}}}).front().text : *text);
    else if (const auto* entries = std::get_if<std::vector<PreferencesEntry>>(&value))
        tell(view::listType, entriesJson(shorten(id, *entries)));
}

std::vector<PreferencesEntry> RemotePreferencesWindow::shorten(const std::string& id,
                                                               std::vector<PreferencesEntry> entries) {
    std::erase_if(cuts_, [&id](const Cut& cut) { return cut.id == id; });
    for (auto& [value, text, removal] : entries) {
        if (text.size() <= view::longestText)
            continue;
        std::string beginning = shortened(text, view::longestText);
        const auto same = [&beginning](const PreferencesEntry& entry) { return entry.text == beginning; };
        while (std::any_of(entries.begin(), entries.end(), same))
            beginning += "…";
        cuts_.push_back({id, beginning, std::exchange(text, beginning)});
    }
    return entries;
}

std::string RemotePreferencesWindow::whole(const std::string& id, const std::string& shown) const {
    const auto found = std::find_if(cuts_.begin(), cuts_.end(),
                                    [&](const Cut& cut) { return cut.id == id && cut.shown == shown; });
    return found == cuts_.end() ? shown : found->whole;
}

void RemotePreferencesWindow::didAct(const std::string& action, const std::string& value) {
    if (action == view::closedAction) {
        window_->close();
        window_->noteProperty(view::currentPane, "0");
        client_->closed();
    } else if (action == view::turnedAction) {
        window_->noteProperty(view::currentPane, value);
    } else if (action == view::cameToFrontAction) {
        client_->cameToFront();
    }
}

void RemotePreferencesWindow::hear(const wire::Message& message) {
    if (message.verb() != view::did)
        return window_->hear(message);
    if (window_->visible())
        didToControl(message);
}

/// The fields of the message are those of `did`.
void RemotePreferencesWindow::didToControl(const wire::Message& message) const {
    const auto act = caseOf<PreferencesAct>(view::acts, message.field(2));
    const auto value = valueIn(message);
    if (act && value)
        client_->did(message.field(1), *act, *value);
}

std::optional<PreferencesValue> RemotePreferencesWindow::valueIn(const wire::Message& message) const {
    const std::string& id = message.field(1);
    const std::string& type = message.field(3);
    const std::string& value = message.field(4);
    if (type == view::boolType)
        return value == "1";
    if (type == view::numberType)
        return wholeNumber<std::int64_t>(value);
    if (type == view::textType)
        return whole(id, value);
    if (type == view::editType)
        return PreferencesEdit{whole(id, value), message.field(5)};
    return std::nullopt;
}

} // namespace kelpa
