#include "app/Application.h"

#include "app/AppInfo.h"
#include "app/AppState.h"
#include "app/Clients.h"
#include "base/FatalError.h"
#include "base/Localized.h"
#include "timer/SystemEventController.h"
#include "ui/IconFont.h"
#include "ui/StatusBarController.h"
#include "ui/WindowController.h"

namespace kelpa {

Application::Application(Ports& ports, LogFiles& logFiles)
    : ports_(ports), logFiles_(logFiles), delegate_(ports.system) {
    setFatalErrors(ports.fatalErrors);
    setTranslations(ports.translations);
    setLogClient(*this);
    AppInfo::wire(ports.system, ports.clock);
    AppState::wire(ports);
    wireClients(ports);
    TicktackController::wire(ticktackClient(), ports.tickers);
    SystemEventController::wire(systemEventClient(),
                                {ports.lock, ports.activity, ports.queues, ports.mainQueue});
    StatusBarController::wire(uiClient(), ports.statusBar, ports.application, ports.services);
    WindowController::wire(uiClient(), ports.windows, ports.tickers, ports.mainQueue, ports.services);
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

} // namespace kelpa
