#include "platform/linux/EventLoop.h"

#include "platform/linux/TimerQueue.h"

#include <systemd/sd-event.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <ctime>
#include <sys/epoll.h>
#include <sys/wait.h>
#include <system_error>
#include <vector>

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

/// What the loop is made of. The one event source for time is set to the earliest job just before the loop
/// sleeps, so arming and disarming cost no system call.
struct EventLoop::State {
    double speed = 1;
    bool started = false;
    bool stopped = false;
    std::shared_ptr<TimerQueue> queue = std::make_shared<TimerQueue>();
    const std::vector<int> ending = endingSignals();
    sigset_t oldMask{};
    sd_event* event = nullptr;
    sd_event_source* timer = nullptr;
    sd_event_source* first = nullptr; ///< of the signals, always listened to
    TimerQueue::Time armedFor = 0;

    explicit State(double factor) : speed(factor) {
        takeSignals();
        open();
    }
    ~State() {
        close();
        pthread_sigmask(SIG_SETMASK, &oldMask, nullptr);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void takeSignals() {
        sigset_t handled = setOf(ending);
        sigaddset(&handled, SIGCHLD);
        pthread_sigmask(SIG_BLOCK, &handled, &oldMask);
        // A helper program or the X server may vanish while we write to it, and a file may grow no further:
        // these are error codes, not our end.
        std::signal(SIGPIPE, SIG_IGN);
        std::signal(SIGXFSZ, SIG_IGN);
    }

    void open() {
        check(sd_event_new(&event), "event loop");
        check(sd_event_add_time(event, &timer, CLOCK_MONOTONIC, 0, accuracy, onTime, this), "timer");
        check(sd_event_source_set_enabled(timer, SD_EVENT_OFF), "timer");
        for (const int number : ending)
            check(sd_event_add_signal(event, first ? nullptr : &first, number, onSignal, this), "signals");
        // A source that is switched off, as the timer's is while nothing waits, is not asked to prepare.
        check(sd_event_source_set_prepare(first, onPrepare), "timer");
    }

    void close() {
        sd_event_source_disable_unref(timer);
        sd_event_source_disable_unref(first);
        sd_event_unref(event);
    }

    std::shared_ptr<TimerQueue::Job> arm(TimerQueue::Time delay, std::function<void()> work) {
        return queue->add(monotonicMicroseconds() + delay, 0, std::move(work));
    }

    void setTimer() {
        const auto due = queue->earliest();
        if (!due) {
            sd_event_source_set_enabled(timer, SD_EVENT_OFF);
            armedFor = 0;
        } else if (*due != armedFor) {
            sd_event_source_set_time(timer, *due);
            sd_event_source_set_enabled(timer, SD_EVENT_ONESHOT);
            armedFor = *due;
        }
    }

    static State& of(void* data) { return *static_cast<State*>(data); }
    static int onTime(sd_event_source*, std::uint64_t, void* data) noexcept {
        of(data).armedFor = 0;
        of(data).queue->runDue(monotonicMicroseconds(), of(data).stopped);
        return 0;
    }
    static int onPrepare(sd_event_source*, void* data) noexcept {
        of(data).setTimer();
        return 0;
    }
    static int onSignal(sd_event_source*, const signalfd_siginfo*, void* data) noexcept {
        of(data).stop();
        return 0;
    }
    void stop() {
        stopped = true;
        sd_event_exit(event, 0);
    }
};

double monotonicSeconds() {
    return static_cast<double>(monotonicMicroseconds()) / microseconds;
}

TimerQueue::Time monotonicMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<TimerQueue::Time>(now.tv_sec) * 1'000'000U +
           static_cast<TimerQueue::Time>(now.tv_nsec) / 1000U;
}

EventLoop::EventLoop(double speed) : state_(std::make_unique<State>(speed)) {}

EventLoop::~EventLoop() = default;

std::unique_ptr<Ticker> EventLoop::makeTicker(double interval) {
    const auto real = std::max<TimerQueue::Time>(1, microsecondsOf(interval / state_->speed));
    return std::make_unique<LoopTicker>(state_->queue, interval, real);
}

void EventLoop::async(std::function<void()> work) {
    state_->arm(0, std::move(work));
}

void EventLoop::asyncAfter(double seconds, std::shared_ptr<WorkItem> item) {
    const auto job = state_->arm(microsecondsOf(seconds / state_->speed), [item] { item->perform(); });
    const auto leave = std::make_shared<Subscription>(handleOf(state_->queue, job));
    item->onCancel([leave] { leave->cancel(); });
    // An item that was cancelled before it could be told how to leave must not stay behind either.
    if (!item->pending())
        leave->cancel();
}

Queue& EventLoop::makeSerialQueue(const std::string&) {
    return *this;
}

void EventLoop::terminate() {
    state_->stop();
}

Subscription EventLoop::afterReal(double seconds, std::function<void()> work) {
    return handleOf(state_->queue, state_->arm(microsecondsOf(seconds), std::move(work)));
}

Subscription EventLoop::watch(int fd, std::function<void()> readable) {
    auto watch = std::make_shared<FileWatch>();
    watch->callback = std::move(readable);
    check(sd_event_add_io(state_->event, &watch->source, fd, EPOLLIN, onReadable, watch.get()), "watch");
    return handleOf(std::move(watch));
}

Subscription EventLoop::watchChild(int pid, std::function<void(int status)> ended) {
    auto watch = std::make_shared<ChildWatch>();
    watch->callback = std::move(ended);
    check(sd_event_add_child(state_->event, &watch->source, pid, WEXITED, onChild, watch.get()),
          "watch child");
    return handleOf(std::move(watch));
}

bool EventLoop::runUntil(const std::function<bool()>& reached, double seconds) {
    const TimerQueue::Time end = monotonicMicroseconds() + microsecondsOf(seconds);
    while (!reached() && !state_->stopped) {
        const TimerQueue::Time now = monotonicMicroseconds();
        if (now >= end || sd_event_run(state_->event, end - now) < 0)
            break;
    }
    return reached();
}

void EventLoop::interruptibly(const std::function<void()>& work) {
    const sigset_t ending = setOf(state_->ending);
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
    work();
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
}

int EventLoop::run() {
    state_->started = true;
    const int code = sd_event_loop(state_->event);
    check(code, "event loop");
    return code;
}

bool EventLoop::started() const {
    return state_->started;
}

bool EventLoop::ending() const {
    return state_->stopped;
}

sd_event* EventLoop::handle() const {
    return state_->event;
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
