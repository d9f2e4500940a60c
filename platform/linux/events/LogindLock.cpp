#include "platform/linux/events/LogindLock.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr const char* managerPath = "/org/freedesktop/login1";
constexpr const char* managerInterface = "org.freedesktop.login1.Manager";
constexpr const char* sessionInterface = "org.freedesktop.login1.Session";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* hint = "LockedHint";
/// A service that is started again is back within this time, and knows what it knew before.
constexpr double restartSeconds = 10;
/// What the edges know this source by.
constexpr const char* sourceName = "logind";

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

LogindLock::LogindLock(EventLoop& loop, LockEdges& edges)
    : loop_(loop), edges_(edges),
      link_(
          loop, BusLink::Kind::System, [this](SessionBus& bus) { opened(bus); }, [this] { lost(); }) {}

void LogindLock::opened(SessionBus& bus) {
    bus_ = bus.handle();
    owner_ = match("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                   "member='NameOwnerChanged',arg0='org.freedesktop.login1'",
                   BusHandler<&LogindLock::ownerChanged>::call);
    findSession();
}

void LogindLock::lost() {
    for (BusSlot* slot : {&owner_, &requests_, &properties_, &question_})
        slot->reset();
    bus_ = nullptr;
    session_.clear();
    absence_.cancel();
    forgetHint();
}

void LogindLock::forgetHint() {
    hint_ = false;
    edges_.gone(sourceName);
}

BusSlot LogindLock::match(const std::string& rule, sd_bus_message_handler_t handler) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus_, &slot, rule.c_str(), handler, nullptr, this);
    return BusSlot(slot);
}

void LogindLock::ownerChanged(sd_bus_message* signal) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) < 0)
        return;
    question_.reset();
    absence_.cancel();
    if (*after != '\0')
        findSession();
    else
        absence_ = loop_.afterReal(restartSeconds, [this] { forgetHint(); });
}

/// The session that started us said which it is; what is started otherwise looks for one.
void LogindLock::findSession() {
    const char* id = std::getenv("XDG_SESSION_ID");
    if (id == nullptr || *id == '\0')
        return listSessions();
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_, &slot, service, managerPath, managerInterface, "GetSession",
                             BusHandler<&LogindLock::sessionFound>::call, this, "s", id);
    question_.reset(slot);
}

void LogindLock::sessionFound(sd_bus_message* reply) {
    const char* path = nullptr;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "o", &path) >= 0)
        follow(path);
    else if (sd_bus_message_is_method_error(reply, "org.freedesktop.login1.NoSuchSession"))
        listSessions();
}

void LogindLock::listSessions() {
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_, &slot, service, managerPath, managerInterface, "ListSessions",
                             BusHandler<&LogindLock::sessionsListed>::call, this, "");
    question_.reset(slot);
}

void LogindLock::sessionsListed(sd_bus_message* reply) {
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

void LogindLock::follow(const std::string& path) {
    if (path != session_) {
        session_ = path;
        const std::string from =
            "type='signal',sender='org.freedesktop.login1',path='" + path + "',interface='";
        requests_ = match(from + sessionInterface + "'", BusHandler<&LogindLock::requested>::call);
        properties_ = match(from + propertiesInterface + "',member='PropertiesChanged'",
                            BusHandler<&LogindLock::propertiesChanged>::call);
    }
    readHint();
}

void LogindLock::requested(sd_bus_message* signal) {
    if (sd_bus_message_is_signal(signal, sessionInterface, "Lock"))
        edges_.lockRequested();
    else if (sd_bus_message_is_signal(signal, sessionInterface, "Unlock"))
        edges_.unlockRequested();
}

void LogindLock::propertiesChanged(sd_bus_message* signal) {
    const char* interface = nullptr;
    if (sd_bus_message_read(signal, "s", &interface) >= 0 && std::strcmp(interface, sessionInterface) == 0)
        readHint();
}

void LogindLock::readHint() {
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_, &slot, service, session_.c_str(), propertiesInterface, "Get",
                             BusHandler<&LogindLock::hintRead>::call, this, "ss", sessionInterface, hint);
    question_.reset(slot);
}

void LogindLock::hintRead(sd_bus_message* reply) {
    int locked = 0;
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "v", "b", &locked) >= 0)
        setHint(locked != 0);
}

/// Most desktops never set it, so that only a change says anything.
void LogindLock::setHint(bool locked) {
    if (locked == hint_)
        return;
    hint_ = locked;
    edges_.says(sourceName, locked);
}

} // namespace kelpa
