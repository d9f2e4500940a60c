#include "platform/ports/Timers.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace kelpa {
namespace {

// Some platforms have a thread for each queue, and the main thread cancels what waits in it.
TEST(WorkItem, RunsOnItsQueuesThreadOrIsCancelledOnAnotherAndNeverBoth) {
    std::atomic<int> ran = 0, left = 0;
    std::vector<WorkItem*> items;
    std::vector<std::unique_ptr<WorkItem>> owned;
    for (int i = 0; i < 5000; ++i) {
        items.push_back(owned.emplace_back(std::make_unique<WorkItem>([&ran] { ++ran; })).get());
        items.back()->onCancel([&left] { ++left; });
    }
    std::thread queue([&items] {
        for (WorkItem* item : items)
            item->perform();
    });
    for (WorkItem* item : items)
        item->cancel();
    queue.join();
    EXPECT_EQ(ran + left, 5000);
    for (const WorkItem* item : items)
        EXPECT_FALSE(item->pending());
}

} // namespace
} // namespace kelpa
