// Whatever another program of the session puts into a dictionary of properties is read or passed over.
#include "platform/linux/control/BusValues.h"

#include <array>
#include <cstdint>
#include <string>
#include <sys/socket.h>
#include <systemd/sd-bus.h>

namespace {

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

/// Takes the input apart.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
    [[nodiscard]] bool empty() const { return left_ == 0; }
    std::uint8_t next() {
        if (left_ == 0)
            return 0;
        --left_;
        return *data_++;
    }
    std::string text() {
        std::string text;
        for (std::uint8_t length = next() % 16; length > 0; --length)
            text += static_cast<char>(next());
        return text;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};

void appendBasic(sd_bus_message* message, char type, Bytes& bytes) {
    const std::string text = bytes.text();
    const std::uint64_t number = bytes.next() * 0x0101010101010101ULL;
    const int truth = static_cast<int>(number & 1);
    if (type == 's' || type == 'o' || type == 'g')
        sd_bus_message_append_basic(message, type, text.c_str());
    else if (type == 'b')
        sd_bus_message_append_basic(message, type, &truth);
    else
        sd_bus_message_append_basic(message, type, &number);
}

void appendVariant(sd_bus_message* message, Bytes& bytes, int depth) {
    constexpr std::string_view kinds = "sogbynqiuxtdvA";
    const char kind = kinds[bytes.next() % kinds.size()];
    if (kind == 'A' || (kind == 'v' && depth > 20)) {
        sd_bus_message_open_container(message, 'v', "as");
        sd_bus_message_open_container(message, 'a', "s");
        appendBasic(message, 's', bytes);
        sd_bus_message_close_container(message);
    } else {
        const std::array<char, 2> contents{kind, '\0'};
        sd_bus_message_open_container(message, 'v', contents.data());
        if (kind == 'v')
            appendVariant(message, bytes, depth + 1);
        else
            appendBasic(message, kind, bytes);
    }
    sd_bus_message_close_container(message);
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
