#pragma once

#import <dispatch/dispatch.h>

#include "platform/ports/Busy.h"

namespace kelpa {

/// Whether somebody is busy, as the system tells of sound, cameras, the active application and who keeps the
/// display on. None of it needs a permission.
class MacBusyness final : public BusyProbe {
  public:
    MacBusyness();

    Subscription ask(const std::set<BusyReason>& reasons, Answer answer) override;
    /// All of it can be had.
    [[nodiscard]] std::optional<std::string> unavailable(BusyReason) override { return std::nullopt; }

  private:
    dispatch_queue_t queue_; ///< on which the system's services may take their time
};

} // namespace kelpa
