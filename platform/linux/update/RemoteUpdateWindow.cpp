#include "platform/linux/update/RemoteUpdateWindow.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"

#include <array>
#include <utility>

namespace kelpa {

namespace word = wire::view;

namespace {

constexpr std::array<std::pair<UpdateAction, std::string_view>, 5> actions{{
    {UpdateAction::Install, "install"},
    {UpdateAction::Later, "later"},
    {UpdateAction::Skip, "skip"},
    {UpdateAction::Cancel, "cancel"},
    {UpdateAction::Close, word::closedAction},
}};

std::string_view nameOf(UpdateAction wanted) {
    for (const auto& [action, name] : actions)
        if (action == wanted)
            return name;
    return {};
}

std::string json(const std::vector<UpdateButton>& buttons) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (const auto& [action, text] : buttons)
        entries.emplace_back(nameOf(action), text);
    return choicesJson(entries);
}

std::string progressText(const UpdatePage& page) {
    switch (page.progress) {
    case UpdatePage::Progress::None:
        break;
    case UpdatePage::Progress::Busy:
        return "-1";
    case UpdatePage::Progress::Known:
        return wire::realText(page.fraction);
    }
    return {};
}

} // namespace

RemoteWindow& RemoteUpdateWindow::window() {
    if (!window_) {
        window_ = windows_.makeManaged(word::updateKind, localized("Software Update"));
        window_->setActionHandler(
            [this](const std::string& action, const std::string& /*value*/) { didAct(action); });
    }
    return *window_;
}

void RemoteUpdateWindow::setPage(const UpdatePage& page) {
    window().setProperty("headline", page.headline);
    window().setProperty("text", page.text);
    window().setProperty("notes", page.notes);
    window().setProperty("notesLink", page.notesLink);
    window().setProperty("buttons", json(page.buttons));
    window().setProperty("progress", progressText(page));
}

void RemoteUpdateWindow::present(Attention attention) {
    window().orderFrontRegardless();
    if (attention == Attention::Wanted)
        windows_.activate();
}

/// What comes next has nothing to do with it, and a window of its own.
void RemoteUpdateWindow::close() {
    window_.reset();
}

void RemoteUpdateWindow::didAct(const std::string& name) {
    for (const auto& [action, known] : actions)
        if (known == name && client_ != nullptr)
            return client_->act(action);
}

} // namespace kelpa
