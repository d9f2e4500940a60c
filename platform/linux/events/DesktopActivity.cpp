#include "platform/linux/events/DesktopActivity.h"

#include <utility>

namespace kelpa {

DesktopActivity::DesktopActivity(const ActivityGate& gate, WindowReport& report,
                                 std::vector<std::unique_ptr<ActivitySource>> sources)
    : gate_(gate), report_(report), sources_(std::move(sources)) {}

ActivityMonitor::Watch DesktopActivity::watch(std::function<void()> activity, std::function<void()> lost) {
    activity_ = std::move(activity);
    lost_ = std::move(lost);
    return start() == ActivitySource::Start::Watching ? Watch::Working : Watch::None;
}

ActivitySource::Start DesktopActivity::start() {
    for (; current_ < sources_.size(); ++current_) {
        const auto started = sources_[current_]->start(*this);
        if (started == ActivitySource::Start::Watching)
            use();
        if (started != ActivitySource::Start::Absent)
            return started;
    }
    report_.warning("Nothing on this desktop tells of mouse activity: work goes on when nobody is there.");
    if (std::exchange(watched_, false)) {
        // Whoever was away when the last source went can never be heard coming back.
        happened();
        lost_();
    }
    return ActivitySource::Start::Absent;
}

void DesktopActivity::use() {
    watched_ = true;
    report_.info("Activity is heard of from " + sources_[current_]->name() + ".");
}

void DesktopActivity::happened() {
    if (gate_.open())
        activity_();
}

void DesktopActivity::watching() {
    use();
    // From now on nobody being there can be told, which nothing has been waiting for so far.
    happened();
}

void DesktopActivity::failed(const std::string& why) {
    report_.warning("Activity cannot be heard of from " + sources_[current_]->name() + ": " + why);
    absent();
}

void DesktopActivity::absent() {
    ++current_;
    if (start() == ActivitySource::Start::Watching)
        happened();
}

} // namespace kelpa
