#include "platform/linux/events/LogindSession.h"

#include "platform/linux/bus/BusCall.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr BusAddress manager = {service, "/org/freedesktop/login1", "org.freedesktop.login1.Manager"};
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
/// A service that is started again is back within this time, and knows what it knew before.
constexpr double restartSeconds = 10;

struct Session {
    const char* id = nullptr;
    std::uint32_t user = 0;
    const char* userName = nullptr;
    const char* seat = nullptr;
    const char* path = nullptr;
};

/// How well a session fits ours; 0 for one of somebody else.
int fitness(const Session& session) {
    const bool own = session.user == getuid();
    const bool seated = *session.seat != '\0';
    // Root works in the session of the one who became root.
    if (!own && getuid() != 0)
        return 0;
    return (own ? 2 : 0) + (seated ? 1 : 0);
}

} // namespace

LogindSession::LogindSession(EventLoop& loop, Bus& bus, const char* property, LogindSessionClient& client)
    : loop_(loop), bus_(bus), property_(property), client_(client) {}

void LogindSession::busOpened() {
    owner_.emplace(bus_, service, [this](bool there) { ownerChanged(there); });
    findSession();
}

void LogindSession::busLost() {
    owner_.reset();
    for (BusSlot* slot : {&signals_, &properties_, &question_})
        slot->reset();
    session_.clear();
    absence_.cancel();
    client_.propertyLost();
}

void LogindSession::ownerChanged(bool there) {
    question_.reset();
    absence_.cancel();
    if (there)
        findSession();
    else
        absence_ = loop_.afterReal(restartSeconds, [this] { client_.propertyLost(); });
}

/// Asking another question drops the answer to the one before. A question may start the service.
void LogindSession::ask(const BusMessage& question, sd_bus_message_handler_t answered) {
    if (question)
        sd_bus_message_set_auto_start(question.get(), 1);
    question_ = bus_.call(question, answered, this);
}

/// The session that started us said which it is; what is started otherwise looks for one.
void LogindSession::findSession() {
    const char* id = std::getenv("XDG_SESSION_ID");
    if (id == nullptr || *id == '\0')
        return listSessions();
    const BusMessage question = makeCall(bus_, manager, "GetSession");
    if (question)
        sd_bus_message_append(question.get(), "s", id);
    ask(question, BusHandler<&LogindSession::sessionFound>::call);
}

void LogindSession::sessionFound(sd_bus_message* reply) {
    const char* path = nullptr;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "o", &path) >= 0)
        follow(path);
    else if (sd_bus_message_is_method_error(reply, "org.freedesktop.login1.NoSuchSession"))
        listSessions();
}

void LogindSession::listSessions() {
    ask(makeCall(bus_, manager, "ListSessions"), BusHandler<&LogindSession::sessionsListed>::call);
}

void LogindSession::sessionsListed(sd_bus_message* reply) {
    if (sd_bus_message_is_method_error(reply, nullptr) ||
        sd_bus_message_enter_container(reply, SD_BUS_TYPE_ARRAY, "(susso)") < 0)
        return;
    Session each;
    Session best;
    int bestFitness = 0;
    while (sd_bus_message_read(reply, "(susso)", &each.id, &each.user, &each.userName, &each.seat,
                               &each.path) > 0)
        if (fitness(each) > bestFitness) {
            best = each;
            bestFitness = fitness(each);
        }
    if (best.path != nullptr)
        follow(best.path);
}

void LogindSession::follow(const std::string& path) {
    if (path != session_) {
        session_ = path;
        const std::string from =
            "type='signal',sender='org.freedesktop.login1',path='" + path + "',interface='";
        signals_ = bus_.match(from + interface + "'", BusHandler<&LogindSession::signalled>::call, this);
        properties_ = bus_.match(from + propertiesInterface + "',member='PropertiesChanged'",
                                 BusHandler<&LogindSession::propertiesChanged>::call, this);
    }
    readProperty();
}

void LogindSession::signalled(sd_bus_message* signal) {
    client_.signalled(signal);
}

void LogindSession::propertiesChanged(sd_bus_message* signal) {
    const char* changed = nullptr;
    if (sd_bus_message_read(signal, "s", &changed) >= 0 && std::strcmp(changed, interface) == 0)
        readProperty();
}

void LogindSession::readProperty() {
    const BusMessage question = makeCall(bus_, {service, session_.c_str(), propertiesInterface}, "Get");
    if (question)
        sd_bus_message_append(question.get(), "ss", interface, property_);
    ask(question, BusHandler<&LogindSession::propertyRead>::call);
}

void LogindSession::propertyRead(sd_bus_message* reply) {
    int value = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "v", "b", &value) >= 0)
        client_.propertyRead(value != 0);
}

} // namespace kelpa
