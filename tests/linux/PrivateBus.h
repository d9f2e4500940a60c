#pragma once

#include "Support.h"
#include "platform/linux/bus/Bus.h"

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <vector>

namespace kelpa::test {

/// A bus that only this test knows; the environment points to it. Nothing that is installed here answers on
/// it.
class PrivateBus {
  public:
    /// `variable` is what programs find this bus by. A bus at a given address can be started there again.
    explicit PrivateBus(const char* variable = "DBUS_SESSION_BUS_ADDRESS", const std::string& at = {}) {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            std::abort();
        const std::string rules = std::filesystem::temp_directory_path().string() + "/private-bus-" +
                                  std::to_string(getpid()) + ".conf";
        std::ofstream(rules) << "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                                "<policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                                "<allow eavesdrop='true'/><allow own='*'/>"
                                "</policy></busconfig>";
        pid_ = fork();
        if (pid_ == 0)
            become(ends[1], rules, at);
        close(ends[1]);
        char byte = 0;
        while (read(ends[0], &byte, 1) == 1 && byte != '\n')
            address_ += byte;
        close(ends[0]);
        unlink(rules.c_str());
        setenv(variable, address_.c_str(), 1);
    }
    ~PrivateBus() { end(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const std::string& address() const { return address_; }
    /// SIGSTOP has the bus stand still, SIGCONT go on.
    void signal(int number) const { kill(pid_, number); }
    void end() {
        if (pid_ <= 0)
            return;
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

  private:
    [[noreturn]] static void become(int output, const std::string& rules, const std::string& at) {
        dup2(output, STDOUT_FILENO);
        const std::string address = "--address=" + at, config = "--config-file=" + rules;
        execlp("dbus-daemon", "dbus-daemon", config.c_str(), "--nofork", "--nopidfile", "--print-address",
               at.empty() ? nullptr : address.c_str(), nullptr);
        _exit(127);
    }
    pid_t pid_ = 0;
    std::string address_;
};

using Message = BusMessage;

/// What a variant holds, as text; its type in brackets where nobody reads that.
inline std::string readValue(sd_bus_message* m) {
    const char* type = nullptr;
    sd_bus_message_peek_type(m, nullptr, &type);
    const std::string contents = type;
    sd_bus_message_enter_container(m, 'v', type);
    std::string value = "(" + contents + ")";
    const char* text = nullptr;
    int truth = 0, file = -1;
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (contents == "s" && sd_bus_message_read_basic(m, 's', &text) > 0)
        value = text;
    else if (contents == "b" && sd_bus_message_read_basic(m, 'b', &truth) > 0)
        value = truth != 0 ? "yes" : "no";
    else if (contents == "ay" && sd_bus_message_read_array(m, 'y', &bytes, &size) > 0)
        value.assign(static_cast<const char*>(bytes), size);
    else if (contents == "ah" && sd_bus_message_read(m, "ah", 1, &file) > 0)
        value = contentOf("/proc/self/fd/" + std::to_string(file));
    else if (contents == "aas") {
        value.clear();
        sd_bus_message_enter_container(m, 'a', "as");
        while (sd_bus_message_enter_container(m, 'a', "s") > 0) {
            while (sd_bus_message_read_basic(m, 's', &text) > 0)
                value += std::string(value.empty() ? "" : "+") + text;
            sd_bus_message_exit_container(m);
        }
        sd_bus_message_exit_container(m);
    } else {
        sd_bus_message_skip(m, contents.c_str());
    }
    sd_bus_message_exit_container(m);
    return value;
}

inline std::map<std::string, std::string> readProperties(sd_bus_message* m) {
    std::map<std::string, std::string> properties;
    const char* name = nullptr;
    sd_bus_message_enter_container(m, 'a', "{sv}");
    while (sd_bus_message_enter_container(m, 'e', "sv") > 0) {
        sd_bus_message_read_basic(m, 's', &name);
        properties[name] = readValue(m);
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
