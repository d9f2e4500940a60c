#include "platform/linux/tray/StatusNotifierItem.h"

#include <memory>
#include <utility>

namespace kelpa {

namespace {

constexpr BusAddress watcher = {"org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                "org.kde.StatusNotifierWatcher"};

std::string hostRule(const char* signal) {
    return signalRule({watcher.service, nullptr, watcher.interface}, signal);
}

class WatcherLink {
  public:
    WatcherLink(const Bus& bus, std::function<void(bool)> hostSeen)
        : bus_(bus), hostSeen_(std::move(hostSeen)),
          owner_(bus, watcher.service, [this](bool there) { ownerChanged(there); }),
          hostCame_(bus.match<&WatcherLink::askForHost>(hostRule("StatusNotifierHostRegistered"), *this)),
          hostWent_(bus.match<&WatcherLink::askForHost>(hostRule("StatusNotifierHostUnregistered"), *this)) {
        registerItem();
    }

  private:
    void registerItem() {
        call_ = bus_.call<&WatcherLink::registered>(
            bus_.newCall(watcher, "RegisterStatusNotifierItem", "s", bus_.name().c_str()), *this);
    }

    void askForHost(sd_bus_message* /*reason*/) {
        call_ = bus_.call<&WatcherLink::hostAnswered>(
            bus_.newQuestion(watcher, "IsStatusNotifierHostRegistered"), *this);
    }

    void ownerChanged(bool there) {
        if (there)
            return registerItem();
        call_.reset();
        hostSeen_(false);
    }

    void registered(sd_bus_message* reply) {
        if (isGood(reply))
            askForHost(reply);
        else
            hostSeen_(false);
    }

    /// A watcher that took the item but does not know of hosts shows it itself.
    void hostAnswered(sd_bus_message* reply) {
        int known = 1;
        readFrom(reply, "v", "b", &known);
        hostSeen_(known != 0);
    }

    const Bus& bus_;
    std::function<void(bool)> hostSeen_;
    NameOwner owner_;
    BusSlot hostCame_, hostWent_;
    BusSlot call_; ///< the question that is open; asking another drops its answer
};

} // namespace

std::shared_ptr<void> registerItem(const Bus& bus, std::function<void(bool present)> hostSeen) {
    return std::make_shared<WatcherLink>(bus, std::move(hostSeen));
}

} // namespace kelpa
