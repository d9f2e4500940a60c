#include "app/AppDelegate.h"

#include "app/AppState.h"
#include "logging/SharedLogger.h"
#include "timer/SystemEventController.h"
#include "ui/StatusBarController.h"
#include "ui/WindowController.h"

namespace kelpa {

void AppDelegate::applicationDidFinishLaunching() {
    AppState::setWorking(true);
    WindowController::setup();
    StatusBarController::item();
    SystemEventController::setup();
    logger().info("sandbox home path: " + system_.homeDirectory().value_or(""),
                  {"AppDelegate", "applicationDidFinishLaunching(_:)"});
}

} // namespace kelpa
