#pragma once

#include "Support.h"
#include "platform/linux/bus/Bus.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace kelpa::test {

/// A bus that only this test knows; the environment points to it. Nothing that is installed here answers on
/// it.
class PrivateBus {
  public:
    /// `variable` is what programs find this bus by. A bus at a given address can be started there again.
    explicit PrivateBus(const char* variable = "DBUS_SESSION_BUS_ADDRESS", const std::string& at = {}) {
        const TempFolder rules;
        writeFile(rules.file("rules"),
                  "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context='default'>"
                  "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/>"
                  "</policy></busconfig>");
        const std::string command = "exec setpriv --pdeathsig KILL dbus-daemon --nofork --nopidfile "
                                    "--print-address=1 --print-pid=1 " +
                                    (at.empty() ? "" : "--address='" + at + "' ") +
                                    "--config-file=" + rules.file("rules");
        output_ = popen(command.c_str(), "re");
        char address[256] = "";
        if (output_ == nullptr || fscanf(output_, "%255s %d", address, &pid_) != 2)
            std::abort();
        setenv(variable, address, 1);
    }
    ~PrivateBus() { end(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// SIGSTOP has the bus stand still, SIGCONT go on.
    void signal(int number) const { kill(pid_, number); }
    void end() {
        if (output_ == nullptr)
            return;
        signal(SIGKILL);
        pclose(std::exchange(output_, nullptr));
    }

  private:
    pid_t pid_ = 0;
    FILE* output_ = nullptr; ///< null once it has ended
};

using Message = BusMessage;

inline std::string readBasic(sd_bus_message* m, char type) {
    const char* text = "";
    int number = 0;
    std::int64_t large = 0;
    if (type == 's' || type == 'o')
        return sd_bus_message_read_basic(m, type, &text) > 0 ? text : "";
    if (type == 'x')
        return sd_bus_message_read_basic(m, type, &large) > 0 ? std::to_string(large) : "";
    if (std::strchr("biuh", type) == nullptr || sd_bus_message_read_basic(m, type, &number) <= 0)
        std::abort();
    if (type == 'b')
        return number != 0 ? "yes" : "no";
    return type == 'h' ? contentOf("/proc/self/fd/" + std::to_string(number)) : std::to_string(number);
}

/// What comes next in a message, as text: [lists], (groups), name=value. Bytes are a text as well, and a file
/// is what it holds.
inline std::string readText(sd_bus_message* m, const char* between = " ") {
    std::string all;
    char type = 0;
    const char* contents = nullptr;
    for (const char* before = ""; sd_bus_message_peek_type(m, &type, &contents) > 0; before = between) {
        const void* bytes = nullptr;
        std::size_t size = 0;
        all += before;
        if (contents == nullptr) {
            all += readBasic(m, type);
        } else if (type == 'a' && contents == std::string("y")) {
            sd_bus_message_read_array(m, 'y', &bytes, &size);
            all.append(static_cast<const char*>(bytes), size);
        } else {
            sd_bus_message_enter_container(m, type, contents);
            const std::string inside = readText(m, type == 'e' ? "=" : " ");
            sd_bus_message_exit_container(m);
            all += type == 'a' ? "[" + inside + "]" : type == 'r' ? "(" + inside + ")" : inside;
        }
    }
    return all;
}

/// The same of an answer; the name of an error, and "silence" when none came.
inline std::string readText(const Message& answer) {
    const sd_bus_error* error = answer ? sd_bus_message_get_error(answer.get()) : nullptr;
    return error != nullptr ? error->name : answer ? readText(answer.get()) : "silence";
}

inline std::map<std::string, std::string> readProperties(sd_bus_message* m) {
    std::map<std::string, std::string> properties;
    const char* name = nullptr;
    sd_bus_message_enter_container(m, 'a', "{sv}");
    while (sd_bus_message_enter_container(m, 'e', "sv") > 0) {
        sd_bus_message_read_basic(m, 's', &name);
        properties[name] = readText(m);
        sd_bus_message_exit_container(m);
    }
    sd_bus_message_exit_container(m);
    return properties;
}

/// A bus as the program has it once the bus has answered.
class OpenBus : public Bus {
  public:
    explicit OpenBus(EventLoop& loop, Kind kind = Kind::Session) : Bus(loop, kind) {
        start();
        spinUntil(loop, [this] { return open(); });
    }
};

/// Another program on the bus, served by the test's own loop: what it asks, the tested object can answer.
class Peer {
  public:
    using Opener = int (*)(sd_bus**);
    explicit Peer(EventLoop& loop, Opener opener = sd_bus_open_user) : loop_(loop) {
        opener(&bus_);
        sd_bus_set_exit_on_disconnect(bus_, 0);
        sd_bus_attach_event(bus_, loop.handle(), 0);
    }
    ~Peer() {
        sd_bus_detach_event(bus_);
        sd_bus_flush_close_unref(bus_);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    [[nodiscard]] sd_bus* bus() const { return bus_; }

    /// The answer, or an error message; null when none comes.
    template <typename... Arguments>
    Message call(const std::string& service, const char* path, const char* interface, const char* member,
                 const char* types, Arguments... arguments) {
        answer_.reset();
        sd_bus_slot* slot = nullptr;
        sd_bus_call_method_async(bus_, &slot, service.c_str(), path, interface, member, keep, this, types,
                                 arguments...);
        spinUntil(loop_, [this] { return answer_ != nullptr; });
        sd_bus_slot_unref(slot);
        return std::move(answer_);
    }
    /// The same as text.
    std::string ask(auto... what) { return readText(call(what...)); }

  private:
    static int keep(sd_bus_message* message, void* self, sd_bus_error*) {
        static_cast<Peer*>(self)->answer_.reset(sd_bus_message_ref(message));
        return 0;
    }

    EventLoop& loop_;
    sd_bus* bus_ = nullptr;
    Message answer_;
};

/// A program with a session bus, which may go and come back at its address.
struct OnABus : testing::Test {
    TempFolder busFolder;
    std::string address = "unix:path=" + busFolder.file("bus");
    std::optional<PrivateBus> daemon{std::in_place, "DBUS_SESSION_BUS_ADDRESS", address};
    EventLoop loop;
    OpenBus bus{loop};

    bool busGoes() {
        daemon->end();
        return spinUntil(loop, [this] { return !bus.open(); });
    }
    bool busComes() {
        daemon.emplace("DBUS_SESSION_BUS_ADDRESS", address);
        return spinUntil(
            loop, [this] { return bus.open(); }, 10);
    }
};

} // namespace kelpa::test
