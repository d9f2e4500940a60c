#pragma once

#include "platform/linux/EventLoop.h"

#include <functional>

struct sd_event_source;

namespace kelpa {

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
