#include "platform/linux/SerialQueues.h"

#include "platform/linux/Monotonic.h"
#include "platform/linux/TimerQueue.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <sys/timerfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace kelpa {

namespace {

/// The kernel keeps no more of a thread's name.
constexpr std::size_t nameLength = 15;

timespec inTimespec(TimerQueue::Time microseconds) {
    return {static_cast<time_t>(microseconds / 1'000'000U),
            static_cast<long>(microseconds % 1'000'000U * 1000U)};
}

/// An alarm that one thread waits for and every thread may set.
class Alarm {
  public:
    Alarm() : fd_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC)) {
        if (fd_ < 0)
            throw std::system_error(errno, std::generic_category(), "timer of a serial queue");
    }
    ~Alarm() { ::close(fd_); }
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;

    /// At a point of the monotonic clock; one that has passed counts as now. None for never.
    void set(std::optional<TimerQueue::Time> due) const {
        // All zeros would switch the timer off.
        const itimerspec at{{}, due ? inTimespec(std::max<TimerQueue::Time>(1, *due)) : timespec{}};
        timerfd_settime(fd_, TFD_TIMER_ABSTIME, &at, nullptr);
    }
    void wait() const {
        std::uint64_t count = 0;
        while (::read(fd_, &count, sizeof count) < 0 && errno == EINTR) {
        }
    }

  private:
    int fd_;
};

} // namespace

class SerialQueue final : public Queue {
  public:
    SerialQueue(const std::string& label, double speed) : speed_(speed), shared_(std::make_shared<Shared>()) {
        startThread(label);
    }
    ~SerialQueue() override {
        shared_->stop();
        thread_.join();
    }
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void async(std::function<void()> work) override { shared_->add(0, std::move(work)); }

    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override {
        const auto job = shared_->add(microsecondsOf(seconds / speed_), [item] { item->perform(); });
        const auto leave = [weakShared = std::weak_ptr(shared_), weakJob = std::weak_ptr(job)] {
            const auto shared = weakShared.lock();
            const auto armed = weakJob.lock();
            if (shared && armed)
                shared->remove(*armed);
        };
        item->onCancel(leave);
        // An item that was cancelled before it could be told how to leave must not stay behind either.
        if (!item->pending())
            leave();
    }

  private:
    /// What the thread and those who hand it work have in common.
    struct Shared {
        TimerQueue jobs;
        std::mutex setting; ///< the alarm is always set to what the jobs say at that moment
        Alarm alarm;
        bool stopped = false; ///< guarded by `setting`

        std::shared_ptr<TimerQueue::Job> add(TimerQueue::Time delay, std::function<void()> work) {
            auto job = jobs.add(monotonicMicroseconds() + delay, 0, std::move(work));
            setAlarm();
            return job;
        }
        void remove(TimerQueue::Job& job) {
            jobs.remove(job);
            setAlarm();
        }
        void setAlarm() {
            const std::lock_guard lock(setting);
            alarm.set(stopped ? TimerQueue::Time{0} : jobs.earliest());
        }
        void stop() {
            {
                const std::lock_guard lock(setting);
                stopped = true;
            }
            setAlarm();
        }
        bool isStopped() {
            const std::lock_guard lock(setting);
            return stopped;
        }
        void run() {
            while (!isStopped()) {
                alarm.wait();
                jobs.runDue(monotonicMicroseconds(), false);
                setAlarm();
            }
        }
    };

    /// No signal is for this thread: the main loop takes them.
    void startThread(const std::string& label) {
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        thread_ = std::thread([shared = shared_] { shared->run(); });
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        // Labels begin alike; what tells them apart stands at their end.
        const std::size_t from = label.size() > nameLength ? label.size() - nameLength : 0;
        pthread_setname_np(thread_.native_handle(), label.c_str() + from);
    }

    double speed_;
    std::shared_ptr<Shared> shared_;
    std::thread thread_;
};

SerialQueues::SerialQueues(double speed) : speed_(speed) {}

SerialQueues::~SerialQueues() = default;

Queue& SerialQueues::makeSerialQueue(const std::string& label) {
    return *queues_.emplace_back(std::make_unique<SerialQueue>(label, speed_));
}

} // namespace kelpa
