#include "platform/linux/control/ControlClient.h"

#include "platform/linux/control/BusCall.h"
#include "platform/linux/control/ControlInterface.h"
#include "platform/linux/control/StatusLine.h"

#include <cstring>
#include <iostream>
#include <utility>

namespace kelpa {

namespace {

constexpr double patience = 5; ///< real seconds for an answer
constexpr BusAddress program = {control::service, control::path, control::interface};
constexpr BusAddress programProperties = {control::service, control::path, "org.freedesktop.DBus.Properties"};
constexpr const char* ownerRule =
    "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
    "member='NameOwnerChanged',arg0='app.orvane.Kelpa'";
constexpr const char* changeRule =
    "type='signal',sender='app.orvane.Kelpa',path='/app/orvane/Kelpa',"
    "interface='org.freedesktop.DBus.Properties',member='PropertiesChanged',arg0='app.orvane.Kelpa1'";

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

class Client {
  public:
    explicit Client(const ControlCommand& command) : command_(command) {}

    ControlExit run() {
        std::string why;
        bus_ = SessionBus::open(loop_, why);
        if (!bus_)
            return ended(ControlExit::NotRunning,
                         "There is no session bus to reach a running Kelpa by: " + why);
        if (command_.verb != nullptr)
            return call(command_.verb->method);
        return command_.follow ? follow() : readAndPrint();
    }

  private:
    ControlExit call(const char* method) {
        const BusMessage answer = ask(loop_, *bus_, makeCall(*bus_, program, method), patience);
        return good(answer) ? ControlExit::Done : failed(answer);
    }

    ControlExit readAndPrint() {
        const BusMessage question = makeCall(*bus_, programProperties, "GetAll");
        if (question)
            sd_bus_message_append(question.get(), "s", control::interface);
        const BusMessage answer = ask(loop_, *bus_, question, patience);
        if (!good(answer))
            return failed(answer);
        if (!readValues(answer.get(), values_) || !print())
            return ended(ControlExit::Refused, "Kelpa answers in a way that is not understood");
        return ControlExit::Done;
    }

    /// The first line is there at once. It ends with the program: whoever wants to go on starts it again.
    ControlExit follow() {
        const auto lost = bus_->whenLost([this] { programEnded(); });
        match(changes_, changeRule, BusHandler<&Client::changed>::call);
        match(owner_, ownerRule, BusHandler<&Client::ownerChanged>::call);
        if (const auto watching = call(control::watch); watching != ControlExit::Done)
            return watching;
        if (const auto printed = readAndPrint(); printed != ControlExit::Done)
            return printed;
        loop_.run();
        return programEnded_ ? ended(ControlExit::NotRunning, "Kelpa has ended") : ControlExit::Done;
    }

    static bool good(const BusMessage& answer) {
        return answer && !sd_bus_message_is_method_error(answer.get(), nullptr);
    }

    void match(BusSlot& slot, const char* rule, sd_bus_message_handler_t handler) {
        sd_bus_slot* added = nullptr;
        sd_bus_add_match_async(bus_->handle(), &added, rule, handler, nullptr, this);
        slot.reset(added);
    }

    void changed(sd_bus_message* message) {
        const char* interface = nullptr;
        if (sd_bus_message_read(message, "s", &interface) >= 0 && readValues(message, values_) &&
            !last_.empty())
            print();
    }

    void ownerChanged(sd_bus_message*) { programEnded(); }

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
    std::unique_ptr<SessionBus> bus_;
    BusValues values_;
    std::string last_; ///< the line that was printed last; empty before the first
    bool programEnded_ = false;
    BusSlot changes_, owner_;
};

} // namespace

ControlExit runControl(const ControlCommand& command) {
    return Client(command).run();
}

} // namespace kelpa
