#pragma once

#include "platform/ports/Queue.h"

#import <dispatch/dispatch.h>

#include <string>

namespace kelpa {

/// A queue of the system's. Delays pass `speed` times as fast as real time.
class DispatchQueue final : public Queue {
  public:
    explicit DispatchQueue(dispatch_queue_t queue, double speed = 1.0) : queue_(queue), speed_(speed) {}

    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override;

  private:
    dispatch_queue_t queue_;
    double speed_;
};

/// A serial queue of its own, with default attributes and default quality of service.
[[nodiscard]] dispatch_queue_t makeSerialDispatchQueue(const std::string& label);

} // namespace kelpa
