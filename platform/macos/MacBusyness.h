#pragma once

#include "platform/ports/Busy.h"
#include "platform/ports/Timers.h"

namespace kelpa {

/// Whether somebody is busy, as the system tells of sound, cameras, the active application and who keeps the
/// display on. None of it needs a permission.
class MacBusyness final : public BusyProbe {
  public:
    /// On `services` the system's services may take their time; `main` is the main thread's. Both must
    /// outlive the last answer.
    MacBusyness(Queue& services, Queue& main) : services_(services), main_(main) {}

    Subscription ask(const std::set<BusyReason>& reasons, Answer answer) override;
    /// All of it can be had.
    [[nodiscard]] std::optional<std::string> unavailable(BusyReason) override { return std::nullopt; }

  private:
    Queue& services_;
    Queue& main_;
};

} // namespace kelpa
