#include "platform/linux/control/ControlClient.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/control/ControlInterface.h"

#include <cstdio>
#include <exception>
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

/// Throws what the standard library throws when the property is missing or of another type.
template <class T>
const T& get(const BusValues& values, const char* name) {
    return std::get<T>(values.at(name));
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

std::string plain(const BusValues& values) {
    std::string line =
        get<std::string>(values, control::state) + " " + get<std::string>(values, control::time);
    if (const auto& kind = get<std::string>(values, control::breakKind); kind != "none")
        line += " " + kind;
    if (const auto& held = get<std::string>(values, control::heldBy); held != "none")
        line += " held " + held;
    const auto finished = get<std::int64_t>(values, control::waterFinished);
    const auto target = get<std::int64_t>(values, control::waterTarget);
    if (get<bool>(values, control::waterEnabled))
        line += " water " + std::to_string(finished) + "/" + std::to_string(target);
    return line;
}

std::string json(const BusValues& values) {
    const auto text = [&](const char* name) { return quoted(get<std::string>(values, name)); };
    const auto number = [&](const char* name) { return std::to_string(get<std::int64_t>(values, name)); };
    const auto flag = [&](const char* name) { return truth(get<bool>(values, name)); };
    return R"({"state": )" + text(control::state) + R"(, "time": )" + text(control::time) +
           R"(, "seconds": )" + number(control::seconds) + R"(, "break": )" + text(control::breakKind) +
           R"(, "held": )" + text(control::heldBy) + R"(, "paused": )" + flag(control::paused) +
           R"(, "water": {"enabled": )" + flag(control::waterEnabled) + R"(, "finished": )" +
           number(control::waterFinished) + R"(, "target": )" + number(control::waterTarget) + "}}";
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
            return obey(*command_.verb);
        return command_.follow ? follow() : readAndPrint();
    }

  private:
    ControlExit obey(const ControlVerb& verb) {
        return verb.obey.takesText() ? call(verb.method, "s", command_.text.c_str()) : call(verb.method);
    }

    template <typename... Values>
    ControlExit call(const char* method, const char* types = "", Values... values) {
        const BusMessage answer = bus_.ask(bus_.newCall(program, method, types, values...), patience);
        return isGood(answer.get()) ? ControlExit::Done : failed(answer);
    }

    ControlExit readAndPrint() {
        const BusMessage answer =
            bus_.ask(bus_.newCall(programProperties, "GetAll", "s", control::interface), patience);
        if (!isGood(answer.get()))
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
        const auto line = statusLine(values_, command_.json);
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

std::optional<std::string> statusLine(const BusValues& values, bool asJson) {
    try {
        const std::string whole = json(values); // which needs each of them
        return asJson ? whole : plain(values);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

ControlExit runControl(const ControlCommand& command) {
    return Client(command).run();
}

} // namespace kelpa
