#pragma once

#include "base/Calendar.h"
#include "base/Published.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"
#include "prefs/Setting.h"
#include "water/WaterDates.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kelpa {

/// How the next drink is found. The numbers are stored.
enum class WaterMode : std::int64_t {
    interval = 0, ///< some minutes after the last answer
    timing = 1,   ///< at chosen times of the day
};

template <>
inline constexpr std::int64_t caseCount<WaterMode> = 2;
[[nodiscard]] std::string desc(WaterMode mode);
[[nodiscard]] std::string tip(WaterMode mode);
/// Minutes offered as intervals, or the hours of the default time points.
[[nodiscard]] std::vector<std::int64_t> values(WaterMode mode);
/// In the order of the picker.
[[nodiscard]] std::vector<WaterMode> allWaterModes();

/// What other programs stored is read as absent, with a line in the log, where it would end this one at each
/// start: times and intervals with which no whole number of seconds leads to the next drink, an empty set of
/// points, a target below 1.
struct StoredDate {
    static std::optional<Date> read(const DefaultsStore& store, std::string_view key);
    static void write(DefaultsStore& store, std::string_view key, Date value);
};
struct StoredTimestamp : StoredAs<double> {
    static std::optional<double> read(const DefaultsStore& store, std::string_view key);
};
struct StoredInterval : StoredAs<std::int64_t> {
    static std::optional<std::int64_t> read(const DefaultsStore& store, std::string_view key);
};
struct StoredTimePoints {
    static std::optional<std::set<Date>> read(const DefaultsStore& store, std::string_view key);
    static void write(DefaultsStore& store, std::string_view key, const std::set<Date>& value);
};
struct StoredTarget : StoredAs<std::int64_t> {
    static std::optional<std::int64_t> read(const DefaultsStore& store, std::string_view key);
};

/// The water reminder: its settings, the day's millilitres and the one pending reminder. It does not repeat
/// by itself; each answer, start and change of a setting arms it anew, while setting what is set already
/// plans nothing. Of the stored dates only the time of day counts.
class PrefWaterState {
    // What the settings are made with, and so before them.
    DefaultsStore& store_;
    Calendar calendar_;
    App& app_;

  public:
    PrefWaterState(DefaultsStore& store, const Clock& clock, Queue& mainQueue, App& app);

    StoredSetting<bool> enable{store_, "pref.water.enable", false};
    StoredSetting<std::int64_t, StoredTarget> target{store_, "pref.water.target", 1500}; ///< ml a day
    StoredSetting<WaterMode> mode{store_, "pref.water.mode", WaterMode::interval};
    StoredSetting<Date, StoredDate> intervalStartDate{store_, "pref.water.interval.start",
                                                      calendar_.today(7, 0, 0)};
    StoredSetting<Date, StoredDate> intervalEndDate{store_, "pref.water.interval.end",
                                                    calendar_.today(20, 0, 0)};
    /// Minutes.
    StoredSetting<std::int64_t, StoredInterval> selectedInterval{store_, "pref.water.selectedInterval", 15};
    StoredSetting<std::set<Date>, StoredTimePoints> selectedTimings{store_, "pref.water.selectedTimings",
                                                                    defaultTimings()};
    /// Millilitres drunk today.
    StoredSetting<std::int64_t> finished{store_, "pref.water.finished", 0,
                                         [this](std::int64_t) { app_.updateWaterItem(); }};
    StoredSetting<std::int64_t> lastSelectedAmount{store_, "pref.water.lastSelectedAmount", 150}; ///< ml
    /// Seconds since 1970 of the last answer. The key is older than the name; another one would lose
    /// everybody's day.
    StoredSetting<double, StoredTimestamp> lastClickTimestamp{store_, "pref.water.lastShowDate", 0.0};

    [[nodiscard]] const std::vector<std::int64_t>& amounts() const; ///< ml offered by the panel
    [[nodiscard]] std::int64_t remain() const;                      ///< ml; negative beyond the target
    [[nodiscard]] float finishedPrecent() const;                    ///< 1 when the target is met
    [[nodiscard]] bool isNewDay() const;
    [[nodiscard]] bool inWorkTime() const;           ///< both ends excluded
    [[nodiscard]] std::int64_t nextReminder() const; ///< whole seconds; zero or negative when it is due

    /// Cancels the pending reminder and arms the next one if now is within the working hours.
    void schedule();
    void cancel();
    /// Plans anew after a change of a setting.
    void updateSchedule();
    void updateClickTimestamp();
    /// Adds the chosen amount to the day's total.
    void updateFinished();
    /// Begins the day's total anew.
    void reset();

    /// The calendar that the times of day are read in.
    [[nodiscard]] const Calendar& calendar() const { return calendar_; }

    /// Call `told` when a reminder was armed, with the seconds to it, and when a pending one was cancelled.
    Subscription observeArmed(std::function<void(const std::int64_t&)> told) {
        return armed_.add(std::move(told));
    }
    Subscription observeCancelled(std::function<void()> told) { return cancelled_.add(std::move(told)); }

  private:
    [[nodiscard]] std::set<Date> defaultTimings() const;
    void wasEnabled(bool enabled);
    [[nodiscard]] std::vector<Date> pointsToday() const;
    [[nodiscard]] std::int64_t nextPoint() const;

    Queue& mainQueue_;
    std::shared_ptr<WorkItem> workItem_;
    Listeners<const std::int64_t&> armed_;
    Listeners<> cancelled_;
};

/// A day's share as a whole percentage, truncated; a share that is no number ends the process.
[[nodiscard]] std::int64_t wholePercentage(float share);

} // namespace kelpa
