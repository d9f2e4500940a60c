#include "desk/VirtualTime.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace kelpa::desk {

namespace {

constexpr double microsecondsASecond = 1e6;

std::int64_t inMicroseconds(double seconds) {
    constexpr double longest = 4e12; // more than any script can wait for
    return static_cast<std::int64_t>(std::llround(std::clamp(seconds, 0.0, longest) * microsecondsASecond));
}

class VirtualTicker final : public Ticker {
  public:
    VirtualTicker(VirtualTime& time, double interval) : time_(time), interval_(interval) {}
    [[nodiscard]] double interval() const override { return interval_; }
    Subscription connect(std::function<void()> tick) override {
        return time_.every(interval_, std::move(tick));
    }

  private:
    VirtualTime& time_;
    double interval_;
};

} // namespace

std::shared_ptr<VirtualTime::Job> VirtualTime::arm(double seconds, std::function<void()> work,
                                                   std::int64_t interval) {
    auto job = std::make_shared<Job>(Job{std::move(work), interval});
    jobs_.emplace(now_ + inMicroseconds(seconds), job);
    return job;
}

void VirtualTime::pass(std::int64_t microseconds) {
    const std::int64_t end = now_ + microseconds;
    while (!stopped_ && !jobs_.empty() && jobs_.begin()->first <= end) {
        auto next = jobs_.extract(jobs_.begin());
        const auto job = next.mapped();
        if (!job->alive)
            continue;
        now_ = std::max(now_, next.key());
        if (job->interval > 0) {
            next.key() += job->interval;
            jobs_.insert(std::move(next));
        }
        job->work();
    }
    if (!stopped_)
        now_ = end;
}

std::unique_ptr<Ticker> VirtualTime::makeTicker(double interval) {
    return std::make_unique<VirtualTicker>(*this, interval);
}

Subscription VirtualTime::every(double interval, std::function<void()> tick) {
    auto job = arm(interval, std::move(tick), inMicroseconds(interval));
    return Subscription([job] { job->alive = false; });
}

void VirtualTime::async(std::function<void()> work) {
    arm(0, std::move(work));
}

void VirtualTime::asyncAfter(double seconds, std::shared_ptr<WorkItem> item) {
    const auto job = arm(seconds, [item] { item->perform(); });
    item->onCancel([weak = std::weak_ptr(job)] {
        if (const auto waiting = weak.lock())
            waiting->alive = false;
    });
}

Queue& VirtualTime::makeSerialQueue(const std::string& label) {
    queueLabels_.push_back(label);
    return *this;
}

void VirtualClock::set(Date date) {
    offset_ = std::llround(date.secondsSince1970 * microsecondsASecond) - time_.microseconds();
    rearm();
}

void VirtualClock::step(double seconds) {
    constexpr std::int64_t farthest = 4'000'000'000'000'000'000;
    offset_ =
        std::clamp<std::int64_t>(offset_ + std::llround(seconds * microsecondsASecond), -farthest, farthest);
    rearm();
}

Subscription VirtualClock::at(Date date, std::function<void()> work) {
    const auto made = std::make_shared<Appointment>(Appointment{date, nullptr, std::move(work)});
    appointments_->push_back(made);
    arm(made);
    return Subscription([weak = std::weak_ptr(appointments_), made] {
        const auto all = weak.lock();
        if (!all)
            return;
        made->item->cancel();
        all->remove(made);
    });
}

void VirtualClock::arm(const std::shared_ptr<Appointment>& appointment) {
    // The list keeps the appointment, and the appointment its item, which would keep it for ever.
    appointment->item = std::make_shared<WorkItem>([this, weak = std::weak_ptr(appointment)] {
        const auto due = weak.lock();
        appointments_->remove(due);
        due->work();
    });
    time_.asyncAfter(appointment->date.secondsSince1970 - now().secondsSince1970, appointment->item);
}

void VirtualClock::rearm() {
    for (const auto& appointment : *appointments_) {
        appointment->item->cancel();
        arm(appointment);
    }
}

Date VirtualClock::now() const {
    return Date{static_cast<double>(offset_ + time_.microseconds()) / microsecondsASecond};
}

bool VirtualClock::setZone(const std::string& name) {
    const std::filesystem::path database = "/usr/share/zoneinfo";
    const bool known = !name.empty() && name.front() != '/' && name.find("..") == std::string::npos &&
                       std::filesystem::is_regular_file(database / name);
    if (!known && name != "UTC")
        return false;
    return ::setenv("TZ", name == "UTC" ? "UTC0" : (":" + name).c_str(), 1) == 0;
}

} // namespace kelpa::desk
