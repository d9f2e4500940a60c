// Whatever another program of the session puts into a dictionary of properties is read or passed over.
#include "platform/linux/bus/BusMessage.h"
#include "tests/fuzz/BusInput.h"

#include <array>
#include <cstdint>
#include <sys/socket.h>
#include <systemd/sd-bus.h>

namespace {

using namespace kelpa::fuzz;

/// A bus that leads nowhere: messages can be made and read on it.
sd_bus* nowhere() {
    static sd_bus* const bus = [] {
        std::array<int, 2> ends{};
        sd_bus* made = nullptr;
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0 || sd_bus_new(&made) < 0 ||
            sd_bus_set_fd(made, ends[0], ends[0]) < 0 || sd_bus_start(made) < 0)
            __builtin_trap();
        return made;
    }();
    return bus;
}

void fill(sd_bus_message* message, Bytes& bytes) {
    if (bytes.next() % 8 == 0) // no dictionary at all
        return appendVariant(message, bytes, 0);
    sd_bus_message_open_container(message, 'a', "{sv}");
    while (!bytes.empty()) {
        sd_bus_message_open_container(message, 'e', "sv");
        appendBasic(message, 's', bytes);
        appendVariant(message, bytes, 0);
        sd_bus_message_close_container(message);
    }
    sd_bus_message_close_container(message);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sd_bus_message* message = nullptr;
    if (sd_bus_message_new_signal(nowhere(), &message, "/a", "a.b", "C") < 0)
        __builtin_trap();
    Bytes bytes(data, size);
    fill(message, bytes);
    if (sd_bus_message_seal(message, 1, 0) >= 0) {
        kelpa::BusValues values;
        kelpa::readValues(message, values);
    }
    sd_bus_message_unref(message);
    return 0;
}
