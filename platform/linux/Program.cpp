#include "platform/linux/Program.h"

#include "app/AppDelegate.h"
#include "app/RemoteControl.h"
#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "platform/linux/BuildConfig.h"
#include "platform/linux/Folders.h"
#include "platform/linux/GettextTranslations.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxFonts.h"
#include "platform/linux/LinuxSystemInfo.h"
#include "platform/linux/Memory.h"
#include "platform/linux/busy/DesktopBusyness.h"
#include "platform/linux/control/ControlObject.h"
#include "platform/linux/events/DesktopActivity.h"
#include "platform/linux/events/DesktopLock.h"
#include "platform/linux/notify/DesktopNotifications.h"
#include "platform/linux/services/Launcher.h"
#include "platform/linux/services/LinuxLoginItem.h"
#include "platform/linux/store/PlistStore.h"
#include "platform/linux/tray/ItemActivation.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/TrayHelper.h"
#include "platform/linux/tray/TrayNotice.h"
#include "platform/linux/update/LinuxUpdater.h"
#include "platform/linux/windows/RemoteDialogs.h"
#include "platform/linux/windows/RemotePreferencesWindow.h"
#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/posix/AbortOnFatalErrors.h"
#include "platform/posix/HistoryFolder.h"
#include "platform/posix/Random.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace kelpa {

namespace {

/// By then the panel has asked for what it shows.
constexpr double secondsOfStart = 10;

std::string settingsFile() {
    const auto folder = configHome();
    return folder ? *folder + "/" + build::identifier + ".plist" : "";
}

std::string iconFile(const std::string& data) {
    return data + "/icons/hicolor/scalable/apps/" + build::identifier + ".svg";
}

/// The best source that this desktop may have comes first. The X server of a Wayland session hears only of
/// what goes to its own windows.
std::vector<std::unique_ptr<ActivitySource>> activitySources(EventLoop& loop, ActivityGate gate,
                                                             const OwnWindows& windows, Bus& session,
                                                             Bus& system, double speed) {
    std::vector<std::unique_ptr<ActivitySource>> sources;
    if (inWaylandSession(loop)) {
        sources.push_back(makeWaylandActivity(loop, windows, speed));
        sources.push_back(makeMutterActivity(loop, session, windows, speed));
    } else {
        sources.push_back(makeX11Activity(loop, std::move(gate), windows));
    }
    sources.push_back(makeLogindActivity(loop, system, windows));
    return sources;
}

std::map<BusyReason, BusySource> busySources(EventLoop& loop, Display& display, Bus& session, Bus& system) {
    std::map<BusyReason, BusySource> sources = {{BusyReason::Sound, soundRecording(loop)},
                                                {BusyReason::Camera, cameraUse(loop)},
                                                {BusyReason::Awake, keptAwake(session, system)}};
    if (X11Connection* x11 = display.x11.get())
        sources.emplace(BusyReason::FullScreen, fullScreenWindow(*x11));
    if (WaylandConnection* wayland = display.wayland.get())
        sources.emplace(BusyReason::FullScreen, fullScreenWindow(*wayland));
    return sources;
}

/// The whole program on a Linux desktop: everything that the core asks for, and the core on top of it.
class Program final : private StoreReport, private WindowReport, private InstanceClient, private BusClient {
  public:
    /// All outlive the program.
    Program(EventLoop& loop, Display& display, double speed, Bus& session, Instance& instance)
        : loop_(loop), session_(session), clock_(loop, speed),
          windows_({loop, *display.screens, *display.focus, *this}, helperPath("kelpa-view")),
          lock_(loop, session, systemBus_, display.x11.get()),
          activity_(makeDesktopActivity(
              activityCounts(), *this,
              activitySources(loop, activityCounts(), windows_, session, systemBus_, speed))),
          busyness_(makeDesktopBusyness(loop, busySources(loop, display, session, systemBus_))),
          instance_(instance) {
        if (X11Connection* connection = display.x11.get()) {
            WindowReport& report = *this;
            const std::string helper = helperPath("kelpa-tray");
            tray_.emplace(loop, *connection, report, helper, folders_.data);
            fallback_.emplace(loop, statusBar_, *tray_);
            popUp_.emplace(loop, statusBar_, report, helper, folders_.data,
                           [this] { activation_.menuClosed(); });
        }
        if (inSandbox())
            portal_.emplace(session_);
    }

    /// Starts everything, shows the history if that is wished for, runs until the end and gives the exit
    /// code.
    int run(StartWish wish) {
        systemBus_.start();
        delegate_.applicationDidFinishLaunching();
        if (!translations_.usable())
            warning("The texts are shown in English: no locale for their translation is generated on this "
                    "machine.");
        useBus();
        instance_.serve(*this);
        if (wish == StartWish::History)
            remote_.showHistory();
        const Subscription started = loop_.afterReal(secondsOfStart, releaseMemory);
        const int code = loop_.run();
        delegate_.applicationWillTerminate();
        return code;
    }

  private:
    // What comes from outside (a helper, the bus, the name of a file) forges no further line.
    void warning(const std::string& message) override { logger().warning(printable(message)); }
    void error(const std::string& message) override { logger().error(printable(message)); }
    void info(const std::string& message) override { logger().info(printable(message)); }
    void show(StartWish what) override {
        const bool history = what == StartWish::History;
        info(history ? "Another start of the program asks for the history."
                     : "Another start of the program asks for the preferences.");
        if (history)
            remote_.showHistory();
        else
            remote_.showSettings();
    }

    void replaced() override {
        warning("Another start of the program did not find this one answering and takes its place.");
        loop_.terminate();
    }

    void doubted(const std::string& why) override { warning(why + "."); }
    void busOpened() override {
        if (std::exchange(busMissed_, false))
            info("The session bus is there.");
    }

    void busLost() override {
        warning("The session bus is gone: " + session_.failure());
        busMissed_ = true;
    }

    void useBus() {
        if (!instance_.doubt().empty())
            doubted(instance_.doubt());
        if (!session_.open()) {
            const std::string& why = session_.failure();
            warning("No session bus for the status item: " + (why.empty() ? "it does not answer" : why));
            busMissed_ = true;
            setHostPresent(false);
        }
        joined_ = session_.join(*this);
        control_ = serveControl(loop_, session_, remote_);
        item_ =
            makeStatusNotifierItem(loop_, session_, {build::identifier, build::displayName, folders_.data},
                                   activation_, [this](bool present) { hostChanged(present); });
        statusBar_.addSink(*item_);
    }

    [[nodiscard]] Portal* portal() { return portal_ ? &*portal_ : nullptr; }
    void hostChanged(bool present) {
        if (present)
            info("The status item is taken on the session bus, for panels to show.");
        else
            warning("No panel on the session bus shows the status item.");
        setHostPresent(present);
    }

    void setHostPresent(bool present) {
        if (fallback_)
            fallback_->setHostPresent(present);
        notice_.setHostPresent(present);
    }

    std::unique_ptr<Notifications> makeNotifications() {
        return makeDesktopNotifications(session_,
                                        {build::displayName, build::identifier, iconFile(folders_.data)},
                                        [this](const std::string& why) { warning(why); });
    }

    TrayNotice::Desktop noticeDesktop() {
        return {[this] { return tray_ && tray_->managerPresent(); }, [this] { return lock_.locked(); },
                [this] { warning("No tray of this desktop shows the item."); },
                [this] {
                    info("The notification was clicked, which asks for the preferences.");
                    remote_.showSettings();
                }};
    }

    /// Under Wayland no program can open a menu at the pointer out of nothing.
    ItemActivation::Ways activationWays() {
        return {[this] { return popUp_ && popUp_->open(); },
                [this] {
                    if (popUp_)
                        popUp_->close();
                },
                [this] {
                    info("A click on the status item asks for the preferences.");
                    remote_.showSettings();
                }};
    }

    Services services() {
        return {loginItem_.get(), updater_.get(),     &mail_,          &about_,
                &preferences_,    breakNotice_.get(), busyness_.get(), &historyWindow_};
    }

    ActivityGate activityCounts() {
        return [this] { return !lock_.locked() && !windows_.coverEveryScreen(); };
    }

    EventLoop& loop_;
    Bus& session_;
    Bus systemBus_{loop_, Bus::Kind::System};
    DataFolders folders_ = dataFolders();
    LinuxClock clock_;
    std::unique_ptr<DefaultsStore> store_ = makePlistStore(settingsFile(), *this, loop_);
    HistoryFolder history_{historyFolder()};
    LinuxStatusBar statusBar_;
    RemoteWindowSystem windows_;
    RemoteAboutPanel about_{windows_};
    RemotePreferencesWindow preferences_{windows_};
    RemoteHistoryWindow historyWindow_{windows_};
    std::optional<TrayProcess> tray_;      ///< where the display server may have an older tray
    std::optional<TrayFallback> fallback_; ///< there with the tray
    std::optional<PopUpMenu> popUp_;       ///< there with the tray
    SystemInfo system_ = linuxSystemInfo();
    std::unique_ptr<Fonts> fonts_ = makeLinuxFonts(folders_.data);
    GettextTranslations translations_{folders_.locale};
    Translations texts_ = GettextTranslations::lookUp;
    RandomBelow random_ = systemRandom();
    FatalErrorHandler fatalErrors_ = abortOnFatalErrors(logCritical);
    DesktopLock lock_;
    std::unique_ptr<ActivityMonitor> activity_;
    std::unique_ptr<LoginItem> loginItem_ = makeLinuxLoginItem(
        AutostartFolders::ofEnvironment(), {build::identifier, build::displayName, programPath()},
        [this] { return portal(); });
    LinuxMail mail_{loop_, [this] { return portal(); }};
    std::unique_ptr<BusyProbe> busyness_;
    RemoteUpdateWindow updateWindow_{windows_};
    std::unique_ptr<Updater> updater_ =
        makeLinuxUpdater({loop_, clock_, *store_, updateWindow_, *this},
                         UpdateSetup::ofThisCopy(system_, translations_.language()));
    std::unique_ptr<Notifications> breakNotice_ = makeNotifications();
    std::unique_ptr<Notifications> trayNotice_ = makeNotifications();
    Ports ports_{clock_,  loop_,  loop_,   loop_,        *store_, history_, statusBar_, windows_,  system_,
                 *fonts_, texts_, random_, fatalErrors_, loop_,   lock_,    *activity_, services()};
    AppDelegate delegate_{ports_, dailyLogFiles(clock_)};
    RemoteControl remote_{loop_, loop_};
    Instance& instance_;
    TrayNotice notice_{loop_, session_, *trayNotice_, noticeDesktop()};
    ItemActivation activation_{loop_, activationWays()};
    std::optional<Portal> portal_; ///< in a sandbox
    // There once the application runs.
    std::unique_ptr<StatusItemSink> item_;
    std::unique_ptr<BusClient> control_;
    bool busMissed_ = false; ///< the log has told that there is no session bus
    Subscription joined_;
};

} // namespace

int runProgram(EventLoop& loop, Display& display, double speed, Bus& session, Instance& instance,
               StartWish wish) {
    return Program(loop, display, speed, session, instance).run(wish);
}

} // namespace kelpa
