#pragma once

#include "base/Calendar.h"
#include "platform/linux/display/Display.h"
#include "platform/ports/DefaultsStore.h"
#include "platform/ports/Services.h"
#include "platform/ports/System.h"
#include "platform/ports/Timers.h"
#include "ui/UpdateDialog.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kelpa {

/// When the program looks for new versions by itself: so long after the last time, also across restarts.
class UpdateSchedule {
  public:
    /// Seconds since 1970 of the last check, whoever asked for it.
    static constexpr std::string_view lastCheckKey = "update.lastCheck";
    /// Not among the first things after log-in, when everything else wants the network and the disk.
    static constexpr double soonest = 60;

    /// All arguments outlive the schedule.
    UpdateSchedule(const Clock& clock, Queue& queue, DefaultsStore& store, std::function<void()> due);
    ~UpdateSchedule();
    UpdateSchedule(const UpdateSchedule&) = delete;
    UpdateSchedule& operator=(const UpdateSchedule&) = delete;

    /// From now on, every `interval` seconds. Call once.
    void start(double interval);
    /// A check begins.
    void noteCheck();

  private:
    [[nodiscard]] double remaining() const;
    void arm(double seconds);
    void wake();

    const Clock& clock_;
    Queue& queue_;
    DefaultsStore& store_;
    std::function<void()> due_;
    double interval_ = 0;
    std::shared_ptr<WorkItem> item_;
};

/// What the updater has to know of this copy of the program.
struct UpdateSetup {
    UpdateSupport support = UpdateSupport::NoFeed;
    std::string feed;
    std::string key;       ///< public, of whoever signs the packages
    std::string package;   ///< how the names of the packages end that can be installed here
    std::string version;   ///< by which releases are ordered
    std::string name;      ///< the version that people are shown
    std::string system;    ///< version of the system
    std::string processor; ///< as the system calls its kind
    std::string language;  ///< as in "zh_CN"
    std::string folder;    ///< for downloads, and nothing else
    std::string helper;    ///< path of kelpa-update
    int feedSeconds = 30;  ///< that the feed may take
    int stallSeconds = 60; ///< that a download may stand still

    /// As it was configured when it was built, for the system that it runs on and the language of its user.
    static UpdateSetup ofThisCopy(const SystemInfo& system, const std::string& language);
};

/// What it works with; all of it outlives the updater.
struct UpdateParts {
    EventLoop& loop;
    const Clock& clock;
    DefaultsStore& store;
    UpdateWindow& window;
    WindowReport& report;
};

/// Looks for new versions through `kelpa-update`, a process that runs only while something is fetched or a
/// person has yet to answer.
[[nodiscard]] std::unique_ptr<Updater> makeLinuxUpdater(const UpdateParts& parts, UpdateSetup setup);

} // namespace kelpa
