#pragma once

#include "platform/linux/busy/DesktopBusyness.h"

#include <string>

namespace kelpa {

/// Whether a process of this user holds a video device, as whoever takes pictures does, the service that
/// shares a camera among programs included.
class CameraUse final : public BusySource {
  public:
    /// The loop outlives the object. `root` stands for the root folder, of which /proc is read.
    explicit CameraUse(EventLoop& loop, std::string root = "") : loop_(loop), root_(std::move(root)) {}

    Subscription ask(Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable() override;

  private:
    EventLoop& loop_;
    std::string root_;
};

} // namespace kelpa
