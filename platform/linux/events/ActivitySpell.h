#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/display/OwnWindows.h"
#include "platform/linux/events/ActivitySource.h"

#include <memory>

namespace kelpa {

/// Makes words of activity of what idle notifications tell: when somebody begins to use the desk, and when
/// nobody has for a moment. In between somebody is there, which is said once a second.
///
/// The moment is part of what is said too much, so that the last word comes up to 0.8 s after the last event,
/// and the second may lie across it, so that it can come up to 0.2 s before.
class ActivitySpell {
  public:
    /// Both outlive the spell.
    ActivitySpell(EventLoop& loop, const OwnWindows& windows);
    ~ActivitySpell();
    ActivitySpell(const ActivitySpell&) = delete;
    ActivitySpell& operator=(const ActivitySpell&) = delete;

    /// How long nobody has used the desk when `rest` is to be called, in the program's time.
    static constexpr double restSeconds = 0.8;
    /// The same in the whole milliseconds of real time that desktops reckon in.
    [[nodiscard]] static std::uint32_t restMilliseconds(double speed);

    /// Nothing is known yet: somebody is taken to be there. `sink` outlives the spell.
    void start(ActivitySink& sink);
    void active();
    void rest() { active_ = false; }
    /// Nothing is said any more.
    void stop();

  private:
    void pulse();
    void tell();

    EventLoop& loop_;
    const OwnWindows& windows_;
    ActivitySink* sink_ = nullptr; ///< null before the start
    bool active_ = false;
    bool untold_ = false;             ///< a spell began since the last word
    std::shared_ptr<WorkItem> pulse_; ///< pending for a second after each word
    Subscription telling_;
};

} // namespace kelpa
