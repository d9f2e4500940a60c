#pragma once

#include "platform/ports/Busy.h"
#include "platform/ports/Timers.h"
#include "prefs/PrefState.h"

#include <functional>
#include <optional>
#include <set>

namespace kelpa {

/// The question whether somebody is busy, by what a person chose for that. It is asked once at a time, and
/// what does not answer within two seconds counts as not busy: a break must not hang on a program that does.
class BusyQuestion {
  public:
    static constexpr double patience = 2; ///< seconds

    /// `probe` is null where nothing can be asked. All must outlive the object.
    BusyQuestion(PrefState& state, BusyProbe* probe, Queue& mainQueue)
        : state_(state), probe_(probe), mainQueue_(mainQueue) {}

    /// What is to be asked for; empty while breaks are not to be held.
    [[nodiscard]] std::set<BusyReason> chosen() const;
    /// Asks for `reasons`, which are not empty. `answered` is called once, from the main loop, unless the
    /// question is dropped or asked anew.
    void ask(const std::set<BusyReason>& reasons, BusyProbe::Answer answered);
    void drop();
    /// Whether an answer is awaited.
    [[nodiscard]] bool out() const { return giveUp_.active(); }

  private:
    void end(std::optional<BusyReason> reason);

    PrefState& state_;
    BusyProbe* probe_;
    Queue& mainQueue_;
    BusyProbe::Answer answered_;
    Subscription question_;
    Subscription giveUp_;
};

} // namespace kelpa
