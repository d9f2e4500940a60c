#pragma once

#include "app/RemoteControl.h"
#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/control/Watchers.h"

namespace kelpa {

/// The remote control as an object on the session bus. Changes are announced only while some client watches,
/// and at most once a second.
class ControlObject final : private BusClient {
  public:
    static constexpr double secondsBetweenSignals = 1; ///< real ones

    /// All arguments outlive the object, and the program has been launched.
    ControlObject(EventLoop& loop, Bus& bus, RemoteControl& remote);
    ControlObject(const ControlObject&) = delete;
    ControlObject& operator=(const ControlObject&) = delete;

    // What clients ask for.
    [[nodiscard]] RemoteControl& remote() const { return remote_; }
    int watch(sd_bus_message* call, sd_bus_error* error);
    int unwatch(sd_bus_message* call, sd_bus_error* error);

  private:
    void busOpened() override;
    void busLost() override;
    void busCaughtUp() override;
    void watched(bool any);
    void changed();
    void held();
    void announce();

    EventLoop& loop_;
    Bus& bus_;
    RemoteControl& remote_;
    Watchers watchers_;
    Subscription changes_; ///< active while some client watches
    Subscription waiting_; ///< active while an announcement is due
    RemoteStatus told_;    ///< what watching clients know
    // Seconds on the monotonic clock.
    double toldAt_ = 0;
    double heldSince_ = 0; ///< when the change came that waits
    BusSlot object_;
    Subscription joined_;
};

} // namespace kelpa
