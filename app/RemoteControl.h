#pragma once

#include "base/Calendar.h"
#include "base/Published.h"
#include "platform/ports/Busy.h"
#include "platform/ports/Services.h"
#include "platform/ports/Timers.h"
#include "prefs/PromptState.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// The running program as scripts see it.
struct RemoteStatus {
    enum class State {
        Working, ///< a work period counts down
        Break,   ///< a break is on the screens, whatever runs beneath it
        Stopped, ///< the program stopped by itself and will start again by itself
        Paused,  ///< the user stopped it
    };
    State state = State::Working;
    std::string time; ///< as it is shown
    BreakKind breakKind = BreakKind::None;
    std::optional<BusyReason> heldBy; ///< of a break that is due and waits beneath `Working`
    bool paused = false;              ///< the user's own stop, which may hold beneath a break
    bool waterEnabled = false;
    std::int64_t waterFinished = 0; ///< ml
    std::int64_t waterTarget = 0;   ///< ml
    bool operator==(const RemoteStatus&) const = default;
};

/// As scripts read them.
[[nodiscard]] std::string_view nameOf(RemoteStatus::State state);
[[nodiscard]] std::string_view nameOf(BreakKind kind);

/// What scripts may see of the program and do to it: no more than the menu and the windows allow a person. A
/// request that is refused changes nothing and gives the reason in plain words; one that was obeyed gives
/// none. More than twenty changes a second are nobody's wish and are refused, but for the program's end: each
/// may write lines of the cycle, of which none is ever left out.
class RemoteControl {
  public:
    using Refusal = std::optional<std::string_view>;

    /// Both must outlive the object. The program must have been set up before any other call.
    RemoteControl(ApplicationLoop& application, Queue& mainQueue)
        : application_(application), mainQueue_(mainQueue) {}

    [[nodiscard]] static RemoteStatus status();
    /// Calls `changed` whenever the status may have changed. The call comes in the middle of the change, so
    /// read the status later, from the main loop. As long as nobody observes, nothing of this costs a tick
    /// anything.
    [[nodiscard]] static Subscription observe(const std::function<void()>& changed);

    /// The user's own stop, and its end, as the menu's pause line has them. Asking for what is so already
    /// changes nothing. While a break is on the screens nobody can reach that line, and these refuse.
    Refusal pause();
    /// The same until a time, at which work starts by itself: so long from now, in a text like "45m" or
    /// "1h30m", or at the next "14:30" or "tomorrow". Where the user has paused already only the time is set.
    Refusal pauseFor(const std::string& duration);
    Refusal pauseUntil(const std::string& time);
    Refusal resume();
    Refusal toggle();
    /// Ends the break where its screen offers that.
    Refusal skip();
    /// Starts the break that comes next, and puts it off by so many minutes, or where the text is empty by
    /// those that a person has chosen: what a notice before it offers. Both need a work period that counts,
    /// or a break that waits.
    Refusal startBreak();
    Refusal postpone(const std::string& minutes);
    /// Shows the water panel where the menu has its line.
    Refusal showWater();
    Refusal showSettings();
    Refusal showHistory();
    Refusal quit();

  private:
    Refusal change(const std::function<void()>& made);
    Refusal pauseTo(std::optional<Date> end, Refusal otherwise);

    ApplicationLoop& application_;
    Queue& mainQueue_;
    struct Recent {
        int changes = 0;      ///< of the last second
        bool refused = false; ///< and the log was told
    };
    std::shared_ptr<Recent> recent_ = std::make_shared<Recent>();
};

} // namespace kelpa
