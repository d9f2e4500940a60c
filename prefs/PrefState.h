#pragma once

#include "base/Calendar.h"
#include "platform/ports/Busy.h"
#include "prefs/App.h"
#include "prefs/BreakStyle.h"
#include "prefs/Setting.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// Tells the log of a stored value that is about to end the program, for whoever edited the settings.
void reportUnusable(const StoredSetting<std::int64_t>& setting);
/// The length that a setting stands for, in seconds, of which one unit of it has so many. Ends the program
/// where no countdown can hold it.
[[nodiscard]] std::int64_t lengthOf(const StoredSetting<std::int64_t>& setting, std::int64_t secondsAUnit);

/// The chosen break style and the user's own copies of the prompt lists, one pair a style. A list whose key
/// holds no array of texts is the style's built-in one; an empty array is a list without entries.
class PrefStyleState {
    DefaultsStore& store_;

  public:
    explicit PrefStyleState(DefaultsStore& store) : store_(store) {}

    StoredSetting<BreakStyle> breakStyle{store_, "break_style", BreakStyle::default_};

    /// The lists of the current style. Setting them announces nothing: the pane keeps its own copy.
    [[nodiscard]] std::vector<std::string> promptList() const;
    void setPromptList(const std::vector<std::string>& list);
    [[nodiscard]] std::vector<std::string> newDayPromptList() const;
    void setNewDayPromptList(const std::vector<std::string>& list);
};

/// The general and break settings. Nothing is cached: what another program stores is seen at the next read.
/// No ranges are checked here; the panes keep the values in theirs.
class PrefState {
    // What the settings are made with, and so before them.
    DefaultsStore& store_;
    App& app_;

  public:
    /// Reads and writes nothing. The store, the clock and the app must outlive the object.
    PrefState(DefaultsStore& store, const Clock& clock, App& app)
        : store_(store), app_(app), calendar_(clock) {
        setStyleState(std::make_unique<PrefStyleState>(store));
    }

    StoredSetting<bool> launchAtLogin{store_, "launch_at_login", false,
                                      [this](bool launch) { app_.setLaunchAtLogin(launch); }};
    StoredSetting<bool> showTime{store_, "show_time_in_status_bar", true,
                                 [this](bool show) { app_.showTime(show); }};
    StoredSetting<bool> autoCheckUpdate{store_, "auto_check_update", true};
    /// Minutes.
    StoredSetting<std::int64_t> workTime{store_, "pref.work.time", 25,
                                         [this](std::int64_t) { workTimeWritten(); }};
    StoredSetting<std::int64_t> breakTime{store_, "pref.break.time", 300}; ///< seconds
    StoredSetting<bool> customBreakPrompt{store_, "custom_break_prompt", false};
    StoredSetting<std::string> breakPrompt{store_, "break_prompt_text", "堂堂七尺少年郎, 躺上一躺又何妨"};
    /// Every this-many-th break is a long one; must not be 0.
    StoredSetting<std::int64_t> shortBreakTimes{store_, "pref.short.break.times", 4};
    StoredSetting<std::int64_t> longBreakTime{store_, "pref.long.break.time", 15}; ///< minutes
    StoredSetting<bool> forceLongBreak{store_, "force_long_break", false};
    StoredSetting<bool> restartTimerAfterAwake{store_, "restart_timer_after_awake", true};
    StoredSetting<bool> stopTimerAfterMouseStop{store_, "stop_timer_after_mouse_stop", true};
    StoredSetting<bool> showNewDayTip{store_, "show_new_day_tip", false};
    /// Seconds since 1970 of the last screen lock.
    StoredSetting<double> lastWeakupTimestamp{store_, "last_weakup_timestamp", 0.0};
    /// Seconds before a break; 0 for no word.
    StoredSetting<std::int64_t> breakNotice{store_, "pref.break.notice", 0};
    StoredSetting<std::int64_t> moreTime{store_, "pref.break.more", 5};         ///< minutes it is put off by
    StoredSetting<bool> holdBreaks{store_, "pref.break.hold", false};           ///< while somebody is busy
    StoredSetting<std::int64_t> holdLimit{store_, "pref.break.hold.limit", 60}; ///< minutes it waits at most
    StoredSetting<bool> holdForSound{store_, "pref.break.hold.sound", true};
    StoredSetting<bool> holdForCamera{store_, "pref.break.hold.camera", true};
    StoredSetting<bool> holdForFullScreen{store_, "pref.break.hold.fullscreen", true};
    StoredSetting<bool> holdForAwake{store_, "pref.break.hold.awake", true};
    StoredSetting<bool> keepHistory{store_, "pref.history.enable", false};
    /// Whether breaks are held for this reason.
    [[nodiscard]] StoredSetting<bool>& holdFor(BusyReason reason);

    [[nodiscard]] PrefStyleState& styleState() { return *styleState_; }
    /// Puts another style object in place and announces that to those who observe.
    void setStyleState(std::unique_ptr<PrefStyleState> state);
    Subscription observeStyleState(std::function<void()> told) {
        return styleStateChanged_.add(std::move(told));
    }

    /// Told when the style is chosen anew, also by another style object that comes into place.
    Subscription observeBreakStyle(std::function<void()> told) { return styleChosen_.add(std::move(told)); }

    /// Whether the last recorded screen lock was on another day than today.
    [[nodiscard]] bool isNewDay() const;
    /// Records now as the moment of the last screen lock.
    void updateWeakupTimestamp();

  private:
    void workTimeWritten();

    Calendar calendar_;
    std::unique_ptr<PrefStyleState> styleState_;
    Subscription styleTold_;
    Listeners<> styleStateChanged_, styleChosen_;
};

} // namespace kelpa
