#pragma once

#include "platform/ports/Services.h"

#include <string>

namespace kelpa {

/// The system's own list of what starts when the user logs in: the application itself from macOS 13 on,
/// before that the small helper in its bundle that starts it.
class ServiceLoginItem final : public LoginItem {
  public:
    /// `helperIdentifier` is the bundle identifier of that helper.
    explicit ServiceLoginItem(std::string helperIdentifier)
        : helperIdentifier_(std::move(helperIdentifier)) {}
    void setEnabled(bool enabled) override;

  private:
    std::string helperIdentifier_;
};

} // namespace kelpa
