#include "ui/MenuAction.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "ui/WindowController.h"

namespace kelpa {

namespace {

std::string feedbackBody(const AboutApp& about) {
    return localized("Please use Chinese or English in your mail, if you can.") + "\n\n\n\n\n\n\n\n" +
           localized("App version") + ": v" + about.version + "(" + about.build + ")\n" +
           localized("Device model") + ": " + about.model + "\n" + localized("System version") + ": " +
           about.osVersion + "\n";
}

} // namespace

void MenuAction::didClickPause() const {
    app_.setManualPause(!app_.manualPause());
}

void MenuAction::didClickWater() const {
    WindowController::toggleWaterView();
}

void MenuAction::didClickSettings() const {
    WindowController::showPrefView();
}

void MenuAction::didClickUpdates() const {
    WindowController::showUpdater();
}

void MenuAction::didClickFeedback() const {
    if (!services_.mail)
        return;
    const AboutApp about = app_.about();
    const auto& log = logfilePath();
    services_.mail->compose({about.name + " " + localized("Feedback"), about.feedbackMailbox,
                             feedbackBody(about), log ? log->string() : std::string()});
}

void MenuAction::didClickAbout() const {
    WindowController::showAbout();
}

void MenuAction::didClickQuit() const {
    application_.terminate();
}

} // namespace kelpa
