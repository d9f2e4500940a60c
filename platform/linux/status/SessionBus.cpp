#include "platform/linux/status/SessionBus.h"

#include <cstring>

namespace kelpa {

std::unique_ptr<SessionBus> SessionBus::open(EventLoop& loop, std::string& why) {
    return openWith(sd_bus_open_user, loop, why);
}

std::unique_ptr<SessionBus> SessionBus::openSystem(EventLoop& loop, std::string& why) {
    return openWith(sd_bus_open_system, loop, why);
}

std::unique_ptr<SessionBus> SessionBus::openWith(Opener opener, EventLoop& loop, std::string& why) {
    sd_bus* connection = nullptr;
    int result = opener(&connection);
    if (result < 0) {
        why = std::strerror(-result);
        return nullptr;
    }
    std::unique_ptr<SessionBus> bus(new SessionBus(connection));
    result = sd_bus_attach_event(connection, loop.handle(), 0);
    if (result < 0) {
        why = std::strerror(-result);
        return nullptr;
    }
    bus->watchEnd();
    return bus;
}

SessionBus::~SessionBus() {
    end_.reset();
    sd_bus_detach_event(bus_);
    // Without a flush: a bus that does not read any more must not hold up the end of the program.
    sd_bus_close_unref(bus_);
}

void SessionBus::watchEnd() {
    sd_bus_set_exit_on_disconnect(bus_, 0);
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal(bus_, &slot, nullptr, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                        "Disconnected", BusHandler<&SessionBus::disconnected>::call, this);
    end_.reset(slot);
}

Subscription SessionBus::whenLost(std::function<void()> lost) {
    auto owned = std::make_shared<std::function<void()>>(std::move(lost));
    lost_.push_back(owned);
    // The handle alone keeps the callback: when it ends, nobody is there to be told.
    return Subscription([owned] {});
}

void SessionBus::disconnected(sd_bus_message*) {
    for (const auto& waiting : std::exchange(lost_, {}))
        if (const auto tell = waiting.lock())
            (*tell)();
}

} // namespace kelpa
