#pragma once

#include "platform/linux/events/BusLink.h"
#include "platform/linux/events/LockEdges.h"

#include <string>

namespace kelpa {

/// What logind tells of the user's own session: requests to lock and unlock it, and whether it is locked.
class LogindLock {
  public:
    /// Both outlive the source.
    LogindLock(EventLoop& loop, LockEdges& edges);
    void start() { link_.start(); }

  private:
    void opened(SessionBus& bus);
    void lost();
    void findSession();
    void listSessions();
    void follow(const std::string& path);
    void readHint();
    void setHint(bool locked);
    void forgetHint();
    [[nodiscard]] BusSlot match(const std::string& rule, sd_bus_message_handler_t handler);

    void ownerChanged(sd_bus_message* signal);
    void sessionFound(sd_bus_message* reply);
    void sessionsListed(sd_bus_message* reply);
    void requested(sd_bus_message* signal);
    void propertiesChanged(sd_bus_message* signal);
    void hintRead(sd_bus_message* reply);

    EventLoop& loop_;
    LockEdges& edges_;
    BusLink link_;
    sd_bus* bus_ = nullptr; ///< null while there is none
    std::string session_;   ///< the object's path; empty until it is known
    bool hint_ = false;     ///< what it was when it was read last
    Subscription absence_;
    BusSlot owner_, requests_, properties_;
    BusSlot question_; ///< the one that is open; asking another drops its answer
};

} // namespace kelpa
