#include "platform/linux/update/RemoteUpdateWindow.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <array>
#include <utility>

namespace kelpa {

namespace view = wire::view;

namespace {

constexpr std::array<std::pair<UpdateAction, std::string_view>, 5> actions{{
    {UpdateAction::Install, "install"},
    {UpdateAction::Later, "later"},
    {UpdateAction::Skip, "skip"},
    {UpdateAction::Cancel, "cancel"},
    {UpdateAction::Close, view::closedAction},
}};

std::string_view nameOf(UpdateAction wanted) {
    for (const auto& [action, name] : actions)
        if (action == wanted)
            return name;
    return {};
}

std::string lines(const std::vector<UpdateButton>& buttons) {
    std::string text;
    for (const auto& button : buttons)
        text.append(text.empty() ? "" : "\n").append(nameOf(button.action)).append("\n").append(button.text);
    return text;
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

RemoteUpdateWindow::~RemoteUpdateWindow() {
    if (record_)
        record_->setActionHandler(nullptr);
}

WindowRecord& RemoteUpdateWindow::record() {
    if (!record_) {
        record_ = windows_.makeManaged(view::updateKind, localized("Software Update"));
        record_->setActionHandler(
            [this](const std::string& action, const std::string& /*value*/) { didAct(action); });
    }
    return *record_;
}

void RemoteUpdateWindow::setPage(const UpdatePage& page) {
    record().setProperty(view::headline, page.headline);
    record().setProperty(view::text, page.text);
    record().setProperty(view::notes, page.notes);
    record().setProperty(view::notesLink, page.notesLink);
    record().setProperty(view::buttons, lines(page.buttons));
    record().setProperty(view::progress, progressText(page));
}

void RemoteUpdateWindow::present(Attention attention) {
    windows_.showManaged(record());
    if (attention == Attention::Wanted)
        windows_.activate();
}

void RemoteUpdateWindow::close() {
    record().hide();
}

void RemoteUpdateWindow::didAct(const std::string& name) {
    for (const auto& [action, known] : actions)
        if (known == name && client_ != nullptr)
            return client_->act(action);
}

} // namespace kelpa
