#include "app/Application.h"

#include "app/AppInfo.h"
#include "base/FatalError.h"
#include "base/Text.h"
#include "timer/SystemEventController.h"
#include "ui/IconFont.h"

namespace kelpa {

Application::Application(Ports& ports, LogFiles& logFiles)
    : ports_(ports), logFiles_(logFiles), delegate_(ports.system) {
    setFatalErrors(ports.fatalErrors);
    setTranslations(ports.translations);
    setLogClient(*this);
    AppInfo::wire(ports.system, ports.clock);
    AppState::wire(*this, ports);
    TicktackController::wire(*this, ports.tickers);
    SystemEventController::wire(*this, {ports.lock, ports.activity, ports.queues, ports.mainQueue});
    StatusBarController::wire(*this, ports.statusBar, ports.application, ports.services);
    WindowController::wire(*this, ports.windows, ports.tickers, ports.mainQueue, ports.services);
    IconFont::wire(ports.fonts);
}

void Application::launch() {
    delegate_.applicationDidFinishLaunching();
}

void Application::willTerminate() {
    // Whoever quits with a number half a second old in a field means that number.
    WindowController::settlePreferences();
    delegate_.applicationWillTerminate();
}

bool Application::supportsSecureRestorableState() const {
    return delegate_.applicationSupportsSecureRestorableState();
}

std::string Application::identifier() const {
    return AppInfo::identifier();
}

std::string Application::displayName() const {
    return AppInfo::name();
}

std::optional<std::string> Application::homeDirectory() const {
    return ports_.system.homeDirectory();
}

AboutApp Application::about() const {
    return {
        AppInfo::icon(),           AppInfo::name(),      AppInfo::version(),   AppInfo::build(),
        AppInfo::model(),          AppInfo::osVersion(), AppInfo::copyright(), AppInfo::releaseNotesLink(),
        AppInfo::feedbackMailbox()};
}

void Application::setLaunchAtLogin(bool launch) {
    if (ports_.services.loginItem)
        ports_.services.loginItem->setEnabled(launch);
}

bool Application::waterHasNewDay() {
    return waterState().enable() && waterState().isNewDay();
}

void Application::startWaterDay() {
    waterState().reset();
    waterState().schedule();
}

} // namespace kelpa
