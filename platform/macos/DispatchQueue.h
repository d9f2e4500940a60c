#pragma once

#include "platform/ports/Timers.h"

#import <dispatch/dispatch.h>

#include <memory>
#include <string>
#include <vector>

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

/// Serial queues with default attributes and default quality of service. Delays pass `speed` times as fast as
/// real time.
class SerialDispatchQueues final : public QueueSource {
  public:
    explicit SerialDispatchQueues(double speed) : speed_(speed) {}
    Queue& makeSerialQueue(const std::string& label) override;

  private:
    double speed_;
    std::vector<std::unique_ptr<DispatchQueue>> queues_;
};

} // namespace kelpa
