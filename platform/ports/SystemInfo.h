#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace kelpa {

using InfoValue = std::variant<std::string, std::int64_t, double, bool>;

/// What the program's bundle and the machine say of themselves.
class SystemInfo {
  public:
    virtual ~SystemInfo() = default;
    /// The bundle's information dictionary; empty when it has none.
    [[nodiscard]] virtual std::map<std::string, InfoValue> bundleInfo() const = 0;
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;
    /// The machine field of uname, as it stands in its fixed-size buffer up to the first zero byte.
    [[nodiscard]] virtual std::string machine() const = 0;
    struct Version {
        int major = 0;
        int minor = 0;
        int patch = 0;
    };
    [[nodiscard]] virtual Version osVersion() const = 0;
    /// The folder that the program keeps its own files under; nothing when it has no usable home.
    [[nodiscard]] virtual std::optional<std::string> homeDirectory() const = 0;
    /// The name by which the faces find the application's own picture; nothing when it has none.
    [[nodiscard]] virtual std::optional<std::string> applicationIcon() const = 0;
};

} // namespace kelpa
