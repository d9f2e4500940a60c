#include "platform/linux/control/ControlObject.h"

#include "base/Text.h"
#include "platform/linux/control/ControlCommand.h"
#include "platform/linux/control/ControlInterface.h"

#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

namespace {

constexpr double secondsBetweenSignals = 1; ///< real ones

struct Property {
    const char* name;
    BusValue (*of)(const RemoteStatus& status);
};

const Property properties[] = {
    {control::state, [](const RemoteStatus& s) -> BusValue { return std::string(nameOf(s.state)); }},
    {control::time, [](const RemoteStatus& s) -> BusValue { return s.time; }},
    {control::seconds, [](const RemoteStatus& s) -> BusValue { return secondsOf(s.time); }},
    {control::breakKind, [](const RemoteStatus& s) -> BusValue { return std::string(nameOf(s.breakKind)); }},
    {control::heldBy,
     [](const RemoteStatus& s) -> BusValue { return std::string(s.heldBy ? nameOf(*s.heldBy) : "none"); }},
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

class ControlObject final : public BusClient {
  public:
    ControlObject(EventLoop& loop, Bus& bus, RemoteControl& remote)
        : loop_(loop), bus_(bus), remote_(remote), joined_(bus.join(*this)) {}

  private:
    static int obey(sd_bus_message* call, void* object, sd_bus_error* error) noexcept {
        const ControlVerb* verb = verbOfMethod(sd_bus_message_get_member(call));
        const char* text = "";
        if (verb->obey.takesText() && sd_bus_message_read(call, "s", &text) < 0)
            return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "A text is needed");
        const auto refusal = verb->obey(static_cast<ControlObject*>(object)->remote_, text);
        if (refusal)
            return sd_bus_error_set(error, control::refused, std::string(*refusal).c_str());
        return sd_bus_reply_method_return(call, nullptr);
    }

    /// The properties are not marked as announcing their changes: to those who do not watch they do not.
    static std::vector<sd_bus_vtable> makeTable() {
        std::vector<sd_bus_vtable> table = {SD_BUS_VTABLE_START(0)};
        for (const Property& property : properties)
            table.push_back(SD_BUS_PROPERTY(property.name, typeOf(property.of({})), get, 0, 0));
        for (const ControlVerb& verb : controlVerbs())
            table.push_back(SD_BUS_METHOD(verb.method, verb.obey.takesText() ? "s" : "", "", obey, 0));
        table.push_back(SD_BUS_METHOD(control::watch, "", "", BusHandler<&ControlObject::watch>::call, 0));
        table.push_back(
            SD_BUS_METHOD(control::unwatch, "", "", BusHandler<&ControlObject::unwatch>::call, 0));
        table.push_back(SD_BUS_VTABLE_END);
        return table;
    }

    int watch(sd_bus_message* call, sd_bus_error* /*error*/) {
        if (const char* sender = sd_bus_message_get_sender(call))
            addWatcher(sender);
        return sd_bus_reply_method_return(call, nullptr);
    }

    int unwatch(sd_bus_message* call, sd_bus_error* /*error*/) {
        if (const char* sender = sd_bus_message_get_sender(call))
            removeWatcher(sender);
        return sd_bus_reply_method_return(call, nullptr);
    }

    void busOpened() override {
        static const std::vector<sd_bus_vtable> table = makeTable(); // which outlives every bus
        object_ = bus_.serve(control::path, control::interface, table.data(), this);
    }

    void busLost() override {
        object_.reset();
        watchers_.clear();
        stopAnnouncing();
    }

    void busCaughtUp() override {
        if (changes_.active())
            announce();
    }

    void addWatcher(const std::string& client) {
        const auto ownerChanged = [this, client](bool there) {
            if (!there)
                removeWatcher(client);
        };
        if (watchers_.try_emplace(client, bus_, client, ownerChanged).second && watchers_.size() == 1)
            startAnnouncing();
    }

    void removeWatcher(const std::string& client) {
        watchers_.erase(client);
        if (watchers_.empty())
            stopAnnouncing();
    }

    /// Who begins to watch reads for itself how things are.
    void startAnnouncing() {
        known_ = RemoteControl::status();
        knownSince_ = monotonicSeconds();
        changes_ = RemoteControl::observe([this] { statusChanged(); });
    }

    void stopAnnouncing() {
        waiting_.cancel();
        changes_.cancel();
    }

    void statusChanged() {
        const double now = monotonicSeconds();
        const double wait = knownSince_ + secondsBetweenSignals - now;
        if (wait <= 0) {
            waiting_ = loop_.afterReal(0, [this] { announce(); });
        } else if (!waiting_.active()) {
            heldSince_ = now;
            waiting_ = loop_.afterReal(wait, [this] { announceHeldBack(); });
        }
    }

    /// A tick that had to wait for long is dropped for the next one, or the announcements would stay behind
    /// the count for good. Should the next one not come, the last one is announced late and not lost.
    void announceHeldBack() {
        constexpr double tooLong = 0.1, untilTheNextTick = 1.1;
        const bool late = monotonicSeconds() - heldSince_ > tooLong;
        if (late && onlyTimeMoved(known_, RemoteControl::status()))
            waiting_ = loop_.afterReal(untilTheNextTick, [this] { announce(); });
        else
            announce();
    }

    void announce() {
        waiting_.cancel();
        RemoteStatus now = RemoteControl::status();
        if (now == known_ || !bus_.keepsUp())
            return;
        bus_.send(changeSignal(bus_, known_, now));
        known_ = std::move(now);
        knownSince_ = monotonicSeconds();
    }

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

} // namespace

std::unique_ptr<BusClient> serveControl(EventLoop& loop, Bus& bus, RemoteControl& remote) {
    return std::make_unique<ControlObject>(loop, bus, remote);
}

} // namespace kelpa
