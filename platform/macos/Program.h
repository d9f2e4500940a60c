#pragma once

#import "platform/macos/BundleTranslations.h"
#import "platform/macos/DispatchQueue.h"
#import "platform/macos/DistributedLock.h"
#import "platform/macos/GlobalActivity.h"
#import "platform/macos/MacClock.h"
#import "platform/macos/MacFonts.h"
#import "platform/macos/MacStatusBar.h"
#import "platform/macos/MacSystemInfo.h"
#import "platform/macos/MacUpdater.h"
#import "platform/macos/RunLoopTickers.h"
#import "platform/macos/ServiceLoginItem.h"
#import "platform/macos/SharingMail.h"
#import "platform/macos/StandardAboutPanel.h"
#import "platform/macos/UserDefaultsStore.h"
#import "platform/macos/preferences/MacPreferencesWindow.h"
#import "platform/macos/windows/MacWindowSystem.h"

#include "app/Application.h"
#include "app/RemoteControl.h"
#include "logging/SharedLogger.h"
#include "platform/posix/AbortOnFatalErrors.h"
#include "platform/posix/SystemRandom.h"

#include <memory>

namespace kelpa {

/// The whole program on macOS: everything that the core asks for, and the core on top of it.
class Program final : private ApplicationLoop {
  public:
    /// Ticks, delays and the wall clock run `speed` times as fast as real time.
    explicit Program(double speed);
    ~Program() override;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

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
    RunLoopTickers tickers_;
    DispatchQueue mainQueue_;
    SerialDispatchQueues queues_;
    UserDefaultsStore store_;
    MacStatusBar statusBar_;
    MacWindowSystem windows_;
    MacSystemInfo system_;
    MacFonts fonts_;
    BundleTranslations translations_;
    SystemRandom random_;
    AbortOnFatalErrors fatalErrors_;
    DistributedLock lock_;
    GlobalActivity activity_{lock_};
    ServiceLoginItem loginItem_;
    std::unique_ptr<Updater> updater_;
    SharingMail mail_;
    StandardAboutPanel about_;
    MacPreferencesWindow preferences_;
    id<NSObject> awake_ = nil; ///< as long as it is kept, timers are on time
    Ports ports_;
    DailyLogFiles logFiles_;
    Application application_;
    RemoteControl remote_{*this, mainQueue_};
};

} // namespace kelpa
