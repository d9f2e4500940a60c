#pragma once

#include "app/AppDelegate.h"
#include "app/RemoteControl.h"
#include "desk/Journal.h"
#include "desk/RecordingServices.h"
#include "desk/RecordingStore.h"
#include "desk/RecordingWindows.h"
#include "desk/VirtualTime.h"

#include <memory>
#include <optional>

namespace kelpa::desk {

/// A desk in virtual time with the whole program on it. One a process, as the program is.
class Desk {
  public:
    /// `time` is the journal's; both must outlive the desk.
    Desk(VirtualTime& time, Journal& journal, std::uint64_t seed);

    void launch();
    [[nodiscard]] bool launched() const { return static_cast<bool>(delegate_); }
    /// The platform tells the launched program that it ends.
    void end() { delegate_->applicationWillTerminate(); }

    /// The local time at which the desk begins. A zone chosen before anything happened leaves it the local
    /// time of the desk; later the zone changes under the running program.
    void start(const CivilTime& civil);
    /// `name` must be known to `VirtualClock::setZone`.
    void setZone(const std::string& name);
    void pass(std::int64_t microseconds);

    /// What the desk has to offer; a test may take some away before the launch.
    [[nodiscard]] Services& offered() { return ports_.services; }

    /// What a person does in the preferences window, without showing it first.
    [[nodiscard]] static PreferencesClient& preferences();
    /// Today at a time of day; the date in `time` does not count.
    [[nodiscard]] Date todayAt(const CivilTime& time) const;

    VirtualTime& time;
    Journal& journal;
    VirtualClock clock{time};
    RecordingStore store{journal};
    RecordingHistory history{journal};
    RecordingStatusBar statusBar{journal};
    RecordingWindows windows{journal, time};
    RecordingServices services{journal, time};
    ScriptedEvents events{journal};
    RemoteControl remote{services, time}; ///< of use once the program is launched
    SystemInfo system{{{"CFBundleDisplayName", std::string("Kelpa")}},
                      "app.orvane.Kelpa",
                      "x86_64",
                      {12, 0, 0},
                      "/home/desk/app.orvane.Kelpa",
                      "app.orvane.Kelpa"};

  private:
    [[noreturn]] void fault(const std::string& message);
    void followPublishedValues();

    NoFonts fonts_;
    RandomBelow random_;
    FatalErrorHandler fatalErrors_ = [this](const std::string& message) { fault(message); };
    Ports ports_{
        clock, time,    time,         time,     store,  history, statusBar,          windows, system, fonts_,
        {},    random_, fatalErrors_, services, events, events,  services.services()};
    std::optional<CivilTime> startTime_; ///< until something happens
    std::unique_ptr<AppDelegate> delegate_;
    std::vector<Subscription> subscriptions_;
};

} // namespace kelpa::desk
