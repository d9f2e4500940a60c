#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"
#import "platform/macos/MacPorts.h"
#import "platform/macos/Menus.h"
#import "platform/macos/preferences/MacPreferencesWindow.h"
#import "platform/macos/windows/MacHistoryWindow.h"

#include "app/AppDelegate.h"
#include "app/AppInfo.h"
#include "app/RemoteControl.h"
#include "logging/SharedLogger.h"
#include "platform/posix/AbortOnFatalErrors.h"
#include "platform/posix/HistoryFolder.h"
#include "platform/posix/Random.h"
#include "platform/posix/SystemClock.h"

namespace kelpa {

namespace {

/// Nothing where the user has no such folder.
std::optional<std::string> historyFolder() {
    NSArray<NSString*>* found =
        NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, YES);
    NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
    if ([found count] == 0 || !identifier)
        return std::nullopt;
    return toString(found[0]) + "/" + toString(identifier) + "/History";
}

/// The whole program on macOS: everything that the core asks for, and the core on top of it.
class Program final : private ApplicationLoop {
  public:
    /// Ticks, delays and the wall clock run `speed` times as fast as real time.
    explicit Program(double speed)
        : clock_(makeMacClock(speed)), tickers_(makeRunLoopTickers(speed)), mainQueue_(makeMainQueue(speed)),
          queues_(makeSerialQueues(speed)) {}

    void launch() {
        installMainMenu();
        // The system slows down the timers of applications that seem to do nothing; this one counts seconds.
        // The machine may go to sleep all the same. The reason shows in the tools that list such requests.
        awake_ = [[NSProcessInfo processInfo]
            beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                              reason:@"countdown"];
        delegate_.applicationDidFinishLaunching();
    }

    void willTerminate() {
        preferences_.retire();
        historyWindow_.retire();
        delegate_.applicationWillTerminate();
    }

    [[nodiscard]] bool supportsSecureRestorableState() const {
        return delegate_.applicationSupportsSecureRestorableState();
    }

    /// The user started the program although it runs.
    void startedAgain() { remote_.showSettings(); }
    void presentPreferences() { preferences_.present(); }

  private:
    void terminate() override { [runningApplication() terminate:[MenuAction sender]]; }

    std::unique_ptr<Clock> clock_;
    std::unique_ptr<TickerSource> tickers_;
    std::unique_ptr<Queue> mainQueue_;
    std::unique_ptr<QueueSource> queues_;
    HistoryFolder history_{historyFolder()};
    std::unique_ptr<DefaultsStore> store_ = makeUserDefaultsStore();
    std::unique_ptr<StatusBar> statusBar_ = makeMacStatusBar();
    std::unique_ptr<WindowSystem> windows_ = makeMacWindowSystem();
    SystemInfo system_ = macSystemInfo();
    std::unique_ptr<Fonts> fonts_ = makeMacFonts();
    Translations translations_ = bundleText;
    RandomBelow random_ = systemRandom();
    FatalErrorHandler fatalErrors_ = abortOnFatalErrors(logCritical);
    std::unique_ptr<LockNotifications> lock_ = makeDistributedLock();
    std::unique_ptr<ActivityMonitor> activity_ = makeGlobalActivity();
    std::unique_ptr<LoginItem> loginItem_ = makeMacLoginItem(AppInfo::loginItemIdentifier());
    std::unique_ptr<Updater> updater_ = makeMacUpdater();
    std::unique_ptr<MailComposer> mail_ = makeMacMail();
    std::unique_ptr<AboutPanel> about_ = makeMacAboutPanel();
    std::unique_ptr<Notifications> notifications_ = makeMacNotifications();
    std::unique_ptr<BusyProbe> busyness_ =
        makeMacBusyness(queues_->makeSerialQueue("app.orvane.Kelpa.busy"), *mainQueue_);
    MacPreferencesWindow preferences_;
    MacHistoryWindow historyWindow_;
    id<NSObject> awake_ = nil; ///< as long as it is kept, timers are on time
    Services services_{loginItem_.get(), updater_.get(),       mail_.get(),     about_.get(),
                       &preferences_,    notifications_.get(), busyness_.get(), &historyWindow_};
    Ports ports_{*clock_,      *tickers_, *mainQueue_, *queues_,   *store_,       history_,
                 *statusBar_,  *windows_, system_,     *fonts_,    translations_, random_,
                 fatalErrors_, *this,     *lock_,      *activity_, services_};
    AppDelegate delegate_{ports_, dailyLogFiles(*clock_)};
    RemoteControl remote_{*this, *mainQueue_};
};

} // namespace

} // namespace kelpa

/// What the system tells the application as a whole.
@interface KelpaDelegate : NSObject <NSApplicationDelegate, KelpaSettingsActions>
/// `program` must outlive the delegate.
- (instancetype)initWithProgram:(kelpa::Program&)program;
@end

@implementation KelpaDelegate {
    kelpa::Program* _program;
}

- (instancetype)initWithProgram:(kelpa::Program&)program {
    self = [super init];
    if (self)
        _program = &program;
    return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    kelpa::callCore([&] { _program->launch(); });
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    kelpa::callCore([&] { _program->willTerminate(); });
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
    return _program->supportsSecureRestorableState();
}

/// Whoever starts a program that runs already wants to see something of it, and its place in the menu bar may
/// be hidden.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)visible {
    kelpa::callCore([&] { _program->startedAgain(); });
    return NO;
}

- (void)showSettingsWindow:(id)sender {
    _program->presentPreferences();
}

- (void)showPreferencesWindow:(id)sender {
    _program->presentPreferences();
}

@end

namespace {

/// `-speed N` on the command line lets N seconds pass in one, for demonstrations. Only there: a stored
/// setting of that name would be a trap.
double speed() {
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    NSDictionary* arguments = [defaults volatileDomainForName:NSArgumentDomain];
    const id asked = [arguments objectForKey:@"speed"];
    if (!asked)
        return 1;
    const auto speed = kelpa::speedOf(kelpa::toString([asked description]));
    if (!speed)
        NSLog(@"-speed needs a number above 0 and up to %d, not %@", kelpa::highestSpeed, asked);
    return speed.value_or(1);
}

} // namespace

int main() {
    @autoreleasepool {
        NSApplication* application = [NSApplication sharedApplication];
        // The core lives to the very end of the process, like the state that it shares: nothing may be taken
        // from under it while the application ends.
        auto* program = new kelpa::Program(speed());
        // The application does not own its delegate.
        static KelpaDelegate* delegate = nil;
        delegate = [[KelpaDelegate alloc] initWithProgram:*program];
        [application setDelegate:delegate];
        [application run];
    }
    return 0;
}
