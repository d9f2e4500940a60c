#pragma once

#include "base/WorkItem.h"

#include <functional>
#include <memory>
#include <string>

namespace kelpa {

/// Runs work one piece after another. Neither verb ever runs the work inside the call. Both may be called
/// from every thread on which the platform runs work.
class Queue {
  public:
    virtual ~Queue() = default;
    /// Runs `work` after everything that was already due.
    virtual void async(std::function<void()> work) = 0;
    /// Runs `item` `seconds` from now on a monotonic clock that stands still while the machine sleeps. Zero
    /// or less means as soon as the queue gets to it. The queue shares the item until it ran or was
    /// cancelled.
    virtual void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) = 0;
};

class QueueSource {
  public:
    virtual ~QueueSource() = default;
    /// A queue that runs its work one piece after another, on a thread beside the main one or on that itself,
    /// as is customary on the platform. `label` tells a person who looks at the process what the queue is
    /// for, where that can be told. The source owns it.
    virtual Queue& makeSerialQueue(const std::string& label) = 0;
};

} // namespace kelpa
