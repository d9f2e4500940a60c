#include "platform/linux/events/LogindSession.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr const char* managerPath = "/org/freedesktop/login1";
constexpr const char* managerInterface = "org.freedesktop.login1.Manager";
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

LogindSession::LogindSession(EventLoop& loop, const char* property, LogindSessionClient& client)
    : loop_(loop), property_(property), client_(client),
      link_(
          loop, BusLink::Kind::System, [this](SessionBus& bus) { opened(bus); }, [this] { lost(); }) {}

void LogindSession::opened(SessionBus& bus) {
    bus_ = bus.handle();
    owner_ = match("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                   "member='NameOwnerChanged',arg0='org.freedesktop.login1'",
                   BusHandler<&LogindSession::ownerChanged>::call);
    findSession();
}

void LogindSession::lost() {
    for (BusSlot* slot : {&owner_, &signals_, &properties_, &question_})
        slot->reset();
    bus_ = nullptr;
    session_.clear();
    absence_.cancel();
    client_.propertyLost();
}

BusSlot LogindSession::match(const std::string& rule, sd_bus_message_handler_t handler) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus_, &slot, rule.c_str(), handler, nullptr, this);
    return BusSlot(slot);
}

void LogindSession::ownerChanged(sd_bus_message* signal) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) < 0)
        return;
    question_.reset();
    absence_.cancel();
    if (*after != '\0')
        findSession();
    else
        absence_ = loop_.afterReal(restartSeconds, [this] { client_.propertyLost(); });
}

/// The session that started us said which it is; what is started otherwise looks for one.
void LogindSession::findSession() {
    const char* id = std::getenv("XDG_SESSION_ID");
    if (id == nullptr || *id == '\0')
        return listSessions();
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_, &slot, service, managerPath, managerInterface, "GetSession",
                             BusHandler<&LogindSession::sessionFound>::call, this, "s", id);
    question_.reset(slot);
}

void LogindSession::sessionFound(sd_bus_message* reply) {
    const char* path = nullptr;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "o", &path) >= 0)
        follow(path);
    else if (sd_bus_message_is_method_error(reply, "org.freedesktop.login1.NoSuchSession"))
        listSessions();
}

void LogindSession::listSessions() {
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_, &slot, service, managerPath, managerInterface, "ListSessions",
                             BusHandler<&LogindSession::sessionsListed>::call, this, "");
    question_.reset(slot);
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
        signals_ = match(from + interface + "'", BusHandler<&LogindSession::signalled>::call);
        properties_ = match(from + propertiesInterface + "',member='PropertiesChanged'",
                            BusHandler<&LogindSession::propertiesChanged>::call);
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
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_, &slot, service, session_.c_str(), propertiesInterface, "Get",
                             BusHandler<&LogindSession::propertyRead>::call, this, "ss", interface,
                             property_);
    question_.reset(slot);
}

void LogindSession::propertyRead(sd_bus_message* reply) {
    int value = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "v", "b", &value) >= 0)
        client_.propertyRead(value != 0);
}

} // namespace kelpa
