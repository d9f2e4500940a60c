#pragma once

#include "base/Published.h"
#include "platform/ports/Notifications.h"
#include "prefs/App.h"
#include "prefs/PromptState.h"
#include "timer/BusyQuestion.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kelpa {

/// What people asked for before a break.
struct BreakWishes {
    int postponed = 0;    ///< how often it was given more time
    bool started = false; ///< whether it was asked to come at once
};

/// Tells a person of a break before it comes, where that is switched on, and does what may be asked for then:
/// the break at once, or more time. Scripts ask for the same, also where nobody is told.
class BreakNotice {
  public:
    static constexpr int mostPostponed = 3; ///< times, for one break
    /// The minutes that more time may be; what is stored beyond counts as the nearer end.
    static constexpr std::int64_t leastMore = 2, mostMore = 15;

    /// `notifications` and `probe` are null where this platform has none. All must outlive the object.
    BreakNotice(App& app, Notifications* notifications, BusyProbe* probe, Queue& mainQueue);

    /// Why a request cannot be met now.
    enum class Objection {
        None,
        NoBreakComes, ///< no work period counts down and no break waits
        Forced,       ///< a long break that nobody may skip comes
        TooOften,     ///< it was given more time as often as there is any
        MoreIsLeft,   ///< it comes later than asked for
    };
    [[nodiscard]] Objection objectionToStart() const;
    [[nodiscard]] Objection objectionToMore(std::int64_t minutes) const;
    /// Both do nothing against an objection.
    void start();
    void giveMore(std::int64_t minutes);
    /// The minutes that a person has chosen for more time.
    [[nodiscard]] std::int64_t more() const;

    /// A full work period begins, work stops, or the break has come: what was told and asked for is over.
    void beginAnew();

    /// Of the break that comes next.
    [[nodiscard]] const BreakWishes& coming() const { return coming_; }

  private:
    /// What a notification says.
    struct Offer {
        BreakKind kind = BreakKind::Short;
        std::int64_t more = 0; ///< minutes; 0 where there is none
        bool operator==(const Offer&) const = default;
    };
    [[nodiscard]] Offer offer() const;
    [[nodiscard]] std::int64_t secondsLeft() const;
    void setLead(std::int64_t seconds);
    void periodBegins();
    void ticked(std::int64_t secondsLeft);
    void isDue(std::int64_t secondsLeft);
    void show(std::int64_t secondsLeft);
    void withdraw();
    void pressed(const std::string& action);
    void countDown(std::int64_t seconds);

    App& app_;
    Notifications* notifications_;
    BusyQuestion question_;
    std::int64_t lead_ = 0; ///< seconds before a break; 0 for no word
    bool ahead_ = false;    ///< the moment is still to come in this period
    std::optional<Offer> shown_;
    BreakWishes coming_;
    Subscription workTold_, breakTold_, settingTold_;
    Subscription ticks_; ///< while a word is to be given
};

} // namespace kelpa
