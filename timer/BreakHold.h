#pragma once

#include "base/Published.h"
#include "prefs/App.h"
#include "timer/BusyQuestion.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kelpa {

/// Lets a break that is due wait while somebody is busy, where a person has switched that on: a minute, and
/// again, until nobody is busy any more or it has waited for as long as it may. Until it comes, nothing of
/// the cycle moves.
class BreakHold {
  public:
    static constexpr double pause = 60; ///< seconds from one question to the next
    /// What a person may choose for the longest wait, in minutes; what is stored beyond counts as the nearer
    /// end.
    static constexpr std::int64_t shortestLimit = 15, longestLimit = 120;

    /// `probe` is null where nothing can be asked. All must outlive the object.
    BreakHold(App& app, BusyProbe* probe, Queue& mainQueue);

    /// A work period is over: the break comes inside the call, or once it need not wait. Does nothing while
    /// it waits.
    void breakIsDue();
    /// Lets the next break that is due come without a question: somebody asked for it.
    void letNextThrough() { wanted_ = true; }
    /// Forgets the break that waits, and for how long it has. One that is still due then is asked for anew.
    void endWait();

    /// By what the break is held that waits; nothing while none does.
    [[nodiscard]] std::optional<BusyReason> heldBy() const { return heldBy_; }
    /// Calls `told` whenever `heldBy` is another.
    Subscription observe(std::function<void()> told) { return changed_.add(std::move(told)); }

  private:
    void ask(const std::set<BusyReason>& reasons);
    void wait(BusyReason reason);
    void askAgain();
    void breakComes();
    void setHeldBy(std::optional<BusyReason> reason);
    [[nodiscard]] std::int64_t limit() const;

    App& app_;
    Queue& mainQueue_;
    BusyQuestion question_;
    std::optional<BusyReason> heldBy_;
    std::int64_t waited_ = 0; ///< minutes
    bool wanted_ = false;
    Listeners<> changed_;
    Subscription next_; ///< question
    Subscription workTold_, breakTold_, settingTold_;
};

} // namespace kelpa
