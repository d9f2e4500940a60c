#pragma once

#include "base/Published.h"
#include "platform/ports/Services.h"
#include "platform/ports/Timers.h"

#include <cstdint>
#include <functional>
#include <memory>

struct sd_event;
struct sd_event_source;

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
    Queue& makeSerialQueue(const std::string& label) override;
    void terminate() override;

    /// Runs `work` once, `seconds` of real time from now, unless the handle ends first.
    Subscription afterReal(double seconds, std::function<void()> work);
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
    [[nodiscard]] bool started() const;
    /// Whether it was told to end, by `terminate()` or a signal that was served.
    [[nodiscard]] bool ending() const;
    /// For libraries that bring their own event sources; owned by the loop.
    [[nodiscard]] sd_event* handle() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
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
