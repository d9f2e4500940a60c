#include "platform/linux/update/UpdateSchedule.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// The queue's clock stands still while the machine sleeps, so the wall clock is asked again now and then.
constexpr double longestNap = 3600;

} // namespace

UpdateSchedule::UpdateSchedule(const Clock& clock, Queue& queue, DefaultsStore& store,
                               std::function<void()> due)
    : clock_(clock), queue_(queue), store_(store), due_(std::move(due)) {}

UpdateSchedule::~UpdateSchedule() {
    if (item_)
        item_->cancel();
}

void UpdateSchedule::start(double interval) {
    interval_ = interval;
    arm(remaining());
}

void UpdateSchedule::noteCheck() {
    store_.setReal(lastCheckKey, clock_.now().secondsSince1970);
}

/// Nothing remains where no check is known, or one of a time that has not come: the clock was wrong then.
double UpdateSchedule::remaining() const {
    const double now = clock_.now().secondsSince1970;
    const double last = store_.real(lastCheckKey).value_or(0);
    return last <= now ? last + interval_ - now : 0;
}

void UpdateSchedule::arm(double seconds) {
    item_ = std::make_shared<WorkItem>([this] { wake(); });
    queue_.asyncAfter(std::clamp(seconds, soonest, longestNap), item_);
}

void UpdateSchedule::wake() {
    if (remaining() <= 0)
        due_();
    // What could not be done now, because a person has yet to answer, is not tried again all the time.
    arm(remaining() <= 0 ? longestNap : remaining());
}

} // namespace kelpa
