#pragma once

#include "PrivateBus.h"
#include "platform/linux/events/LogindSession.h"

namespace kelpa::test {

/// What logind is on the system bus: two sessions, the first of which is somebody else's.
class FakeLogind : public Peer {
  public:
    explicit FakeLogind(EventLoop& loop) : Peer(loop, sd_bus_open_system) {
        sd_bus_add_object_vtable(bus(), nullptr, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                 manager, this);
        for (const char* path : {other, own})
            sd_bus_add_object_vtable(bus(), nullptr, path, logindSession, session, this);
        sd_bus_request_name(bus(), "org.freedesktop.login1", 0);
    }
    static constexpr const char* other = "/org/freedesktop/login1/session/c1";
    static constexpr const char* own = "/org/freedesktop/login1/session/c2";

    void setHint(bool value, const char* path = own) {
        (path == own ? ownHint : otherHint) = value;
        sd_bus_emit_properties_changed(bus(), path, logindSession, "LockedHint", nullptr);
    }
    void setIdle(bool value) {
        idleHint = value;
        sd_bus_emit_properties_changed(bus(), own, logindSession, "IdleHint", nullptr);
    }
    void request(const char* what, const char* path = own) {
        sd_bus_emit_signal(bus(), path, logindSession, what, nullptr);
    }
    bool ownHint = false;
    bool otherHint = false;
    bool idleHint = false;
    int questions = 0;

  private:
    static int get(sd_bus_message* call, void*, sd_bus_error* error) {
        const char* id = nullptr;
        sd_bus_message_read(call, "s", &id);
        if (std::string(id) == "c2")
            return sd_bus_reply_method_return(call, "o", own);
        return sd_bus_error_set(error, "org.freedesktop.login1.NoSuchSession", "none such");
    }
    static int list(sd_bus_message* call, void* self, sd_bus_error*) {
        ++static_cast<FakeLogind*>(self)->questions;
        return sd_bus_reply_method_return(call, "a(susso)", 2, "c1", getuid() + 1, "other", "seat0", other,
                                          "c2", getuid(), "own", "seat0", own);
    }
    static int hint(sd_bus*, const char* path, const char*, const char* property, sd_bus_message* reply,
                    void* self, sd_bus_error*) {
        const auto& logind = *static_cast<FakeLogind*>(self);
        const bool locked = std::string(path) == own ? logind.ownHint : logind.otherHint;
        const bool value = std::string(property) == "IdleHint" ? logind.idleHint : locked;
        return sd_bus_message_append(reply, "b", value ? 1 : 0);
    }
    static constexpr sd_bus_vtable manager[] = {
        SD_BUS_VTABLE_START(0), SD_BUS_METHOD("GetSession", "s", "o", get, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("ListSessions", "", "a(susso)", list, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END};
    static constexpr sd_bus_vtable session[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("LockedHint", "b", hint, 0, SD_BUS_VTABLE_PROPERTY_EMITS_INVALIDATION),
        SD_BUS_PROPERTY("IdleHint", "b", hint, 0, SD_BUS_VTABLE_PROPERTY_EMITS_INVALIDATION),
        SD_BUS_SIGNAL("Lock", "", 0),
        SD_BUS_SIGNAL("Unlock", "", 0),
        SD_BUS_VTABLE_END};
};

} // namespace kelpa::test
