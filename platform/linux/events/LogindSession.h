#pragma once

#include "platform/linux/bus/Bus.h"

#include <optional>
#include <string>

namespace kelpa {

/// Called when something becomes known of the user's own session, always from the main loop.
class LogindSessionClient {
  public:
    virtual ~LogindSessionClient() = default;
    /// What the property is: when the session was found, and whenever it may have changed.
    virtual void propertyRead(bool value) = 0;
    /// The property cannot be known any more.
    virtual void propertyLost() = 0;
    /// A signal of the session's own interface.
    virtual void signalled(sd_bus_message* /*signal*/) {}
};

/// The user's own session at logind, with one of its properties that are either true or false.
class LogindSession final : private BusClient {
  public:
    static constexpr const char* interface = "org.freedesktop.login1.Session";

    /// All arguments outlive the session.
    LogindSession(EventLoop& loop, Bus& bus, const char* property, LogindSessionClient& client);
    void start() { joined_ = bus_.join(*this); }

  private:
    void busOpened() override;
    void busLost() override;
    void findSession();
    void listSessions();
    void follow(const std::string& path);
    void readProperty();
    template <auto Answered>
    void ask(const BusMessage& question);

    void ownerChanged(bool there);
    void sessionFound(sd_bus_message* reply);
    void sessionsListed(sd_bus_message* reply);
    void signalled(sd_bus_message* signal);
    void propertiesChanged(sd_bus_message* signal);
    void propertyRead(sd_bus_message* reply);

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

} // namespace kelpa
