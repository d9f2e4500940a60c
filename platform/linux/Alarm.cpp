#include "platform/linux/Alarm.h"

#include "platform/linux/Monotonic.h"

#include <ctime>
#include <system_error>
#include <systemd/sd-event.h>
#include <utility>

namespace kelpa {

namespace {

/// Microseconds within which it may ring together with something else.
constexpr std::uint64_t accuracy = 10'000;

int onTime(sd_event_source*, std::uint64_t, void* data) noexcept {
    (*static_cast<std::function<void()>*>(data))();
    return 0;
}

} // namespace

Alarm::Alarm(const EventLoop& loop, std::function<void()> rings) : rings_(std::move(rings)) {
    const int made =
        sd_event_add_time(loop.handle(), &source_, CLOCK_MONOTONIC, 0, accuracy, onTime, &rings_);
    if (made < 0)
        throw std::system_error(-made, std::generic_category(), "alarm");
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
