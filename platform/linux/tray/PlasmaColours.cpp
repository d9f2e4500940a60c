#include "platform/linux/tray/PlasmaColours.h"

namespace kelpa {

namespace {

/// What KDE's settings send to every program for colours, fonts, icons and the like.
constexpr BusAddress settings = {nullptr, "/KGlobalSettings", "org.kde.KGlobalSettings"};

} // namespace

void PlasmaColours::start(const Bus& bus) {
    match_ = bus.match<&PlasmaColours::announced>(signalRule(settings, "notifyChange"), *this);
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
