#pragma once

#include "platform/ports/System.h"

namespace kelpa {

/// What the main bundle and the system say of themselves.
class MacSystemInfo final : public SystemInfo {
  public:
    [[nodiscard]] std::map<std::string, InfoValue> bundleInfo() const override;
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override;
    [[nodiscard]] std::string machine() const override;
    [[nodiscard]] Version osVersion() const override;
    /// The container's folder when the application runs sandboxed.
    [[nodiscard]] std::optional<std::string> homeDirectory() const override;
    [[nodiscard]] std::optional<std::string> applicationIcon() const override;
};

} // namespace kelpa
