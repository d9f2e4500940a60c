#include "platform/linux/services/LinuxLoginItem.h"

#include <exception>
#include <syslog.h>

namespace kelpa {

void Syslog::error(const std::string& line) {
    syslog(LOG_USER | LOG_ERR, "%s", line.c_str());
}

LinuxLoginItem::LinuxLoginItem(Autostart autostart, std::string program, std::function<Portal*()> portal,
                               SystemLog& log)
    : autostart_(std::move(autostart)), program_(std::move(program)), portal_(std::move(portal)), log_(log) {}

/// The line is the same on every platform and names no reason.
void LinuxLoginItem::failed() const {
    log_.error("SMAppService error: ");
}

void LinuxLoginItem::setEnabled(bool enabled) {
    if (Portal* portal = portal_()) {
        portal->requestBackground(enabled, {program_}, [this](const std::string&) { failed(); });
        return;
    }
    try {
        enabled ? autostart_.enable() : autostart_.disable();
    } catch (const std::exception&) {
        failed();
    }
}

} // namespace kelpa
