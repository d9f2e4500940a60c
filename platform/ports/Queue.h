#pragma once

#include "base/WorkItem.h"

#include <functional>
#include <memory>
#include <string>

namespace kelpa {

/// Runs work one piece after another. Both verbs may be called from any thread, and neither ever runs the
/// work inside the call.
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
    /// A queue that runs its work one piece after another, beside the main thread where the platform has
    /// threads. `label` tells a person who looks at the process what the queue is for. The source owns it.
    virtual Queue& makeSerialQueue(const std::string& label) = 0;
};

} // namespace kelpa
