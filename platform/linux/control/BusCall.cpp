#include "platform/linux/control/BusCall.h"

namespace kelpa {

namespace {

struct Answer {
    BusMessage message;
    void came(sd_bus_message* reply) { message.reset(sd_bus_message_ref(reply)); }
};

} // namespace

BusMessage makeCall(SessionBus& bus, const BusAddress& to, const char* member) {
    sd_bus_message* made = nullptr;
    sd_bus_message_new_method_call(bus.handle(), &made, to.service, to.path, to.interface, member);
    if (made != nullptr)
        sd_bus_message_set_auto_start(made, 0);
    return BusMessage(made);
}

BusMessage ask(EventLoop& loop, SessionBus& bus, const BusMessage& call, double seconds) {
    Answer answer;
    sd_bus_slot* slot = nullptr;
    if (!call || sd_bus_call_async(bus.handle(), &slot, call.get(), BusHandler<&Answer::came>::call, &answer,
                                   UINT64_MAX) < 0)
        return nullptr;
    const BusSlot open(slot);
    loop.runUntil([&answer] { return answer.message != nullptr; }, seconds);
    return std::move(answer.message);
}

} // namespace kelpa
