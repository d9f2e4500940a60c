#pragma once

#include "platform/ports/System.h"

#include <string_view>

namespace kelpa {

/// What was set when the program was built, and what the running system says.
class LinuxSystemInfo final : public SystemInfo {
  public:
    [[nodiscard]] std::map<std::string, InfoValue> bundleInfo() const override;
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override;
    [[nodiscard]] std::string machine() const override;
    [[nodiscard]] Version osVersion() const override;
    [[nodiscard]] std::optional<std::string> homeDirectory() const override;
    [[nodiscard]] std::optional<std::string> applicationIcon() const override;
};

/// Up to three numbers that a text begins with: "12" is 12.0.0, "6.1.0-18-amd64" is 6.1.0; nothing for a text
/// that begins with none.
[[nodiscard]] std::optional<SystemInfo::Version> leadingVersion(std::string_view text);
/// The value of VERSION_ID in the text of an os-release file, quoted or not.
[[nodiscard]] std::optional<std::string> versionId(std::string_view osRelease);

} // namespace kelpa
