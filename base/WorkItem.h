#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace kelpa {

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

} // namespace kelpa
