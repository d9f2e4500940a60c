#include "platform/linux/control/ControlObject.h"

#include "base/Text.h"
#include "platform/linux/bus/BusMessage.h"
#include "platform/linux/control/ControlInterface.h"

#include <cstring>

namespace kelpa {

namespace {

struct Property {
    const char* name;
    BusValue (*of)(const RemoteStatus& status);
};

const Property properties[] = {
    {control::state, [](const RemoteStatus& s) -> BusValue { return std::string(nameOf(s.state)); }},
    {control::time, [](const RemoteStatus& s) -> BusValue { return s.time; }},
    {control::seconds, [](const RemoteStatus& s) -> BusValue { return secondsOf(s.time); }},
    {control::breakKind, [](const RemoteStatus& s) -> BusValue { return std::string(nameOf(s.breakKind)); }},
    {control::paused, [](const RemoteStatus& s) -> BusValue { return s.paused; }},
    {control::waterEnabled, [](const RemoteStatus& s) -> BusValue { return s.waterEnabled; }},
    {control::waterFinished, [](const RemoteStatus& s) -> BusValue { return s.waterFinished; }},
    {control::waterTarget, [](const RemoteStatus& s) -> BusValue { return s.waterTarget; }},
};

int get(sd_bus*, const char*, const char*, const char* name, sd_bus_message* reply, void*,
        sd_bus_error*) noexcept {
    BusWriter writer(reply);
    const RemoteStatus status = RemoteControl::status();
    for (const Property& property : properties)
        if (std::strcmp(property.name, name) == 0)
            writeValue(writer, property.of(status));
    return writer.result();
}

template <RemoteControl::Refusal (RemoteControl::*verb)()>
int obey(sd_bus_message* call, void* object, sd_bus_error* error) noexcept {
    const auto refusal = (static_cast<ControlObject*>(object)->remote().*verb)();
    if (refusal)
        return sd_bus_error_set(error, control::refused, std::string(*refusal).c_str());
    return sd_bus_reply_method_return(call, nullptr);
}

// The properties are not marked as announcing their changes: to those who do not watch they do not.
const sd_bus_vtable vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY(control::state, "s", get, 0, 0),
    SD_BUS_PROPERTY(control::time, "s", get, 0, 0),
    SD_BUS_PROPERTY(control::seconds, "x", get, 0, 0),
    SD_BUS_PROPERTY(control::breakKind, "s", get, 0, 0),
    SD_BUS_PROPERTY(control::paused, "b", get, 0, 0),
    SD_BUS_PROPERTY(control::waterEnabled, "b", get, 0, 0),
    SD_BUS_PROPERTY(control::waterFinished, "x", get, 0, 0),
    SD_BUS_PROPERTY(control::waterTarget, "x", get, 0, 0),
    SD_BUS_METHOD(control::pause, "", "", obey<&RemoteControl::pause>, 0),
    SD_BUS_METHOD(control::resume, "", "", obey<&RemoteControl::resume>, 0),
    SD_BUS_METHOD(control::toggle, "", "", obey<&RemoteControl::toggle>, 0),
    SD_BUS_METHOD(control::skip, "", "", obey<&RemoteControl::skip>, 0),
    SD_BUS_METHOD(control::showWater, "", "", obey<&RemoteControl::showWater>, 0),
    SD_BUS_METHOD(control::showSettings, "", "", obey<&RemoteControl::showSettings>, 0),
    SD_BUS_METHOD(control::quit, "", "", obey<&RemoteControl::quit>, 0),
    SD_BUS_METHOD(control::watch, "", "", BusHandler<&ControlObject::watch>::call, 0),
    SD_BUS_METHOD(control::unwatch, "", "", BusHandler<&ControlObject::unwatch>::call, 0),
    SD_BUS_VTABLE_END,
};

bool onlyTimeMoved(const RemoteStatus& before, RemoteStatus after) {
    after.time = before.time;
    return after == before;
}

/// The signal of what differs between two states of things.
BusMessage changeSignal(Bus& bus, const RemoteStatus& before, const RemoteStatus& after) {
    BusMessage signal = bus.newSignal(control::path, propertiesInterface, "PropertiesChanged");
    if (!signal)
        return signal;
    BusWriter writer(signal.get());
    writer.text(control::interface).open('a', "{sv}");
    for (const Property& property : properties) {
        const BusValue value = property.of(after);
        if (value != property.of(before))
            writeEntry(writer, property.name, value);
    }
    writer.close().open('a', "s").close();
    if (writer.result() < 0)
        signal.reset();
    return signal;
}

} // namespace

ControlObject::ControlObject(EventLoop& loop, Bus& bus, RemoteControl& remote)
    : loop_(loop), bus_(bus), remote_(remote), watchers_(bus, [this](bool any) { watched(any); }),
      joined_(bus.join(*this)) {}

void ControlObject::busOpened() {
    object_ = bus_.serve(control::path, control::interface, vtable, this);
}

void ControlObject::busLost() {
    object_.reset();
    watchers_.removeAll();
}

void ControlObject::busCaughtUp() {
    if (changes_.active())
        announce();
}

int ControlObject::watch(sd_bus_message* call, sd_bus_error*) {
    if (const char* sender = sd_bus_message_get_sender(call))
        watchers_.add(sender);
    return sd_bus_reply_method_return(call, nullptr);
}

int ControlObject::unwatch(sd_bus_message* call, sd_bus_error*) {
    if (const char* sender = sd_bus_message_get_sender(call))
        watchers_.remove(sender);
    return sd_bus_reply_method_return(call, nullptr);
}

void ControlObject::watched(bool any) {
    waiting_.cancel();
    changes_.cancel();
    if (!any)
        return;
    // Who begins to watch reads for itself how things are.
    told_ = RemoteControl::status();
    toldAt_ = monotonicSeconds();
    changes_ = RemoteControl::observe([this] { changed(); });
}

void ControlObject::changed() {
    const double now = monotonicSeconds();
    const double wait = toldAt_ + secondsBetweenSignals - now;
    if (wait <= 0) {
        waiting_ = loop_.afterReal(0, [this] { announce(); });
    } else if (!waiting_.active()) {
        heldSince_ = now;
        waiting_ = loop_.afterReal(wait, [this] { held(); });
    }
}

/// A tick that had to wait for long is dropped for the next one, or the announcements would stay behind the
/// count for good. Should the next one not come, the last word is late and not lost.
void ControlObject::held() {
    constexpr double tooLong = 0.1, untilTheNextTick = 1.1;
    const bool late = monotonicSeconds() - heldSince_ > tooLong;
    if (late && onlyTimeMoved(told_, RemoteControl::status()))
        waiting_ = loop_.afterReal(untilTheNextTick, [this] { announce(); });
    else
        announce();
}

void ControlObject::announce() {
    waiting_.cancel();
    RemoteStatus now = RemoteControl::status();
    if (now == told_ || !bus_.keepsUp())
        return;
    if (const BusMessage signal = changeSignal(bus_, told_, now))
        sd_bus_send(bus_.handle(), signal.get(), nullptr);
    told_ = std::move(now);
    toldAt_ = monotonicSeconds();
}

} // namespace kelpa
