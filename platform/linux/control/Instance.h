#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/control/InstanceLock.h"
#include "platform/linux/status/SessionBus.h"

#include <memory>
#include <optional>
#include <string>

namespace kelpa {

/// Sees to it that a user's desktop has one Kelpa: by a lock, which also holds
/// where there is no bus, and by the program's name on the session bus. To be asked before anything of the
/// program exists, because a second start must not touch the log and the settings of the first.
class Instance {
  public:
    enum class Role {
        First,  ///< go on
        Second, ///< another one runs and shows its preferences now
    };
    /// How long another one is given to answer before it counts as stale, in real seconds.
    static constexpr double patience = 5;

    /// The loop outlives the object and does not run yet.
    explicit Instance(EventLoop& loop);
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// Finds out, and tells another one that runs. Takes no longer than the patience allows.
    Role claim();
    /// Answers other starts from now on. They reach a program with a bus by its object there.
    void serve(InstanceClient& client);

    /// The session bus; null where there is none, and `whyNoBus` says what is missing.
    [[nodiscard]] SessionBus* bus() const { return bus_.get(); }
    [[nodiscard]] const std::string& whyNoBus() const { return whyNoBus_; }
    /// What keeps the claim from being certain, for the log; empty when nothing does.
    [[nodiscard]] const std::string& doubt() const { return doubt_; }

  private:
    std::optional<unsigned> requestName(unsigned flags);
    bool ownerShowsSettings();
    Role claimName();
    Role claimLock();
    void nameLost(sd_bus_message* message);

    EventLoop& loop_;
    std::string whyNoBus_;
    std::unique_ptr<SessionBus> bus_;
    std::optional<InstanceLock> lock_;
    std::string doubt_;
    bool lockWasStale_ = false;
    InstanceClient* client_ = nullptr; ///< null until served
    BusSlot losing_;
};

} // namespace kelpa
