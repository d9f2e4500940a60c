#include "platform/linux/windows/RemoteAboutPanel.h"

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"

namespace kelpa {

namespace view = wire::view;

RemoteAboutPanel::~RemoteAboutPanel() {
    if (record_)
        record_->setActionHandler(nullptr);
}

void RemoteAboutPanel::make() {
    record_ = windows_.makeManaged(view::aboutKind, "");
    record_->setActionHandler([this](const std::string& action, const std::string& value) {
        if (action != view::closedAction)
            return;
        record_->setProperty(view::bounds, value);
        record_->hide();
    });
}

void RemoteAboutPanel::show(const AboutText& text) {
    if (!record_)
        make();
    record_->setTitle(text.name);
    record_->setProperty(view::about, aboutJson({text.icon, "", "", text.name, text.version, text.copyright,
                                                 text.credits, text.creditsLink}));
    windows_.showManaged(*record_);
}

} // namespace kelpa
