#include "platform/linux/Program.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "platform/linux/BuildConfig.h"
#include "platform/linux/Memory.h"
#include "platform/linux/busy/CameraUse.h"
#include "platform/linux/busy/FullScreenWindow.h"
#include "platform/linux/busy/KeptAwake.h"
#include "platform/linux/busy/SoundRecording.h"
#include "platform/linux/events/BusActivity.h"
#include "platform/linux/events/WaylandActivity.h"
#include "platform/linux/events/X11Activity.h"

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

/// Not before the first line of the run: an early error must not make the log that it would go to.
void logCritical(const std::string& message) {
    if (loggerExists())
        logger().critical(message);
}

/// The best source that this desktop may have comes first. The X server of a Wayland session hears only of
/// what goes to its own windows.
std::vector<std::unique_ptr<ActivitySource>> activitySources(EventLoop& loop, ActivityGate gate,
                                                             const OwnWindows& windows, Bus& session,
                                                             Bus& system, double speed) {
    std::vector<std::unique_ptr<ActivitySource>> sources;
    if (inWaylandSession(loop)) {
        sources.push_back(std::make_unique<WaylandActivity>(loop, windows, speed));
        sources.push_back(std::make_unique<MutterActivity>(loop, session, windows, speed));
    } else {
        sources.push_back(std::make_unique<X11Activity>(loop, std::move(gate), windows));
    }
    sources.push_back(std::make_unique<LogindActivity>(loop, system, windows));
    return sources;
}

std::map<BusyReason, std::unique_ptr<BusySource>> busySources(EventLoop& loop, Display& display, Bus& session,
                                                              Bus& system) {
    std::map<BusyReason, std::unique_ptr<BusySource>> sources;
    sources.emplace(BusyReason::Sound, std::make_unique<SoundRecording>(loop));
    sources.emplace(BusyReason::Camera, std::make_unique<CameraUse>(loop));
    if (X11Connection* x11 = display.x11())
        sources.emplace(BusyReason::FullScreen, std::make_unique<X11FullScreen>(*x11));
    if (WaylandConnection* wayland = display.wayland())
        sources.emplace(BusyReason::FullScreen, std::make_unique<WaylandFullScreen>(*wayland));
    sources.emplace(BusyReason::Awake, std::make_unique<KeptAwake>(session, system));
    return sources;
}

} // namespace

Program::Program(EventLoop& loop, Display& display, double speed, Bus& session, Instance& instance)
    : loop_(loop), session_(session), systemBus_(loop, Bus::Kind::System), folders_(dataFolders()),
      clock_(loop, speed), store_(settingsFile(), *this, loop),
      windows_({loop, display.screens(), display.focus(), *this}, helperPath("kelpa-view")), about_(windows_),
      preferences_(windows_), historyWindow_(windows_), fonts_(folders_.data), translations_(folders_.locale),
      fatalErrors_(logCritical), lock_(loop, session, systemBus_, display.x11()),
      activity_(activityCounts(), *this,
                activitySources(loop, activityCounts(), windows_, session, systemBus_, speed)),
      loginItem_({AutostartFolders::ofEnvironment(), {build::identifier, build::displayName, programPath()}},
                 [this] { return portal(); }),
      mail_(loop, [this] { return portal(); }),
      busyness_(loop, busySources(loop, display, session, systemBus_)), updateWindow_(windows_),
      updater_({loop, clock_, store_, updateWindow_, *this},
               UpdateSetup::ofThisCopy(system_, translations_.language())),
      breakNotice_(session, notificationSender(), [this](const std::string& why) { warning(why); }),
      trayNotice_(session, notificationSender(), [this](const std::string& why) { warning(why); }),
      ports_{clock_,
             loop,
             loop,
             loop,
             store_,
             history_,
             statusBar_,
             windows_,
             system_,
             fonts_,
             translations_,
             random_,
             fatalErrors_,
             loop,
             lock_,
             activity_,
             Services{&loginItem_, &updater_, &mail_, &about_, &preferences_, &breakNotice_, &busyness_,
                      &historyWindow_}},
      logFiles_(clock_), delegate_(ports_, logFiles_), remote_(loop, loop), instance_(instance),
      notice_(loop, session, trayNotice_, noticeDesktop()), activation_(loop, activationWays()) {
    if (X11Connection* connection = display.x11()) {
        WindowReport& report = *this;
        const std::string helper = helperPath("kelpa-tray");
        tray_.emplace(loop, *connection, report, helper, folders_.data);
        fallback_.emplace(loop, statusBar_, *tray_);
        popUp_.emplace(loop, statusBar_, report, helper, folders_.data, [this] { activation_.menuClosed(); });
    }
    if (inSandbox())
        portal_.emplace(session_);
}

Program::~Program() = default;

ActivityGate Program::activityCounts() {
    return [this] { return !lock_.locked() && !windows_.coverEveryScreen(); };
}

int Program::run(StartWish wish) {
    systemBus_.start();
    delegate_.applicationDidFinishLaunching();
    if (!translations_.usable())
        warning(
            "The texts are shown in English: no locale for their translation is generated on this machine.");
    useBus();
    instance_.serve(*this);
    if (wish == StartWish::History)
        remote_.showHistory();
    const Subscription started = loop_.afterReal(secondsOfStart, releaseMemory);
    const int code = loop_.run();
    delegate_.applicationWillTerminate();
    return code;
}

void Program::useBus() {
    if (!instance_.doubt().empty())
        doubted(instance_.doubt());
    if (!session_.open()) {
        const std::string& why = session_.failure();
        warning("No session bus for the status item: " + (why.empty() ? "it does not answer" : why));
        busMissed_ = true;
        setHostPresent(false);
    }
    joined_ = session_.join(*this);
    control_.emplace(loop_, session_, remote_);
    item_.emplace(loop_, session_, ItemIdentity{build::identifier, build::displayName, folders_.data},
                  activation_, [this](bool present) { hostChanged(present); });
    statusBar_.addSink(*item_);
}

void Program::busOpened() {
    if (std::exchange(busMissed_, false))
        info("The session bus is there.");
}

void Program::busLost() {
    warning("The session bus is gone: " + session_.failure());
    busMissed_ = true;
}

void Program::hostChanged(bool present) {
    if (present)
        info("The status item is taken on the session bus, for panels to show.");
    else
        warning("No panel on the session bus shows the status item.");
    setHostPresent(present);
}

NotificationSender Program::notificationSender() const {
    return {build::displayName, build::identifier, iconFile(folders_.data)};
}

TrayNotice::Desktop Program::noticeDesktop() {
    return {[this] { return tray_ && tray_->managerPresent(); }, [this] { return lock_.locked(); },
            [this] { warning("No tray of this desktop shows the item."); },
            [this] {
                info("The notification was clicked, which asks for the preferences.");
                remote_.showSettings();
            }};
}

/// Under Wayland no program can open a menu at the pointer out of nothing.
ItemActivation::Ways Program::activationWays() {
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

void Program::setHostPresent(bool present) {
    if (fallback_)
        fallback_->setHostPresent(present);
    notice_.setHostPresent(present);
}

void Program::show(StartWish what) {
    const bool history = what == StartWish::History;
    info(history ? "Another start of the program asks for the history."
                 : "Another start of the program asks for the preferences.");
    if (history)
        remote_.showHistory();
    else
        remote_.showSettings();
}

void Program::replaced() {
    warning("Another start of the program did not find this one answering and takes its place.");
    loop_.terminate();
}

// What comes from outside (a helper, the bus, the name of a file) forges no further line.

void Program::warning(const std::string& message) {
    logger().warning(printable(message));
}

void Program::error(const std::string& message) {
    logger().error(printable(message));
}

void Program::info(const std::string& message) {
    logger().info(printable(message));
}

} // namespace kelpa
