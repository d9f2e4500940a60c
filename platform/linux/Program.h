#pragma once

#include "app/AppDelegate.h"
#include "app/RemoteControl.h"
#include "platform/linux/EventLoop.h"
#include "platform/linux/Folders.h"
#include "platform/linux/GettextTranslations.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxFonts.h"
#include "platform/linux/LinuxSystemInfo.h"
#include "platform/linux/busy/DesktopBusyness.h"
#include "platform/linux/control/ControlObject.h"
#include "platform/linux/display/Display.h"
#include "platform/linux/events/DesktopActivity.h"
#include "platform/linux/events/DesktopLock.h"
#include "platform/linux/instance/Instance.h"
#include "platform/linux/notify/DesktopNotifications.h"
#include "platform/linux/services/Launcher.h"
#include "platform/linux/services/LinuxLoginItem.h"
#include "platform/linux/store/PlistStore.h"
#include "platform/linux/tray/ItemActivation.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/PopUpMenu.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/TrayNotice.h"
#include "platform/linux/tray/TrayProcess.h"
#include "platform/linux/update/LinuxUpdater.h"
#include "platform/linux/windows/RemoteDialogs.h"
#include "platform/linux/windows/RemotePreferencesWindow.h"
#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/posix/AbortOnFatalErrors.h"
#include "platform/posix/HistoryFolder.h"
#include "platform/posix/SystemRandom.h"

#include <memory>
#include <optional>
#include <string>

namespace kelpa {

/// The whole program on a Linux desktop: everything that the core asks for, and the core on top of it.
class Program final : private StoreReport, private WindowReport, private InstanceClient, private BusClient {
  public:
    /// All outlive the program.
    Program(EventLoop& loop, Display& display, double speed, Bus& session, Instance& instance);
    ~Program() override;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts everything, shows the history if that is wished for, runs until the end and gives the exit
    /// code.
    int run(StartWish wish);

  private:
    void warning(const std::string& message) override;
    void error(const std::string& message) override;
    void info(const std::string& message) override;
    void show(StartWish what) override;
    void replaced() override;
    void doubted(const std::string& why) override { warning(why + "."); }
    void busOpened() override;
    void busLost() override;
    void useBus();
    [[nodiscard]] Portal* portal() { return portal_ ? &*portal_ : nullptr; }
    void hostChanged(bool present);
    void setHostPresent(bool present);
    NotificationSender notificationSender() const;
    TrayNotice::Desktop noticeDesktop();
    ItemActivation::Ways activationWays();
    ActivityGate activityCounts();

    EventLoop& loop_;
    Bus& session_;
    Bus systemBus_;
    DataFolders folders_;
    LinuxClock clock_;
    PlistStore store_;
    HistoryFolder history_{historyFolder()};
    LinuxStatusBar statusBar_;
    RemoteWindowSystem windows_;
    RemoteAboutPanel about_;
    RemotePreferencesWindow preferences_;
    RemoteHistoryWindow historyWindow_;
    std::optional<TrayProcess> tray_;      ///< where the display server may have an older tray
    std::optional<TrayFallback> fallback_; ///< there with the tray
    std::optional<PopUpMenu> popUp_;       ///< there with the tray
    LinuxSystemInfo system_;
    LinuxFonts fonts_;
    GettextTranslations translations_;
    SystemRandom random_;
    AbortOnFatalErrors fatalErrors_;
    DesktopLock lock_;
    DesktopActivity activity_;
    LinuxLoginItem loginItem_;
    LinuxMail mail_;
    DesktopBusyness busyness_;
    RemoteUpdateWindow updateWindow_;
    LinuxUpdater updater_;
    DesktopNotifications breakNotice_;
    DesktopNotifications trayNotice_;
    Ports ports_;
    DailyLogFiles logFiles_;
    AppDelegate delegate_;
    RemoteControl remote_;
    Instance& instance_;
    TrayNotice notice_;
    ItemActivation activation_;
    std::optional<Portal> portal_; ///< in a sandbox
    // There once the application runs.
    std::optional<StatusNotifierItem> item_;
    std::optional<ControlObject> control_;
    bool busMissed_ = false; ///< the log has told that there is no session bus
    Subscription joined_;
};

} // namespace kelpa
