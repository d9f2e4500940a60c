#pragma once

#include "platform/ports/Queue.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

class SerialQueue;

/// Serial queues, each on a thread of its own that sleeps until the next piece of work is due: work that is
/// armed for later, or cancelled, does not wake it. The threads end with the source.
class SerialQueues final : public QueueSource {
  public:
    /// Delays pass `speed` times as fast as real time.
    explicit SerialQueues(double speed = 1.0);
    ~SerialQueues() override;
    SerialQueues(const SerialQueues&) = delete;
    SerialQueues& operator=(const SerialQueues&) = delete;

    Queue& makeSerialQueue(const std::string& label) override;

  private:
    double speed_;
    std::vector<std::unique_ptr<SerialQueue>> queues_;
};

} // namespace kelpa
