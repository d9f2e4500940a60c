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
  public:
    explicit PrefStyleState(DefaultsStore& store);

    StoredSetting<BreakStyle> breakStyle;

    /// The lists of the current style. Setting them announces nothing: the pane keeps its own copy.
    [[nodiscard]] std::vector<std::string> promptList() const;
    void setPromptList(const std::vector<std::string>& list);
    [[nodiscard]] std::vector<std::string> newDayPromptList() const;
    void setNewDayPromptList(const std::vector<std::string>& list);

  private:
    DefaultsStore& store_;
};

/// The general and break settings. Nothing is cached: what another program stores is seen at the next read.
/// No ranges are checked here; the panes keep the values in theirs.
class PrefState {
  public:
    /// Reads and writes nothing. The store, the clock and the app must outlive the object.
    PrefState(DefaultsStore& store, const Clock& clock, App& app);

    StoredSetting<bool> launchAtLogin;
    StoredSetting<bool> showTime;
    StoredSetting<bool> autoCheckUpdate;
    StoredSetting<std::int64_t> workTime;  ///< minutes
    StoredSetting<std::int64_t> breakTime; ///< seconds
    StoredSetting<bool> customBreakPrompt;
    StoredSetting<std::string> breakPrompt;
    StoredSetting<std::int64_t> shortBreakTimes; ///< every this-many-th break is a long one; must not be 0
    StoredSetting<std::int64_t> longBreakTime;   ///< minutes
    StoredSetting<bool> forceLongBreak;
    StoredSetting<bool> restartTimerAfterAwake;
    StoredSetting<bool> stopTimerAfterMouseStop;
    StoredSetting<bool> showNewDayTip;
    StoredSetting<double> lastWeakupTimestamp; ///< seconds since 1970 of the last screen lock
    StoredSetting<std::int64_t> breakNotice;   ///< seconds before a break; 0 for no word
    StoredSetting<std::int64_t> moreTime;      ///< minutes that a break is put off by
    StoredSetting<bool> holdBreaks;            ///< while somebody is busy
    StoredSetting<std::int64_t> holdLimit;     ///< minutes that a break waits at most
    StoredSetting<bool> holdForSound;
    StoredSetting<bool> holdForCamera;
    StoredSetting<bool> holdForFullScreen;
    StoredSetting<bool> holdForAwake;
    StoredSetting<bool> keepHistory;
    /// Whether breaks are held for this reason.
    [[nodiscard]] StoredSetting<bool>& holdFor(BusyReason reason);

    [[nodiscard]] PrefStyleState& styleState() { return *styleState_; }
    /// Puts another style object in place and announces that to those who observe.
    void setStyleState(std::unique_ptr<PrefStyleState> state);
    Subscription observeStyleState(std::function<void()> told) {
        return styleStateChanged_.add(std::move(told));
    }

    /// Told when the style is chosen anew, also by another style object that comes into place.
    Subscription observeBreakStyle(const std::function<void()>& told);

    /// Whether the last recorded screen lock was on another day than today.
    [[nodiscard]] bool isNewDay() const;
    /// Records now as the moment of the last screen lock.
    void updateWeakupTimestamp();

  private:
    Calendar calendar_;
    std::unique_ptr<PrefStyleState> styleState_;
    Listeners<> styleStateChanged_;
};

} // namespace kelpa
