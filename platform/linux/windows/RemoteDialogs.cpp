#include "platform/linux/windows/RemoteDialogs.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"

#include <array>
#include <utility>

namespace kelpa {

namespace word = wire::view;

namespace {

/// The names of the cases of `UpdateAction`, in their order.
constexpr std::array<std::string_view, 5> updateActions = {"install", "later", "skip", "cancel",
                                                           word::closedAction};

std::string json(const std::vector<UpdateButton>& buttons) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (const auto& [action, text] : buttons)
        entries.emplace_back(nameOf(updateActions, action), text);
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

void RemoteAboutPanel::show(const AboutContent& about) {
    if (!window_) {
        window_ = windows_.makeManaged(word::aboutKind, "");
        window_->setActionHandler([this](const std::string& action, const std::string& /*value*/) {
            if (action == word::closedAction)
                window_->close();
        });
    }
    window_->setTitle(about.name);
    window_->setProperty("about", partsJson(about));
    window_->orderFrontRegardless();
}

void RemoteHistoryWindow::setTexts(const HistoryTexts& texts, HistoryWindowClient& client) {
    texts_ = texts;
    client_ = &client;
}

RemoteWindow& RemoteHistoryWindow::window() {
    if (!window_) {
        window_ = windows_.makeManaged(word::historyKind, texts_.title);
        window_->setProperty("texts", partsJson(texts_));
        window_->setActionHandler(
            [this](const std::string& action, const std::string& value) { didAct(action, value); });
    }
    return *window_;
}

void RemoteHistoryWindow::setPicture(const HistoryPicture& picture) {
    window().setProperty("picture", partsJson(picture));
}

void RemoteHistoryWindow::show() {
    window().orderFrontRegardless();
}

void RemoteHistoryWindow::didAct(const std::string& action, const std::string& value) {
    if (action == word::closedAction) {
        client_->closed();
        window_.reset();
    } else if (action == word::cameToFrontAction) {
        client_->cameToFront();
    } else if (action == "range") {
        client_->rangeChosen(value == "weeks" ? HistoryRange::Weeks : HistoryRange::Days);
    } else if (action == "forget") {
        client_->forgetConfirmed();
    }
}

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
    const auto action = caseOf<UpdateAction>(updateActions, name);
    if (action && client_ != nullptr)
        client_->act(*action);
}

} // namespace kelpa
