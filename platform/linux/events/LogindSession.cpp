#include "platform/linux/events/LogindSession.h"

#include "platform/linux/bus/Bus.h"

#include <cstdlib>
#include <memory>
#include <optional>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr BusAddress manager = {service, "/org/freedesktop/login1", "org.freedesktop.login1.Manager"};
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

class LogindSession final : public BusClient {
  public:
    LogindSession(EventLoop& loop, Bus& bus, const char* property, LogindSessionClient& client)
        : loop_(loop), bus_(bus), property_(property), client_(client), joined_(bus.join(*this)) {}

  private:
    void busOpened() override {
        owner_.emplace(bus_, service, [this](bool there) { ownerChanged(there); });
        findSession();
    }

    void busLost() override {
        owner_.reset();
        for (BusSlot* slot : {&signals_, &properties_, &question_})
            slot->reset();
        session_.clear();
        absence_.cancel();
        client_.propertyLost();
    }

    /// The session that started us said which it is; what is started otherwise looks for one.
    void findSession() {
        const char* id = std::getenv("XDG_SESSION_ID");
        if (id == nullptr || *id == '\0')
            return listSessions();
        ask<&LogindSession::sessionFound>(bus_.newCall(manager, "GetSession", "s", id));
    }

    void listSessions() { ask<&LogindSession::sessionsListed>(bus_.newCall(manager, "ListSessions")); }
    void follow(const std::string& path) {
        if (path != session_) {
            session_ = path;
            signals_ = bus_.match<&LogindSession::signalled>(
                signalRule({service, path.c_str(), logindSession}, nullptr), *this);
            properties_ = bus_.match<&LogindSession::propertiesChanged>(
                signalRule({service, path.c_str(), propertiesInterface}, "PropertiesChanged", logindSession),
                *this);
        }
        readProperty();
    }

    void readProperty() {
        ask<&LogindSession::propertyRead>(
            bus_.newQuestion({service, session_.c_str(), logindSession}, property_));
    }

    /// Asking another question drops the answer to the one before. A question may start the service.
    template <auto Answered>
    void ask(const BusMessage& question) {
        if (question)
            sd_bus_message_set_auto_start(question.get(), 1);
        question_ = bus_.call<Answered>(question, *this);
    }

    void ownerChanged(bool there) {
        question_.reset();
        absence_.cancel();
        if (there)
            findSession();
        else
            absence_ = loop_.afterReal(restartSeconds, [this] { client_.propertyLost(); });
    }

    void sessionFound(sd_bus_message* reply) {
        const char* path = nullptr;
        if (readFrom(reply, "o", &path))
            follow(path);
        else if (sd_bus_message_is_method_error(reply, "org.freedesktop.login1.NoSuchSession"))
            listSessions();
    }

    void sessionsListed(sd_bus_message* reply) {
        if (!isGood(reply) || sd_bus_message_enter_container(reply, SD_BUS_TYPE_ARRAY, "(susso)") < 0)
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

    void signalled(sd_bus_message* signal) { client_.signalled(signal); }
    void propertiesChanged(sd_bus_message* /*signal*/) { readProperty(); }
    void propertyRead(sd_bus_message* reply) {
        int value = 0;
        if (readFrom(reply, "v", "b", &value))
            client_.propertyRead(value != 0);
    }

    EventLoop& loop_;
    Bus& bus_;
    const char* property_;
    LogindSessionClient& client_;
    std::string session_; ///< the object's path; empty until it is known
    Subscription absence_;
    std::optional<NameOwner> owner_;
    BusSlot signals_, properties_;
    BusSlot question_; ///< the one that is open; asking another drops its answer
    Subscription joined_;
};

} // namespace

std::unique_ptr<BusClient> followLogindSession(EventLoop& loop, Bus& system, const char* property,
                                               LogindSessionClient& client) {
    return std::make_unique<LogindSession>(loop, system, property, client);
}

} // namespace kelpa
