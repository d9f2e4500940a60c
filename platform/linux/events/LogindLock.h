#pragma once

#include "platform/linux/events/LockEdges.h"
#include "platform/linux/events/LogindSession.h"

namespace kelpa {

/// What logind tells of the user's own session: requests to lock and unlock it, and whether it is locked.
class LogindLock final : private LogindSessionClient {
  public:
    /// All outlive the source.
    LogindLock(EventLoop& loop, Bus& system, LockEdges& edges);
    void start() { session_.start(); }

  private:
    void propertyRead(bool locked) override;
    void propertyLost() override;
    void signalled(sd_bus_message* signal) override;

    LockEdges& edges_;
    bool hint_ = false; ///< what it was when it was read last
    LogindSession session_;
};

} // namespace kelpa
