#pragma once

#import "platform/macos/MacBusyness.h"
#import "platform/macos/MacEvents.h"
#import "platform/macos/MacNotifications.h"
#import "platform/macos/MacServices.h"
#import "platform/macos/MacSystem.h"
#import "platform/macos/MacTime.h"
#import "platform/macos/Menus.h"
#import "platform/macos/UserDefaultsStore.h"
#import "platform/macos/preferences/MacPreferencesWindow.h"
#import "platform/macos/windows/MacHistoryWindow.h"
#import "platform/macos/windows/MacWindowSystem.h"

#include "app/AppDelegate.h"
#include "app/RemoteControl.h"
#include "logging/SharedLogger.h"
#include "platform/posix/AbortOnFatalErrors.h"
#include "platform/posix/HistoryFolder.h"
#include "platform/posix/SystemRandom.h"

#include <memory>

namespace kelpa {

/// The whole program on macOS: everything that the core asks for, and the core on top of it.
class Program final : private ApplicationLoop {
  public:
    /// Ticks, delays and the wall clock run `speed` times as fast as real time.
    explicit Program(double speed);

    void launch();
    void willTerminate();
    [[nodiscard]] bool supportsSecureRestorableState() const;
    /// The user started the program although it runs.
    void startedAgain();
    void presentPreferences();

  private:
    void terminate() override;
    Services services();

    MacClock clock_;
    HistoryFolder history_;
    RunLoopTickers tickers_;
    DispatchQueue mainQueue_;
    SerialDispatchQueues queues_;
    UserDefaultsStore store_;
    MacStatusBar statusBar_;
    MacWindowSystem windows_;
    std::unique_ptr<SystemInfo> system_ = makeMacSystemInfo();
    std::unique_ptr<Fonts> fonts_ = makeMacFonts();
    std::unique_ptr<Translations> translations_ = makeMacTranslations();
    SystemRandom random_;
    AbortOnFatalErrors fatalErrors_;
    DistributedLock lock_;
    GlobalActivity activity_{lock_};
    std::unique_ptr<LoginItem> loginItem_;
    std::unique_ptr<Updater> updater_ = makeMacUpdater();
    std::unique_ptr<MailComposer> mail_ = makeMacMail();
    std::unique_ptr<AboutPanel> about_ = makeMacAboutPanel();
    std::unique_ptr<Notifications> notifications_ = makeMacNotifications();
    MacBusyness busyness_{queues_.makeSerialQueue("app.orvane.Kelpa.busy"), mainQueue_};
    MacPreferencesWindow preferences_;
    MacHistoryWindow historyWindow_;
    id<NSObject> awake_ = nil; ///< as long as it is kept, timers are on time
    Ports ports_;
    DailyLogFiles logFiles_;
    AppDelegate delegate_;
    RemoteControl remote_{*this, mainQueue_};
};

} // namespace kelpa
