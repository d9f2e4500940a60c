#include "platform/linux/TimerQueue.h"

#include <gtest/gtest.h>
#include <vector>

namespace kelpa {
namespace {

struct TimerQueueTest : testing::Test {
    TimerQueue queue;
    std::vector<int> ran;
    bool stopped = false;
    std::function<void()> note(int number) {
        return [this, number] { ran.push_back(number); };
    }
    std::vector<int> runAt(TimerQueue::Time now) {
        ran.clear();
        queue.runDue(now, stopped);
        return ran;
    }
};

using Order = std::vector<int>;

TEST_F(TimerQueueTest, jobsOfOneInstantRunInTheOrderTheyWereArmed) {
    queue.add(20, 0, note(1));
    queue.add(10, 0, note(2));
    queue.add(20, 0, note(3));
    EXPECT_EQ(queue.earliest(), 10u);
    EXPECT_EQ(runAt(9), Order{});
    EXPECT_EQ(runAt(20), (Order{2, 1, 3}));
    EXPECT_EQ(queue.earliest(), std::nullopt);
}

TEST_F(TimerQueueTest, aRepeatingJobCountsAsArmedAnewAtEachTime) {
    queue.add(10, 10, note(1));
    queue.add(20, 0, note(2));
    EXPECT_EQ(runAt(10), (Order{1}));
    EXPECT_EQ(runAt(20), (Order{2, 1}));
}

TEST_F(TimerQueueTest, missedTimesAreDroppedAndTheGridIsKept) {
    queue.add(10, 10, note(1));
    EXPECT_EQ(runAt(47), (Order{1}));
    EXPECT_EQ(queue.earliest(), 50u);
    EXPECT_EQ(runAt(50), (Order{1}));
    EXPECT_EQ(queue.earliest(), 60u);
}

TEST_F(TimerQueueTest, whatIsArmedByAJobWaitsForTheNextRun) {
    queue.add(10, 0, [this] {
        ran.push_back(1);
        queue.add(5, 0, note(2));
    });
    queue.add(11, 0, note(3));
    // The new job is overdue and comes first in the queue; it must neither run nor let the others overtake
    // it.
    EXPECT_EQ(runAt(11), (Order{1}));
    EXPECT_EQ(runAt(11), (Order{2, 3}));
}

TEST_F(TimerQueueTest, jobsMayRemoveThemselvesAndOthers) {
    std::shared_ptr<TimerQueue::Job> self, other;
    auto held = std::make_shared<int>(0);
    self = queue.add(10, 10, [this, &self, &other, held] {
        ran.push_back(1);
        queue.remove(*self);
        queue.remove(*other);
        self.reset();
        ++*held; // still there, although nobody but the running job holds it
    });
    other = queue.add(10, 0, note(2));
    EXPECT_EQ(runAt(10), (Order{1}));
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(runAt(100), Order{});
}

TEST_F(TimerQueueTest, removedJobsLetGoOfWhatTheyHold) {
    auto held = std::make_shared<int>(0);
    const auto job = queue.add(10, 0, [this, held] { ran.push_back(1); });
    queue.remove(*job);
    queue.remove(*job);
    EXPECT_EQ(queue.earliest(), std::nullopt);
    EXPECT_EQ(runAt(10), Order{});
}

TEST_F(TimerQueueTest, nothingRunsAfterTheStop) {
    queue.add(10, 0, [this] { stopped = true; });
    queue.add(10, 0, note(2));
    EXPECT_EQ(runAt(10), Order{});
}

} // namespace
} // namespace kelpa
