#pragma once

#include "platform/linux/services/Autostart.h"
#include "platform/linux/services/Portal.h"
#include "platform/ports/Services.h"

#include <functional>
#include <string>

namespace kelpa {

/// Where messages for the machine's administrator go.
class SystemLog {
  public:
    virtual ~SystemLog() = default;
    virtual void error(const std::string& line) = 0;
};

/// The system's own log.
class Syslog final : public SystemLog {
  public:
    void error(const std::string& line) override;
};

/// An entry among those programs that the desktop starts at log-in; in a sandbox the desktop keeps it.
class LinuxLoginItem final : public LoginItem {
  public:
    /// `portal` gives the desktop's portal in a sandbox and null outside; `log` outlives the login item.
    LinuxLoginItem(Autostart autostart, std::string program, std::function<Portal*()> portal, SystemLog& log);

    void setEnabled(bool enabled) override;

  private:
    void failed() const;

    Autostart autostart_;
    std::string program_;
    std::function<Portal*()> portal_;
    SystemLog& log_;
};

} // namespace kelpa
