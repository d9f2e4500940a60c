#include "platform/linux/TimerQueue.h"

namespace kelpa {

class TimerQueue::Job {
  public:
    Key key;
    Time interval = 0;
    bool armed = false;
    std::function<void()> work;
};

namespace {

/// The first point of the grid after `now`: points that were missed are dropped, not made up.
TimerQueue::Time nextOnGrid(TimerQueue::Time due, TimerQueue::Time interval, TimerQueue::Time now) {
    if (now < due)
        return due + interval;
    return due + interval * ((now - due) / interval + 1);
}

} // namespace

std::shared_ptr<TimerQueue::Job> TimerQueue::add(Time due, Time interval, std::function<void()> work) {
    auto job = std::make_shared<Job>();
    job->interval = interval;
    job->work = std::move(work);
    job->armed = true;
    job->key = {due, nextNumber_++};
    jobs_.emplace(job->key, job);
    return job;
}

void TimerQueue::remove(Job& job) {
    if (!std::exchange(job.armed, false))
        return;
    // The job is destroyed once it has left the queue: what its work holds on to may cancel others.
    const auto gone = jobs_.extract(job.key);
}

std::optional<TimerQueue::Time> TimerQueue::earliest() const {
    if (jobs_.empty())
        return std::nullopt;
    return jobs_.begin()->first.first;
}

void TimerQueue::runDue(Time now, const bool& stopped) {
    const auto armedBefore = nextNumber_;
    while (!stopped) {
        const auto job = takeDue(now, armedBefore);
        if (!job)
            return;
        job->work();
    }
}

std::shared_ptr<TimerQueue::Job> TimerQueue::takeDue(Time now, std::uint64_t armedBefore) {
    const auto first = jobs_.begin();
    if (first == jobs_.end() || first->first.first > now || first->first.second >= armedBefore)
        return nullptr;
    auto node = jobs_.extract(first);
    auto job = node.mapped();
    if (job->interval == 0) {
        job->armed = false;
        return job;
    }
    // The node goes back under its new time, so that a tick costs no memory.
    job->key = {nextOnGrid(job->key.first, job->interval, now), nextNumber_++};
    node.key() = job->key;
    jobs_.insert(std::move(node));
    return job;
}

} // namespace kelpa
