#pragma once

#include "app/RemoteControl.h"
#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"

#include <map>
#include <string>

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
    void addWatcher(const std::string& client);
    void removeWatcher(const std::string& client);
    void startAnnouncing();
    void stopAnnouncing();
    void statusChanged();
    void announceHeldBack();
    void announce();

    EventLoop& loop_;
    Bus& bus_;
    RemoteControl& remote_;
    /// The clients that want to hear of changes, by the names that the bus gave them: from when they say so
    /// until they take it back or leave the bus, each once however often it asks.
    std::map<std::string, NameOwner> watchers_;
    Subscription changes_; ///< active while some client watches
    Subscription waiting_; ///< active while an announcement is due
    RemoteStatus known_;   ///< what watching clients know
    // Seconds on the monotonic clock.
    double knownSince_ = 0;
    double heldSince_ = 0; ///< when the change came that waits
    BusSlot object_;
    Subscription joined_;
};

} // namespace kelpa
