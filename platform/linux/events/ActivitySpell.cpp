#include "platform/linux/events/ActivitySpell.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelpa {

namespace {

constexpr double pulseSeconds = 1.0;
/// The view has told by then of what it was told itself.
constexpr double viewSeconds = 0.25;
/// What the desktop heard before a word of ours is at most this old when the view has been waited for.
constexpr double ownSeconds = viewSeconds + pulseSeconds;

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
        return sink_->happened();
    // Where a second is short, the word that is under way stands for the next ones.
    if (telling_.active())
        return;
    telling_ = loop_.afterReal(viewSeconds, [this] {
        telling_.cancel();
        if (windows_.secondsSinceInput() > ownSeconds)
            sink_->happened();
    });
}

} // namespace kelpa
