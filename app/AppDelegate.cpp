#include "app/AppDelegate.h"

#include "app/AppInfo.h"
#include "timer/SystemEventController.h"
#include "ui/IconFont.h"

namespace kelpa {

AppDelegate::AppDelegate(Ports& ports, LogFileOpener openLogFile) : ports_(ports) {
    setFatalErrors(ports.fatalErrors);
    setTranslations(ports.translations);
    AppInfo::wire(ports.system, ports.clock);
    setUpLogging({ports.clock, std::move(openLogFile), AppInfo::identifier(), AppInfo::name(),
                  ports.system.homeDirectory});
    AppState::wire(*this, ports);
    TimedPause::wire(ports.clock, ports.statusBar);
    TicktackController::wire(*this, ports.tickers);
    SystemEventController::wire(*this, {ports.lock, ports.activity, ports.queues, ports.mainQueue});
    StatusBarController::wire(*this, ports.statusBar, ports.application, ports.services);
    WindowController::wire(*this, ports.windows, ports.tickers, ports.mainQueue, ports.services);
    IconFont::wire(ports.fonts);
}

void AppDelegate::applicationDidFinishLaunching() {
    setWorking(true);
    WindowController::setup();
    StatusBarController::item();
    SystemEventController::setup();
    logger().info("sandbox home path: " + ports_.system.homeDirectory.value_or(""),
                  {"AppDelegate", "applicationDidFinishLaunching(_:)"});
}

void AppDelegate::applicationWillTerminate() {
    // Whoever quits with a number half a second old in a field means that number.
    WindowController::settlePreferences();
    history().quits(TicktackController::counted());
}

std::string AppDelegate::identifier() const {
    return AppInfo::identifier();
}

AboutApp AppDelegate::about() const {
    return {
        AppInfo::icon(),           AppInfo::name(),      AppInfo::version(),   AppInfo::build(),
        AppInfo::model(),          AppInfo::osVersion(), AppInfo::copyright(), AppInfo::releaseNotesLink(),
        AppInfo::feedbackMailbox()};
}

void AppDelegate::setLaunchAtLogin(bool launch) {
    if (ports_.services.loginItem)
        ports_.services.loginItem->setEnabled(launch);
}

void AppDelegate::startBreak(std::int64_t seconds) {
    HistoryEntry began;
    began.kind = promptState().lastKind();
    began.length = seconds;
    // What was asked for is the next break of the cycle, which a greeting is not.
    if (began.kind != BreakKind::NewDay) {
        began.postponed = AppState::breakNotice().coming().postponed;
        began.early = AppState::breakNotice().coming().started;
    }
    history().breakStarts(began, TicktackController::counted());
    TicktackController::break_(seconds);
}

void AppDelegate::closeBreakWindows() {
    history().breakCloses(TicktackController::counted());
    WindowController::closeBreak();
}

bool AppDelegate::waterHasNewDay() {
    return waterState().enable() && waterState().isNewDay();
}

void AppDelegate::startWaterDay() {
    waterState().reset();
    waterState().schedule();
}

} // namespace kelpa
