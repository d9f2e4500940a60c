#import "platform/macos/Program.h"

#import "platform/macos/Bridge.h"

#include "app/AppInfo.h"

namespace kelpa {

namespace {

/// Not before the first line of the run: an early error must not make the log that it would go to.
void logCritical(const std::string& message) {
    if (loggerExists())
        logger().critical(message);
}

/// Nothing where the user has no such folder.
std::optional<std::string> historyFolder() {
    NSArray<NSString*>* found =
        NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, YES);
    NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
    if ([found count] == 0 || !identifier)
        return std::nullopt;
    return toString(found[0]) + "/" + toString(identifier) + "/History";
}

} // namespace

Program::Program(double speed)
    : clock_(speed), history_(historyFolder()), tickers_(speed), mainQueue_(dispatch_get_main_queue(), speed),
      queues_(speed), fatalErrors_(logCritical), loginItem_(makeMacLoginItem(AppInfo::loginItemIdentifier())),
      ports_{clock_,       tickers_, mainQueue_, queues_,   store_,         history_,
             statusBar_,   windows_, *system_,   *fonts_,   *translations_, random_,
             fatalErrors_, *this,    lock_,      activity_, services()},
      logFiles_(clock_), delegate_(ports_, logFiles_) {}

Services Program::services() {
    return {loginItem_.get(), updater_.get(),       mail_.get(), about_.get(),
            &preferences_,    notifications_.get(), &busyness_,  &historyWindow_};
}

void Program::launch() {
    installMainMenu();
    // The system slows down the timers of applications that seem to do nothing; this one counts seconds. The
    // machine may go to sleep all the same. The reason shows in the tools that list such requests.
    awake_ =
        [[NSProcessInfo processInfo] beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                       reason:@"countdown"];
    delegate_.applicationDidFinishLaunching();
}

void Program::willTerminate() {
    preferences_.retire();
    historyWindow_.retire();
    delegate_.applicationWillTerminate();
}

bool Program::supportsSecureRestorableState() const {
    return delegate_.applicationSupportsSecureRestorableState();
}

void Program::startedAgain() {
    remote_.showSettings();
}

void Program::presentPreferences() {
    preferences_.present();
}

void Program::terminate() {
    [runningApplication() terminate:[MenuAction sender]];
}

} // namespace kelpa
