#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/instance/InstanceLock.h"

#include <optional>
#include <string>

namespace kelpa {

/// Sees to it that a user's desktop has one Kelpa: by a lock, which also holds
/// where there is no bus, and by the program's name on the session bus. To be asked before anything of the
/// program exists, because a second start must not touch the log and the settings of the first.
class Instance final : private BusClient {
  public:
    enum class Role {
        First,  ///< go on
        Second, ///< another one runs and shows what this one was to show
        Ended,  ///< the loop was told to end before that was known
    };
    /// How long another one is given to answer before it counts as stale, in real seconds.
    static constexpr double patience = 5;

    /// Loop and bus outlive the object, and the loop does not run yet. `wish` is for another one that runs.
    Instance(EventLoop& loop, Bus& bus, StartWish wish = StartWish::Preferences);
    ~Instance() override;
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// Starts the bus, finds out, and tells another one that runs. Takes little longer than the patience with
    /// each of lock and bus, and is over at once when the loop is told to end.
    Role claim();
    /// Answers other starts from now on. They reach a program with a bus by its object there, under the name
    /// that is claimed again with each bus that comes back.
    void serve(InstanceClient& client);

    /// What keeps the claim from being certain, for the log; empty when nothing does.
    [[nodiscard]] const std::string& doubt() const { return doubt_; }

  private:
    void busOpened() override;
    void busLost() override;
    std::optional<unsigned> requestName(unsigned flags);
    bool ownerShows();
    Role claimName();
    Role claimLock();
    void nameClaimed(sd_bus_message* reply);
    void nameLost(sd_bus_message* message);

    EventLoop& loop_;
    Bus& bus_;
    StartWish wish_;
    std::optional<InstanceLock> lock_;
    std::string doubt_;
    bool lockWasStale_ = false;
    bool claimed_ = false;             ///< the name was asked for on this connection
    InstanceClient* client_ = nullptr; ///< null until served
    BusSlot claiming_, losing_;
    Subscription joined_;
};

} // namespace kelpa
