#include "platform/linux/bus/BusCall.h"

namespace kelpa {

namespace {

struct Answer {
    BusMessage message;
    void came(sd_bus_message* reply) { message.reset(sd_bus_message_ref(reply)); }
};

} // namespace

BusMessage makeCall(const Bus& bus, const BusAddress& to, const char* member) {
    sd_bus_message* made = nullptr;
    if (bus.open())
        sd_bus_message_new_method_call(bus.handle(), &made, to.service, to.path, to.interface, member);
    if (made != nullptr)
        sd_bus_message_set_auto_start(made, 0);
    return BusMessage(made);
}

BusMessage ask(EventLoop& loop, const Bus& bus, const BusMessage& call, double seconds) {
    Answer answer;
    const BusSlot open = bus.call(call, BusHandler<&Answer::came>::call, &answer);
    if (!open)
        return nullptr;
    loop.runUntil([&answer] { return answer.message != nullptr; }, seconds);
    return std::move(answer.message);
}

} // namespace kelpa
