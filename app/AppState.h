#pragma once

#include "base/Published.h"
#include "history/HistoryRecorder.h"
#include "platform/ports/Ports.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"
#include "prefs/PrefState.h"
#include "prefs/PromptState.h"
#include "timer/BreakHold.h"
#include "timer/BreakNotice.h"
#include "timer/TicktackController.h"
#include "water/PrefWaterState.h"

#include <functional>
#include <memory>

namespace kelpa {

/// The shared state of the program. Nothing of it is kept from run to run; the objects are made on first use
/// and live for the whole run.
class AppState {
  public:
    /// Both must outlive the process's last use. Call before anything else.
    static void wire(App& app, Ports& ports);

    /// The user's own stop: while it holds nothing automatic starts work again. Every assignment sets
    /// `working` to its opposite.
    [[nodiscard]] static bool manualPause();
    static void setManualPause(bool pause);
    /// Ends the user's own stop and starts nothing: for whoever starts work by rules of its own.
    static void liftManualPause();

    /// Whether the cycle runs. Every assignment acts, also of the same value: true starts a work period from
    /// its full length, false stops whatever period runs.
    [[nodiscard]] static bool working();
    static void setWorking(bool working);
    /// Calls `told` after each assignment of `working`, and so also of `manualPause`, until the handle ends.
    static Subscription observeWorking(std::function<void()> told);

    [[nodiscard]] static PrefState& prefState();
    [[nodiscard]] static PromptState& promptState();
    [[nodiscard]] static TicktackState& workState();
    [[nodiscard]] static TicktackState& breakState();
    [[nodiscard]] static PrefWaterState& waterState();
    [[nodiscard]] static BreakNotice& breakNotice();
    [[nodiscard]] static BreakHold& breakHold();
    [[nodiscard]] static HistoryRecorder& history();

    /// The pending check whether the mouse has stood still, which is set and cancelled by those who know of
    /// activity and of breaks; null until there was one.
    [[nodiscard]] static std::shared_ptr<WorkItem>& mouseMoveEventItem();
};

} // namespace kelpa
