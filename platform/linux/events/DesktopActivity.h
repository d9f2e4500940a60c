#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/display/Display.h"
#include "platform/ports/System.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

class Bus;

/// Whether input counts as activity at all at this moment: not while the screen is locked, and not while
/// break windows cover every screen, because then all of it goes to the program itself.
using ActivityGate = std::function<bool()>;

/// Called by a source of activity, always from the main loop.
class ActivitySink {
  public:
    virtual ~ActivitySink() = default;
    /// Somebody uses the mouse or a modifier key, or any key where these cannot be told apart. While that
    /// goes on a source calls this once a second of the program's time at most, and for the last time within
    /// that second of the last event.
    virtual void deskUsed() = 0;
    /// A source that was asking found that it can watch.
    virtual void sourceWatches() = 0;
    /// A source that was asking found that this desktop has no such thing. It is not used again.
    virtual void sourceAbsent() = 0;
    /// The source cannot watch, or cannot any more; `why` goes into the log. It is not used again.
    virtual void sourceFailed(const std::string& why) = 0;
};

/// One way in which a desktop tells that somebody is there.
class ActivitySource {
  public:
    enum class Start {
        Watching,
        /// `sourceWatches`, `sourceAbsent` or `sourceFailed` follows.
        Asking,
        /// This desktop has no such thing. Nothing follows.
        Absent,
    };
    virtual ~ActivitySource() = default;
    /// For the log: where the activity is heard of, as the end of a sentence.
    [[nodiscard]] virtual std::string name() const = 0;
    /// Called once at most; `sink` outlives the source.
    virtual Start start(ActivitySink& sink) = 0;
};

/// Makes single uses of the desk of what idle notifications tell: when somebody begins to use it, and when
/// nobody has for a moment. In between somebody is there, which is said once a second.
///
/// The moment is part of what is said too much, so that the last use is said up to 0.8 s after the last
/// event, and the second may lie across it, so that it can be said up to 0.2 s before.
class ActivitySpell {
  public:
    /// Both outlive the spell.
    ActivitySpell(EventLoop& loop, const OwnWindows& windows);
    ~ActivitySpell();
    ActivitySpell(const ActivitySpell&) = delete;
    ActivitySpell& operator=(const ActivitySpell&) = delete;

    /// How long nobody has used the desk when `rest` is to be called, in seconds of the program's time.
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
    bool untold_ = false;             ///< a spell began since the desk was last said to be used
    std::shared_ptr<WorkItem> pulse_; ///< pending for a second after each time
    Subscription telling_;
};

/// Whoever uses the mouse or the modifier keys of an X server. Loop and windows outlive the source, as they
/// do with each of these.
[[nodiscard]] std::unique_ptr<ActivitySource> makeX11Activity(EventLoop& loop, ActivityGate gate,
                                                              const OwnWindows& windows);
/// Whoever uses a seat of a Wayland compositor.
[[nodiscard]] std::unique_ptr<ActivitySource> makeWaylandActivity(EventLoop& loop, const OwnWindows& windows,
                                                                  double speed);
/// Whoever uses the desk under GNOME. The bus outlives the source.
[[nodiscard]] std::unique_ptr<ActivitySource> makeMutterActivity(EventLoop& loop, Bus& session,
                                                                 const OwnWindows& windows, double speed);
/// Whoever uses the user's session, as the desktop tells logind. The bus outlives the source.
[[nodiscard]] std::unique_ptr<ActivitySource> makeLogindActivity(EventLoop& loop, Bus& system,
                                                                 const OwnWindows& windows);

/// The activity of a person at this desktop, from the first of several sources that works here; the best
/// source comes first. The report outlives the monitor.
[[nodiscard]] std::unique_ptr<ActivityMonitor>
makeDesktopActivity(ActivityGate gate, WindowReport& report,
                    std::vector<std::unique_ptr<ActivitySource>> sources);

} // namespace kelpa
