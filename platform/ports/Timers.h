#pragma once

#include "base/Published.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace kelpa {

/// A repeating timer on the main loop that keeps firing while a menu is open or a window is dragged.
class Ticker {
  public:
    virtual ~Ticker() = default;
    /// Seconds between two ticks.
    [[nodiscard]] virtual double interval() const = 0;
    /// Starts a phase of its own: the first tick comes one interval from now. Ticks that were missed are
    /// dropped. The callback may cancel its own subscription.
    virtual Subscription connect(std::function<void()> tick) = 0;
};

class TickerSource {
  public:
    virtual ~TickerSource() = default;
    /// A ticker of `interval` seconds without tolerance. The caller owns it; it must not outlive the source.
    virtual std::unique_ptr<Ticker> makeTicker(double interval) = 0;
};

/// A piece of delayed work that can be cancelled until it begins. Shared between the one who waits for it and
/// the queue that runs it; cancelling is safe from any thread, and a cancelled item leaves its queue at once.
class WorkItem {
  public:
    explicit WorkItem(std::function<void()> work) : work_(std::move(work)) {}

    /// Ends the wait. Work that has already begun is not interrupted.
    void cancel() {
        std::function<void()> leave;
        {
            std::lock_guard lock(mutex_);
            if (!work_)
                return;
            work_ = nullptr;
            leave = std::exchange(leaveQueue_, nullptr);
        }
        if (leave)
            leave();
    }

    /// Runs the work once, unless it was cancelled. Called by queues.
    void perform() {
        std::function<void()> work;
        {
            std::lock_guard lock(mutex_);
            work = std::exchange(work_, nullptr);
            leaveQueue_ = nullptr;
        }
        if (work)
            work();
    }

    /// True until the work was cancelled or has begun.
    [[nodiscard]] bool pending() const {
        std::lock_guard lock(mutex_);
        return static_cast<bool>(work_);
    }

    /// What a queue wants done when the item is cancelled, so that no dead timer stays behind.
    void onCancel(std::function<void()> leaveQueue) {
        std::lock_guard lock(mutex_);
        leaveQueue_ = std::move(leaveQueue);
    }

  private:
    mutable std::mutex mutex_;
    std::function<void()> work_;
    std::function<void()> leaveQueue_;
};

/// Runs work one piece after another. No verb ever runs the work inside the call. Each may be called
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
    /// The same for `work`, which is cancelled when the handle ends.
    Subscription after(double seconds, std::function<void()> work) {
        auto item = std::make_shared<WorkItem>(std::move(work));
        asyncAfter(seconds, item);
        return Subscription([item] { item->cancel(); });
    }
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
