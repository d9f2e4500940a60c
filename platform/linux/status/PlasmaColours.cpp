#include "platform/linux/status/PlasmaColours.h"

namespace kelpa {

namespace {

/// What KDE's settings send to every program for colours, fonts, icons and the like.
constexpr const char* rule =
    "type='signal',path='/KGlobalSettings',interface='org.kde.KGlobalSettings',member='notifyChange'";

} // namespace

void PlasmaColours::start(SessionBus& bus) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus.handle(), &slot, rule, BusHandler<&PlasmaColours::announced>::call, nullptr,
                           this);
    match_.reset(slot);
}

void PlasmaColours::stop() {
    match_.reset();
    waiting_.cancel();
}

void PlasmaColours::announced(sd_bus_message*) {
    waiting_ = loop_.afterReal(patience, [this] {
        waiting_.cancel();
        changed_();
    });
}

} // namespace kelpa
