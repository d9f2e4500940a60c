#include "platform/linux/windows/RemoteAboutPanel.h"

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

} // namespace kelpa
