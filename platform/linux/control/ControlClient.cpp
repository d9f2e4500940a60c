#include "platform/linux/control/ControlClient.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/control/ControlInterface.h"

#include <cstdio>
#include <iostream>
#include <utility>

namespace kelpa {

namespace {

constexpr double patience = 5; ///< real seconds for an answer
constexpr BusAddress program = {control::service, control::path, control::interface};
constexpr BusAddress programProperties = {control::service, control::path, propertiesInterface};

ControlExit ended(ControlExit how, const std::string& why) {
    std::cerr << "kelpa: " << why << std::endl;
    return how;
}

/// What an answer that is an error, or none, means to a person.
ControlExit failed(const BusMessage& answer) {
    if (!answer)
        return ended(ControlExit::Refused, "Kelpa runs but does not answer");
    const sd_bus_error& error = *sd_bus_message_get_error(answer.get());
    for (const char* nobody : {SD_BUS_ERROR_SERVICE_UNKNOWN, SD_BUS_ERROR_NAME_HAS_NO_OWNER})
        if (sd_bus_error_has_name(&error, nobody))
            return ended(ControlExit::NotRunning, "Kelpa is not running");
    return ended(ControlExit::Refused, error.message == nullptr ? error.name : error.message);
}

/// The properties, taken out of what came over the bus.
struct Reported {
    std::string state, time, breakKind;
    std::int64_t seconds = 0, finished = 0, target = 0;
    bool paused = false, waterEnabled = false;
};

template <class T>
bool take(const BusValues& values, const char* name, T& into) {
    const auto found = values.find(name);
    if (found == values.end() || !std::holds_alternative<T>(found->second))
        return false;
    into = std::get<T>(found->second);
    return true;
}

std::optional<Reported> reported(const BusValues& values) {
    Reported r;
    const bool whole =
        take(values, control::state, r.state) && take(values, control::time, r.time) &&
        take(values, control::breakKind, r.breakKind) && take(values, control::seconds, r.seconds) &&
        take(values, control::paused, r.paused) && take(values, control::waterEnabled, r.waterEnabled) &&
        take(values, control::waterFinished, r.finished) && take(values, control::waterTarget, r.target);
    return whole ? std::optional(r) : std::nullopt;
}

/// The text as JSON, whoever it may come from.
std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        char escaped[8] = {c, '\0'};
        if (c == '"' || c == '\\')
            std::snprintf(escaped, sizeof escaped, "\\%c", c);
        else if (static_cast<unsigned char>(c) < 0x20)
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
        out += escaped;
    }
    return out + "\"";
}

const char* truth(bool value) {
    return value ? "true" : "false";
}

class Client final : private BusClient {
  public:
    explicit Client(const ControlCommand& command) : command_(command) {}

    ControlExit run() {
        bus_.start();
        loop_.runUntil([this] { return bus_.open() || !bus_.failure().empty(); }, patience);
        if (!bus_.open())
            return ended(ControlExit::NotRunning,
                         "There is no session bus to reach a running Kelpa by: " +
                             (bus_.failure().empty() ? "it does not answer" : bus_.failure()));
        if (command_.verb != nullptr)
            return call(command_.verb->method);
        return command_.follow ? follow() : readAndPrint();
    }

  private:
    ControlExit call(const char* method) {
        const BusMessage answer = bus_.ask(bus_.newCall(program, method), patience);
        return good(answer) ? ControlExit::Done : failed(answer);
    }

    ControlExit readAndPrint() {
        const BusMessage answer =
            bus_.ask(bus_.newCall(programProperties, "GetAll", "s", control::interface), patience);
        if (!good(answer))
            return failed(answer);
        if (!readValues(answer.get(), values_) || !print())
            return ended(ControlExit::Refused, "Kelpa answers in a way that is not understood");
        return ControlExit::Done;
    }

    /// The first line is there at once. It ends with the program: whoever wants to go on starts it again.
    ControlExit follow() {
        const auto joined = bus_.join(*this);
        if (const auto watching = call(control::watch); watching != ControlExit::Done)
            return watching;
        if (const auto printed = readAndPrint(); printed != ControlExit::Done)
            return printed;
        const NameOwner owner(bus_, control::service, [this](bool) { programEnded(); });
        loop_.run();
        return programEnded_ ? ended(ControlExit::NotRunning, "Kelpa has ended") : ControlExit::Done;
    }

    static bool good(const BusMessage& answer) {
        return answer && !sd_bus_message_is_method_error(answer.get(), nullptr);
    }

    void busOpened() override {
        changes_ = bus_.match<&Client::changed>(
            signalRule(programProperties, "PropertiesChanged", control::interface), *this);
    }
    void busLost() override { programEnded(); }

    void changed(sd_bus_message* message) {
        const char* interface = nullptr;
        if (readFrom(message, "s", &interface) && readValues(message, values_) && !last_.empty())
            print();
    }

    void programEnded() {
        programEnded_ = true;
        loop_.terminate();
    }

    /// False when there is no whole status to print. Nobody reads any more when writing fails: the end.
    bool print() {
        const auto line = command_.json ? jsonLine(values_) : plainLine(values_);
        if (!line)
            return false;
        if (*line == last_)
            return true;
        last_ = *line;
        if (!(std::cout << *line << std::endl))
            loop_.terminate();
        return true;
    }

    const ControlCommand& command_;
    EventLoop loop_;
    Bus bus_{loop_, Bus::Kind::Session};
    BusValues values_;
    std::string last_; ///< the line that was printed last; empty before the first
    bool programEnded_ = false;
    BusSlot changes_;
};

} // namespace

std::optional<std::string> plainLine(const BusValues& values) {
    const auto r = reported(values);
    if (!r)
        return std::nullopt;
    std::string line = r->state + " " + r->time;
    if (r->breakKind != "none")
        line += " " + r->breakKind;
    if (r->waterEnabled)
        line += " water " + std::to_string(r->finished) + "/" + std::to_string(r->target);
    return line;
}

std::optional<std::string> jsonLine(const BusValues& values) {
    const auto r = reported(values);
    if (!r)
        return std::nullopt;
    return R"({"state": )" + quoted(r->state) + R"(, "time": )" + quoted(r->time) + R"(, "seconds": )" +
           std::to_string(r->seconds) + R"(, "break": )" + quoted(r->breakKind) + R"(, "paused": )" +
           truth(r->paused) + R"(, "water": {"enabled": )" + truth(r->waterEnabled) + R"(, "finished": )" +
           std::to_string(r->finished) + R"(, "target": )" + std::to_string(r->target) + "}}";
}

ControlExit runControl(const ControlCommand& command) {
    return Client(command).run();
}

} // namespace kelpa
