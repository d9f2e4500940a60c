#pragma once

#include "base/Calendar.h"
#include "platform/ports/System.h"

#include <map>
#include <optional>
#include <string>

namespace kelpa {

/// What the program knows of itself and of the machine. Values missing from the bundle have defaults.
class AppInfo {
  public:
    /// Both must outlive the process's last use. Call before anything else.
    static void wire(const SystemInfo& system, const Clock& clock);

    [[nodiscard]] static const std::map<std::string, InfoValue>& infos();
    [[nodiscard]] static std::string name();
    [[nodiscard]] static std::string version();
    [[nodiscard]] static std::string build();
    [[nodiscard]] static std::string identifier();
    [[nodiscard]] static std::string loginItemIdentifier();
    /// Name of the application's picture; nothing when it has none.
    [[nodiscard]] static std::optional<std::string> icon();
    /// Of the current year in the user's calendar.
    [[nodiscard]] static std::string copyright();
    [[nodiscard]] static std::string releaseNotesLink();
    [[nodiscard]] static std::string feedbackMailbox();
    [[nodiscard]] static std::string model();
    [[nodiscard]] static std::string osVersion();
};

} // namespace kelpa
