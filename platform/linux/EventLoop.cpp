#include "platform/linux/EventLoop.h"

#include <systemd/sd-event.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <sys/epoll.h>
#include <sys/wait.h>
#include <system_error>

namespace kelpa {

namespace {

/// What the loop asks the kernel for; anything above 1 lets it come as late as that on every tick.
constexpr std::uint64_t accuracy = 1;
/// Microseconds within which an alarm may ring together with something else.
constexpr std::uint64_t alarmAccuracy = 10'000;
constexpr double microseconds = 1e6;
/// In seconds; some three thousand years.
constexpr double longestWait = 1e11;

/// A delay in microseconds: zero for what is not above zero, "not a number" included, and cut down where sums
/// of times could overflow.
TimerQueue::Time microsecondsOf(double seconds) {
    if (!(seconds > 0))
        return 0;
    return static_cast<TimerQueue::Time>(std::llround(std::min(seconds, longestWait) * microseconds));
}

void check(int result, const char* what) {
    if (result < 0)
        throw std::system_error(-result, std::generic_category(), what);
}

/// Ends the job when the handle ends; does nothing once the loop is gone.
Subscription handleOf(const std::shared_ptr<TimerQueue>& queue, const std::shared_ptr<TimerQueue::Job>& job) {
    return Subscription([weakQueue = std::weak_ptr(queue), weakJob = std::weak_ptr(job)] {
        const auto jobs = weakQueue.lock();
        const auto armed = weakJob.lock();
        if (jobs && armed)
            jobs->remove(*armed);
    });
}

/// A ticker keeps no time itself: each connection is a repeating job of its own.
class LoopTicker final : public Ticker {
  public:
    LoopTicker(std::shared_ptr<TimerQueue> queue, double interval, TimerQueue::Time real)
        : queue_(std::move(queue)), interval_(interval), real_(real) {}
    [[nodiscard]] double interval() const override { return interval_; }
    Subscription connect(std::function<void()> tick) override {
        return handleOf(queue_, queue_->add(monotonicMicroseconds() + real_, real_, std::move(tick)));
    }

  private:
    std::shared_ptr<TimerQueue> queue_;
    double interval_;
    TimerQueue::Time real_;
};

/// An event source with its callback. The source holds no reference: whoever holds the handle does, and the
/// handler adds one while the callback runs, because that may end the handle.
template <typename... Arguments>
struct Watch : std::enable_shared_from_this<Watch<Arguments...>> {
    std::function<void(Arguments...)> callback;
    sd_event_source* source = nullptr;

    void end() {
        sd_event_source_disable_unref(source);
        source = nullptr;
    }
    ~Watch() { end(); }
};

using FileWatch = Watch<>;
using ChildWatch = Watch<int>;

int onReadable(sd_event_source*, int, std::uint32_t, void* data) noexcept {
    const auto watch = static_cast<FileWatch*>(data)->shared_from_this();
    watch->callback();
    return 0;
}

int onWallTime(sd_event_source*, std::uint64_t, void* data) noexcept {
    return onReadable(nullptr, 0, 0, data);
}

int onAlarm(sd_event_source*, std::uint64_t, void* data) noexcept {
    (*static_cast<std::function<void()>*>(data))();
    return 0;
}

int waitStatus(const siginfo_t& info) {
    if (info.si_code == CLD_EXITED)
        return W_EXITCODE(info.si_status, 0);
    return W_EXITCODE(0, info.si_status) | (info.si_code == CLD_DUMPED ? WCOREFLAG : 0);
}

int onChild(sd_event_source*, const siginfo_t* info, void* data) noexcept {
    const auto watch = static_cast<ChildWatch*>(data)->shared_from_this();
    watch->callback(waitStatus(*info));
    return 0;
}

template <typename AnyWatch>
Subscription handleOf(std::shared_ptr<AnyWatch> watch) {
    return Subscription([owned = std::move(watch)] { owned->end(); });
}

bool ignored(int number) {
    struct sigaction action {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

/// What tells the program to end.
std::vector<int> endingSignals() {
    std::vector<int> signals{SIGTERM, SIGINT};
    if (!ignored(SIGHUP))
        signals.push_back(SIGHUP);
    return signals;
}

sigset_t setOf(const std::vector<int>& signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : signals)
        sigaddset(&set, number);
    return set;
}

} // namespace

double monotonicSeconds() {
    return static_cast<double>(monotonicMicroseconds()) / microseconds;
}

TimerQueue::Time monotonicMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<TimerQueue::Time>(now.tv_sec) * 1'000'000U +
           static_cast<TimerQueue::Time>(now.tv_nsec) / 1000U;
}

EventLoop::EventLoop(double speed) : speed_(speed), endingSignals_(endingSignals()) {
    takeSignals();
    open();
}

EventLoop::~EventLoop() {
    sd_event_source_disable_unref(timer_);
    sd_event_source_disable_unref(first_);
    sd_event_unref(event_);
    pthread_sigmask(SIG_SETMASK, &oldMask_, nullptr);
}

void EventLoop::takeSignals() {
    sigset_t handled = setOf(endingSignals_);
    sigaddset(&handled, SIGCHLD);
    pthread_sigmask(SIG_BLOCK, &handled, &oldMask_);
    // A helper program or the X server may vanish while we write to it, and a file may grow no further: these
    // are error codes, not our end.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void EventLoop::open() {
    check(sd_event_new(&event_), "event loop");
    check(sd_event_add_time(event_, &timer_, CLOCK_MONOTONIC, 0, accuracy, onTime, this), "timer");
    check(sd_event_source_set_enabled(timer_, SD_EVENT_OFF), "timer");
    for (const int number : endingSignals_)
        check(sd_event_add_signal(event_, first_ ? nullptr : &first_, number, onSignal, this), "signals");
    // A source that is switched off, as the timer's is while nothing waits, is not asked to prepare.
    check(sd_event_source_set_prepare(first_, onPrepare), "timer");
}

std::shared_ptr<TimerQueue::Job> EventLoop::arm(TimerQueue::Time delay, std::function<void()> work) {
    return queue_->add(monotonicMicroseconds() + delay, 0, std::move(work));
}

void EventLoop::setTimer() {
    const auto due = queue_->earliest();
    if (!due) {
        sd_event_source_set_enabled(timer_, SD_EVENT_OFF);
        armedFor_ = 0;
    } else if (*due != armedFor_) {
        sd_event_source_set_time(timer_, *due);
        sd_event_source_set_enabled(timer_, SD_EVENT_ONESHOT);
        armedFor_ = *due;
    }
}

int EventLoop::onTime(sd_event_source*, std::uint64_t, void* loop) noexcept {
    auto& self = *static_cast<EventLoop*>(loop);
    self.armedFor_ = 0;
    self.queue_->runDue(monotonicMicroseconds(), self.stopped_);
    return 0;
}

int EventLoop::onPrepare(sd_event_source*, void* loop) noexcept {
    static_cast<EventLoop*>(loop)->setTimer();
    return 0;
}

int EventLoop::onSignal(sd_event_source*, const signalfd_siginfo*, void* loop) noexcept {
    static_cast<EventLoop*>(loop)->terminate();
    return 0;
}

std::unique_ptr<Ticker> EventLoop::makeTicker(double interval) {
    const auto real = std::max<TimerQueue::Time>(1, microsecondsOf(interval / speed_));
    return std::make_unique<LoopTicker>(queue_, interval, real);
}

void EventLoop::async(std::function<void()> work) {
    arm(0, std::move(work));
}

void EventLoop::asyncAfter(double seconds, std::shared_ptr<WorkItem> item) {
    const auto job = arm(microsecondsOf(seconds / speed_), [item] { item->perform(); });
    const auto leave = std::make_shared<Subscription>(handleOf(queue_, job));
    item->onCancel([leave] { leave->cancel(); });
    // An item that was cancelled before it could be told how to leave must not stay behind either.
    if (!item->pending())
        leave->cancel();
}

void EventLoop::terminate() {
    stopped_ = true;
    sd_event_exit(event_, 0);
}

Subscription EventLoop::afterReal(double seconds, std::function<void()> work) {
    return handleOf(queue_, arm(microsecondsOf(seconds), std::move(work)));
}

/// The kernel knows when its wall clock was set, and that a machine which slept is late.
Subscription EventLoop::atWallTime(double secondsSince1970, std::function<void()> work) {
    auto watch = std::make_shared<Watch<>>();
    watch->callback = std::move(work);
    check(sd_event_add_time(event_, &watch->source, CLOCK_REALTIME, microsecondsOf(secondsSince1970),
                            alarmAccuracy, onWallTime, watch.get()),
          "wall clock");
    return handleOf(std::move(watch));
}

Subscription EventLoop::watch(int fd, std::function<void()> readable) {
    auto watch = std::make_shared<FileWatch>();
    watch->callback = std::move(readable);
    check(sd_event_add_io(event_, &watch->source, fd, EPOLLIN, onReadable, watch.get()), "watch");
    return handleOf(std::move(watch));
}

Subscription EventLoop::watchChild(int pid, std::function<void(int status)> ended) {
    auto watch = std::make_shared<ChildWatch>();
    watch->callback = std::move(ended);
    check(sd_event_add_child(event_, &watch->source, pid, WEXITED, onChild, watch.get()), "watch child");
    return handleOf(std::move(watch));
}

bool EventLoop::runUntil(const std::function<bool()>& reached, double seconds) {
    const TimerQueue::Time end = monotonicMicroseconds() + microsecondsOf(seconds);
    while (!reached() && !stopped_) {
        const TimerQueue::Time now = monotonicMicroseconds();
        if (now >= end || sd_event_run(event_, end - now) < 0)
            break;
    }
    return reached();
}

void EventLoop::interruptibly(const std::function<void()>& work) {
    const sigset_t ending = setOf(endingSignals_);
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
    work();
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
}

int EventLoop::run() {
    started_ = true;
    const int code = sd_event_loop(event_);
    check(code, "event loop");
    return code;
}

Alarm::Alarm(const EventLoop& loop, std::function<void()> rings) : rings_(std::move(rings)) {
    check(sd_event_add_time(loop.handle(), &source_, CLOCK_MONOTONIC, 0, alarmAccuracy, onAlarm, &rings_),
          "alarm");
    stop();
}

Alarm::~Alarm() {
    sd_event_source_disable_unref(source_);
}

void Alarm::set(double seconds) {
    sd_event_source_set_time(source_, monotonicMicroseconds() + microsecondsOf(seconds));
    sd_event_source_set_enabled(source_, SD_EVENT_ONESHOT);
}

void Alarm::stop() {
    sd_event_source_set_enabled(source_, SD_EVENT_OFF);
}

} // namespace kelpa
