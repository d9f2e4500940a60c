#include "platform/linux/events/DesktopActivity.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelpa {

namespace {

constexpr double pulseSeconds = 1.0;
/// The view has reported by then what a person did in its windows.
constexpr double viewSeconds = 0.25;
/// What the desktop heard before we say it is at most this old when the view has been waited for.
constexpr double ownSeconds = viewSeconds + pulseSeconds;

class DesktopActivity final : public ActivityMonitor, private ActivitySink {
  public:
    DesktopActivity(ActivityGate gate, WindowReport& report,
                    std::vector<std::unique_ptr<ActivitySource>> sources)
        : gate_(std::move(gate)), report_(report), sources_(std::move(sources)) {}

    Watch watch(std::function<void()> activity, std::function<void()> lost) override {
        activity_ = std::move(activity);
        lost_ = std::move(lost);
        return start() == ActivitySource::Start::Watching ? Watch::Working : Watch::None;
    }

  private:
    void deskUsed() override {
        if (gate_())
            activity_();
    }

    void sourceWatches() override {
        use();
        // From now on a desk that nobody uses is noticed, which nothing has waited for so far.
        deskUsed();
    }

    void sourceAbsent() override {
        ++current_;
        if (start() == ActivitySource::Start::Watching)
            deskUsed();
    }

    void sourceFailed(const std::string& why) override {
        report_.warning("Activity cannot be heard of from " + sources_[current_]->name() + ": " + why);
        sourceAbsent();
    }

    void use() {
        watched_ = true;
        report_.info("Activity is heard of from " + sources_[current_]->name() + ".");
    }

    /// Goes on with the first source from `current_` on that is not absent.
    ActivitySource::Start start() {
        for (; current_ < sources_.size(); ++current_) {
            const auto started = sources_[current_]->start(*this);
            if (started == ActivitySource::Start::Watching)
                use();
            if (started != ActivitySource::Start::Absent)
                return started;
        }
        report_.warning(
            "Nothing on this desktop tells of mouse activity: work goes on when nobody is there.");
        if (std::exchange(watched_, false)) {
            // Whoever was away when the last source went can never be heard coming back.
            deskUsed();
            lost_();
        }
        return ActivitySource::Start::Absent;
    }

    ActivityGate gate_;
    WindowReport& report_;
    std::vector<std::unique_ptr<ActivitySource>> sources_;
    std::size_t current_ = 0; ///< the one in use, or being asked
    bool watched_ = false;    ///< a source worked, so that there is something to lose
    std::function<void()> activity_;
    std::function<void()> lost_;
};

} // namespace

ActivitySpell::ActivitySpell(EventLoop& loop, const OwnWindows& windows) : loop_(loop), windows_(windows) {}

ActivitySpell::~ActivitySpell() {
    stop();
}

std::uint32_t ActivitySpell::restMilliseconds(double speed) {
    return static_cast<std::uint32_t>(std::max(1L, std::lround(1000 * restSeconds / speed)));
}

void ActivitySpell::start(ActivitySink& sink) {
    sink_ = &sink;
    active_ = true;
    pulse_ = std::make_shared<WorkItem>([this] { pulse(); });
    loop_.asyncAfter(pulseSeconds, pulse_);
}

void ActivitySpell::stop() {
    active_ = untold_ = false;
    telling_.cancel();
    if (const auto pending = std::exchange(pulse_, nullptr))
        pending->cancel();
}

void ActivitySpell::active() {
    if (std::exchange(active_, true))
        return;
    untold_ = true;
    if (!pulse_)
        pulse();
}

void ActivitySpell::pulse() {
    pulse_ = nullptr;
    if (!active_ && !std::exchange(untold_, false))
        return;
    untold_ = false;
    pulse_ = std::make_shared<WorkItem>([this] { pulse(); });
    loop_.asyncAfter(pulseSeconds, pulse_);
    tell();
}

/// No desktop says into which window a person clicks. The view knows of clicks into our own, and while it
/// hears of some, the activity is taken to be that.
void ActivitySpell::tell() {
    if (!windows_.anyVisible())
        return sink_->deskUsed();
    // Where a second is short, what is under way stands for the next times as well.
    if (telling_.active())
        return;
    telling_ = loop_.afterReal(viewSeconds, [this] {
        telling_.cancel();
        if (windows_.secondsSinceInput() > ownSeconds)
            sink_->deskUsed();
    });
}

std::unique_ptr<ActivityMonitor> makeDesktopActivity(ActivityGate gate, WindowReport& report,
                                                     std::vector<std::unique_ptr<ActivitySource>> sources) {
    return std::make_unique<DesktopActivity>(std::move(gate), report, std::move(sources));
}

} // namespace kelpa
