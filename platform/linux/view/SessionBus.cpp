#include "platform/linux/view/SessionBus.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <systemd/sd-bus.h>

namespace kelpa {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto patience = std::chrono::seconds(1);

struct CloseBus {
    /// Without what was not sent yet, for which it would wait.
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using OwnedBus = std::unique_ptr<sd_bus, CloseBus>;

int heard(sd_bus_message*, void* answered, sd_bus_error*) noexcept {
    *static_cast<bool*>(answered) = true;
    return 0;
}

/// What the toolkit will want to know. Whoever answers it, be it that nobody has that name, is well.
int ask(sd_bus* bus, bool& answered) {
    sd_bus_message* question = nullptr;
    int result = sd_bus_message_new_method_call(bus, &question, "org.a11y.Bus", "/org/a11y/bus",
                                                "org.freedesktop.DBus.Properties", "Get");
    if (result >= 0)
        result = sd_bus_message_append(question, "ss", "org.a11y.Status", "IsEnabled");
    if (result >= 0)
        result = sd_bus_message_set_auto_start(question, 0);
    if (result >= 0)
        result = sd_bus_call_async(bus, nullptr, question, heard, &answered, 0);
    sd_bus_message_unref(question);
    return result;
}

/// False when the time is over. An end of the connection is an answer, too.
bool answeredBefore(Clock::time_point end, sd_bus* bus, const bool& answered) {
    while (!answered && Clock::now() < end) {
        const int processed = sd_bus_process(bus, nullptr);
        if (processed < 0)
            return true;
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now()).count();
        if (processed == 0 &&
            sd_bus_wait(bus, static_cast<std::uint64_t>(std::max<std::int64_t>(left, 0))) < 0)
            return true;
    }
    return answered;
}

/// True also where there is no such bus, which the toolkit sees at once.
bool sessionBusAnswers() {
    const auto end = Clock::now() + patience;
    sd_bus* opened = nullptr;
    const int result = sd_bus_open_user(&opened);
    const OwnedBus bus(opened);
    // The socket is there, and too many wait at it already.
    if (result == -EAGAIN)
        return false;
    bool answered = false;
    return result < 0 || ask(bus.get(), answered) < 0 || answeredBefore(end, bus.get(), answered);
}

} // namespace

void avoidSilentBus() {
    if (!sessionBusAnswers())
        ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
}

} // namespace kelpa
