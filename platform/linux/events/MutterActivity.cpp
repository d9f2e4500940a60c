#include "platform/linux/events/MutterActivity.h"

#include <utility>

namespace kelpa {

namespace {

constexpr const char* service = "org.gnome.Mutter.IdleMonitor";
constexpr const char* path = "/org/gnome/Mutter/IdleMonitor/Core";
constexpr const char* interface = "org.gnome.Mutter.IdleMonitor";

} // namespace

MutterActivity::MutterActivity(EventLoop& loop, const OwnWindows& windows, double speed)
    : loop_(loop), restMilliseconds_(ActivitySpell::restMilliseconds(speed)), spell_(loop, windows) {}

ActivitySource::Start MutterActivity::start(ActivitySink& sink) {
    sink_ = &sink;
    std::string why;
    bus_ = SessionBus::open(loop_, why);
    if (!bus_)
        return Start::Absent;
    loss_ = bus_->whenLost([this] { fail("the session bus is gone"); });
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal_async(bus_->handle(), &slot, service, path, interface, "WatchFired",
                              BusHandler<&MutterActivity::fired>::call, nullptr, this);
    signals_.reset(slot);
    call("AddIdleWatch", BusHandler<&MutterActivity::idleWatched>::call, "t",
         static_cast<std::uint64_t>(restMilliseconds_));
    return Start::Asking;
}

/// Another question drops the answer to one that is still open.
template <typename... Values>
void MutterActivity::call(const char* member, sd_bus_message_handler_t answered, const char* types,
                          Values... values) {
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_call(bus_->handle(), &message, service, path, interface, member);
    const BusMessage owned(message);
    if (!owned)
        return;
    // Asking must not start a compositor.
    sd_bus_message_set_auto_start(message, 0);
    sd_bus_message_append(message, types, values...);
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(bus_->handle(), &slot, message, answered, this, 0);
    question_.reset(slot);
}

void MutterActivity::idleWatched(sd_bus_message* reply) {
    if (sd_bus_message_is_method_error(reply, nullptr) || sd_bus_message_read(reply, "u", &idleWatch_) < 0) {
        // The connection cannot be taken down inside of what it tells itself.
        ending_ = loop_.afterReal(0, [this] {
            signals_.reset();
            question_.reset();
            loss_.cancel();
            bus_.reset();
            sink_->absent();
        });
        return;
    }
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal_async(bus_->handle(), &slot, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                              "org.freedesktop.DBus", "NameOwnerChanged",
                              BusHandler<&MutterActivity::ownerChanged>::call, nullptr, this);
    owner_.reset(slot);
    spell_.start(*sink_);
    sink_->watching();
}

void MutterActivity::useWatched(sd_bus_message* reply) {
    if (sd_bus_message_is_method_error(reply, nullptr))
        return fail("the next use of the desk cannot be watched for");
    sd_bus_message_read(reply, "u", &useWatch_);
}

void MutterActivity::fired(sd_bus_message* signal) {
    std::uint32_t watch = 0;
    if (sd_bus_message_read(signal, "u", &watch) < 0)
        return;
    if (watch == idleWatch_) {
        spell_.rest();
        if (useWatch_ == 0)
            call("AddUserActiveWatch", BusHandler<&MutterActivity::useWatched>::call, "");
    } else if (watch == useWatch_) {
        useWatch_ = 0;
        spell_.active();
    }
}

void MutterActivity::ownerChanged(sd_bus_message* signal) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) >= 0 && std::string_view(name) == service)
        fail("the compositor is gone");
}

void MutterActivity::fail(const std::string& why) {
    if (ending_.active())
        return;
    spell_.stop();
    ending_ = loop_.afterReal(0, [this, why] {
        for (BusSlot* slot : {&signals_, &owner_, &question_})
            slot->reset();
        loss_.cancel();
        bus_.reset();
        sink_->failed(why);
    });
}

} // namespace kelpa
