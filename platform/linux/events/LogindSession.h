#pragma once

#include "platform/linux/events/BusLink.h"

#include <string>

namespace kelpa {

/// Told of the user's own session, always from the main loop.
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
class LogindSession {
  public:
    static constexpr const char* interface = "org.freedesktop.login1.Session";

    /// All arguments outlive the session.
    LogindSession(EventLoop& loop, const char* property, LogindSessionClient& client);
    void start() { link_.start(); }

  private:
    void opened(SessionBus& bus);
    void lost();
    void findSession();
    void listSessions();
    void follow(const std::string& path);
    void readProperty();
    [[nodiscard]] BusSlot match(const std::string& rule, sd_bus_message_handler_t handler);

    void ownerChanged(sd_bus_message* signal);
    void sessionFound(sd_bus_message* reply);
    void sessionsListed(sd_bus_message* reply);
    void signalled(sd_bus_message* signal);
    void propertiesChanged(sd_bus_message* signal);
    void propertyRead(sd_bus_message* reply);

    EventLoop& loop_;
    const char* property_;
    LogindSessionClient& client_;
    BusLink link_;
    sd_bus* bus_ = nullptr; ///< null while there is none
    std::string session_;   ///< the object's path; empty until it is known
    Subscription absence_;
    BusSlot owner_, signals_, properties_;
    BusSlot question_; ///< the one that is open; asking another drops its answer
};

} // namespace kelpa
