#include "platform/linux/tray/PlasmaColours.h"

namespace kelpa {

namespace {

/// What KDE's settings send to every program for colours, fonts, icons and the like.
constexpr const char* rule =
    "type='signal',path='/KGlobalSettings',interface='org.kde.KGlobalSettings',member='notifyChange'";

} // namespace

void PlasmaColours::start(const Bus& bus) {
    match_ = bus.match(rule, BusHandler<&PlasmaColours::announced>::call, this);
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
