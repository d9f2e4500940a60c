#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/busy/DesktopBusyness.h"

namespace kelpa {

/// Whether a program keeps the session from falling asleep when nobody touches it, as players and talks do:
/// by what logind, GNOME and KDE tell of it.
class KeptAwake final : public BusySource {
  public:
    /// The buses outlive the object.
    KeptAwake(Bus& session, Bus& system) : session_(session), system_(system) {}

    Subscription ask(Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable() override;

  private:
    Bus& session_;
    Bus& system_;
};

} // namespace kelpa
