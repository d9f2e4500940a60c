#pragma once

#include "platform/ports/Timers.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kelpa {

class BreakHold;
class HistoryRecorder;
class PrefState;
class PromptState;
class PrefWaterState;
struct TicktackState;

/// What the program says of itself in menus, panels and mails.
struct AboutApp {
    std::optional<std::string> icon;
    std::string name;
    std::string version;
    std::string build;
    std::string model;
    std::string osVersion;
    std::string copyright;
    std::string releaseNotesLink;
    std::string feedbackMailbox;
};

/// What the parts of the program ask of those above them: the shared state, which is `AppState`'s, and what
/// the controllers do. There is one object of it, which outlives every part.
class App {
  public:
    virtual ~App() = default;
    [[nodiscard]] virtual PrefState& prefState() = 0;
    [[nodiscard]] virtual PromptState& promptState() = 0;
    [[nodiscard]] virtual TicktackState& workState() = 0;
    [[nodiscard]] virtual TicktackState& breakState() = 0;
    [[nodiscard]] virtual PrefWaterState& waterState() = 0;
    [[nodiscard]] virtual BreakHold& breakHold() = 0;
    [[nodiscard]] virtual HistoryRecorder& history() = 0;
    [[nodiscard]] virtual bool manualPause() const = 0;
    virtual void setManualPause(bool pause) = 0;
    /// Ends the user's own stop where that was for a time that is over, and nothing stands in the way any
    /// more, and starts nothing. Gives whether it did.
    virtual bool liftTimedPause() = 0;
    [[nodiscard]] virtual bool working() const = 0;
    virtual void setWorking(bool working) = 0;
    [[nodiscard]] virtual std::shared_ptr<WorkItem>& mouseMoveEventItem() = 0;
    [[nodiscard]] virtual std::string identifier() const = 0;
    [[nodiscard]] virtual AboutApp about() const = 0;

    /// Does nothing where the platform cannot start programs at login.
    virtual void setLaunchAtLogin(bool launch) = 0;
    /// Starts the countdown of a break, in seconds.
    virtual void startBreak(std::int64_t seconds) = 0;

    virtual void prepareBreakWindows() = 0;
    virtual void showBreakWindows() = 0;
    virtual void closeBreakWindows() = 0;
    /// Whether a break is on the screens.
    [[nodiscard]] virtual bool breakShows() const = 0;
    virtual void showWaterView() = 0;
    virtual void closeWaterView() = 0;
    /// Takes the water panel off the screen at once and without an answer.
    virtual void dismissWaterView() = 0;

    virtual void showTime(bool show) = 0;
    virtual void insetWaterItem() = 0;
    virtual void removeWaterItem() = 0;
    virtual void updateWaterItem() = 0;

    /// Whether the water reminder is on and its last answer was on an earlier day.
    [[nodiscard]] virtual bool waterHasNewDay() = 0;
    /// Empties the day's total and arms the reminder anew.
    virtual void startWaterDay() = 0;
};

} // namespace kelpa
