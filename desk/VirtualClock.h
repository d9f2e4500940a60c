#pragma once

#include "desk/VirtualTime.h"
#include "platform/posix/SystemClock.h"

#include <string>

namespace kelpa::desk {

/// A wall clock that follows virtual time until it is stepped. Its time zone is the process's.
class VirtualClock final : public LocalClock {
  public:
    explicit VirtualClock(const VirtualTime& time) : time_(time) {}

    /// Sets what the wall clock shows now.
    void set(Date date);
    void step(double seconds);
    /// Switches the process to a time zone of the system's database; false if there is none of this name.
    static bool setZone(const std::string& name);

    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::optional<WeekRule> weekRule() const override { return std::nullopt; }

  private:
    const VirtualTime& time_;
    std::int64_t offset_ =
        0; ///< what the wall clock showed when virtual time began, in microseconds since 1970
};

} // namespace kelpa::desk
