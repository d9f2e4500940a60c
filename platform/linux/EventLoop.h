#pragma once

#include "base/Published.h"
#include "platform/linux/TimerQueue.h"
#include "platform/ports/Services.h"
#include "platform/ports/Timers.h"

#include <csignal>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

struct sd_event;
struct sd_event_source;
struct signalfd_siginfo;

namespace kelpa {

/// Seconds on the clock that stands still while the machine sleeps.
[[nodiscard]] double monotonicSeconds();
/// The same in microseconds.
[[nodiscard]] std::uint64_t monotonicMicroseconds();

/// The main loop: timers, file descriptors and signals of the whole program, which has no other thread. Ticks
/// and delayed work pass `speed` times as fast as real time; `afterReal` does not. While there is a loop,
/// SIGTERM, SIGINT, SIGHUP and SIGCHLD are blocked, and SIGPIPE and SIGXFSZ are ignored: a child process must
/// undo both before it becomes another program. A SIGHUP that was ignored before stays so, as whoever asks
/// for that wants the program to outlive its terminal.
class EventLoop final : public TickerSource, public Queue, public QueueSource, public ApplicationLoop {
  public:
    explicit EventLoop(double speed = 1.0);
    ~EventLoop() override;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    std::unique_ptr<Ticker> makeTicker(double interval) override;
    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override;
    /// This loop itself: work that only waits for its time needs no thread to wait in.
    Queue& makeSerialQueue(const std::string& /*label*/) override { return *this; }
    void terminate() override;

    /// Runs `work` once, `seconds` of real time from now, unless the handle ends first.
    Subscription afterReal(double seconds, std::function<void()> work);
    /// Runs `work` once when the system's wall clock shows so many seconds since 1970, or more: also when it
    /// was set there, or the machine slept until then. The handle ends that.
    Subscription atWallTime(double secondsSince1970, std::function<void()> work);
    /// Runs `readable` whenever `fd` can be read or its other end is gone. The caller keeps owning `fd`,
    /// which stays open for as long as the handle lives.
    Subscription watch(int fd, std::function<void()> readable);
    /// Runs `ended` with the wait status when the child process ends, and reaps it. A handle that ends before
    /// leaves the child to its maker.
    Subscription watchChild(int pid, std::function<void(int status)> ended);
    /// Serves the loop before it runs for good, until `reached` holds, `seconds` of real time are over or the
    /// loop was told to end; gives what `reached` says at the end.
    bool runUntil(const std::function<bool()>& reached, double seconds);
    /// Does `work`, which waits for somebody outside for as long as he likes. Only before `run()`, when there
    /// is nothing to be put in order yet: a signal that asks the program to end kills it meanwhile.
    void interruptibly(const std::function<void()>& work);
    /// Runs until `terminate()` or a signal that ends the program; gives the exit code.
    int run();
    /// Whether `run()` was called, so that nobody outside may be waited for any more.
    [[nodiscard]] bool started() const { return started_; }
    /// Whether it was told to end, by `terminate()` or a signal that was served.
    [[nodiscard]] bool ending() const { return stopped_; }
    /// For libraries that bring their own event sources; owned by the loop.
    [[nodiscard]] sd_event* handle() const { return event_; }

  private:
    void takeSignals();
    void open();
    std::shared_ptr<TimerQueue::Job> arm(TimerQueue::Time delay, std::function<void()> work);
    void setTimer();
    static int onTime(sd_event_source* source, std::uint64_t time, void* loop) noexcept;
    static int onPrepare(sd_event_source* source, void* loop) noexcept;
    static int onSignal(sd_event_source* source, const signalfd_siginfo* info, void* loop) noexcept;

    double speed_;
    bool started_ = false;
    bool stopped_ = false;
    // The one event source for time is set to the earliest job just before the loop sleeps, so arming and
    // disarming cost no system call.
    std::shared_ptr<TimerQueue> queue_ = std::make_shared<TimerQueue>();
    TimerQueue::Time armedFor_ = 0;
    const std::vector<int> endingSignals_;
    sigset_t oldMask_{};
    sd_event* event_ = nullptr;
    sd_event_source* timer_ = nullptr;
    sd_event_source* first_ = nullptr; ///< of the signals, always listened to
};

/// A timer that is set again and again, which needs no memory. It counts real time, in which a machine that
/// sleeps does not grow older, and may ring a little late.
class Alarm {
  public:
    /// The loop outlives the alarm, and the alarm does not end while it rings.
    Alarm(const EventLoop& loop, std::function<void()> rings);
    ~Alarm();
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;

    /// Rings once, `seconds` from now, and not when it was to ring before.
    void set(double seconds);
    void stop();

  private:
    std::function<void()> rings_;
    sd_event_source* source_ = nullptr;
};

} // namespace kelpa
