#include "platform/linux/windows/RemoteDialogs.h"

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"

namespace kelpa {

namespace word = wire::view;

void RemoteAboutPanel::show(const AboutText& text) {
    if (!window_) {
        window_ = windows_.makeManaged(word::aboutKind, "");
        window_->setActionHandler([this](const std::string& action, const std::string& /*value*/) {
            if (action == word::closedAction)
                window_->close();
        });
    }
    window_->setTitle(text.name);
    window_->setProperty("about", aboutJson({text.icon, "", "", text.name, text.version, text.copyright,
                                             text.credits, text.creditsLink}));
    window_->orderFrontRegardless();
}

void RemoteHistoryWindow::setTexts(const HistoryTexts& texts, HistoryWindowClient& client) {
    texts_ = texts;
    client_ = &client;
}

RemoteWindow& RemoteHistoryWindow::window() {
    if (!window_) {
        window_ = windows_.makeManaged(word::historyKind, texts_.title);
        window_->setProperty("texts", historyJson(texts_));
        window_->setActionHandler(
            [this](const std::string& action, const std::string& value) { didAct(action, value); });
    }
    return *window_;
}

void RemoteHistoryWindow::setPicture(const HistoryPicture& picture) {
    window().setProperty("picture", historyJson(picture));
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

} // namespace kelpa
