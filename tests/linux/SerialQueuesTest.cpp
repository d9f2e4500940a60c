#include "platform/linux/SerialQueues.h"

#include "Support.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace kelpa {
namespace {

using test::secondsNow;
using test::spinUntil;

/// The thread of this process that bears a name; 0 when there is none.
int threadNamed(const std::string& name) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream file(entry.path() / "comm");
        std::string found;
        if (std::getline(file, found) && found == name)
            return std::stoi(entry.path().filename());
    }
    return 0;
}

/// How often a thread has gone to sleep.
long sleeps(int thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/status");
    const std::string key = "voluntary_ctxt_switches:";
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(key))
            return std::stol(line.substr(key.size()));
    return -1;
}

void waitFor(const std::function<bool()>& reached) {
    const double end = secondsNow() + 10;
    while (!reached() && secondsNow() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_TRUE(reached());
}

TEST(SerialQueues, RunWorkInOrderOnOneThreadThatIsNotOurs) {
    std::mutex mutex;
    std::vector<int> heard;
    std::vector<std::thread::id> threads;
    SerialQueues source;
    Queue& queue = source.makeSerialQueue("order");
    const auto note = [&](int number) {
        return [&, number] {
            const std::lock_guard lock(mutex);
            heard.push_back(number);
            threads.push_back(std::this_thread::get_id());
        };
    };
    queue.async(note(1));
    queue.asyncAfter(-1, std::make_shared<WorkItem>(note(2)));
    // Far apart, for this thread may have to wait for a processor between the two calls.
    queue.asyncAfter(0.4, std::make_shared<WorkItem>(note(4)));
    queue.asyncAfter(0.02, std::make_shared<WorkItem>(note(3)));
    waitFor([&] {
        const std::lock_guard lock(mutex);
        return heard.size() == 4;
    });
    EXPECT_EQ(heard, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(threads, std::vector<std::thread::id>(4, threads.front()));
    EXPECT_NE(threads.front(), std::this_thread::get_id());
}

/// The thread of a queue that has worked once, so that it is there and has learnt what it needs.
int threadOf(Queue& queue, const std::string& name) {
    int thread = 0;
    waitFor([&] { return (thread = threadNamed(name)) != 0; });
    std::atomic<bool> ran = false;
    queue.async([&] { ran = true; });
    waitFor([&] { return ran.load(); });
    return thread;
}

// A thread may go to sleep once more than it has to, as for a lock; so many is a small part of what a
// needless wake-up each time would come to.
constexpr int rounds = 40;

TEST(SerialQueues, SleepThroughWorkThatIsPutOff) {
    SerialQueues source;
    Queue& queue = source.makeSerialQueue("app.example.system.event.queue");
    const int thread = threadOf(queue, "tem.event.queue");
    const long before = sleeps(thread);
    ASSERT_GT(before, 0);
    std::shared_ptr<WorkItem> check;
    for (int i = 0; i < rounds; ++i) {
        if (check)
            check->cancel();
        check = std::make_shared<WorkItem>([] { FAIL() << "work of the far future ran"; });
        queue.asyncAfter(1000, check);
        std::this_thread::sleep_for(
            std::chrono::milliseconds(1)); // in which a thread that was woken sleeps again
    }
    EXPECT_LT(sleeps(thread) - before, rounds / 2);
}

TEST(SerialQueues, SleepPastTheTimeOfWorkThatWasCancelled) {
    SerialQueues source;
    Queue& queue = source.makeSerialQueue("cancelled");
    const int thread = threadOf(queue, "cancelled");
    const long before = sleeps(thread);
    std::atomic<int> early = 0;
    for (int i = 0; i < rounds; ++i) {
        const auto check = std::make_shared<WorkItem>([&] { ++early; });
        std::atomic<bool> ran = false;
        queue.asyncAfter(0.01, std::make_shared<WorkItem>([&] { ran = true; }));
        queue.asyncAfter(0.005, check);
        check->cancel();
        waitFor([&] { return ran.load(); });
    }
    // On a busy machine the one or other has run before it could be cancelled.
    EXPECT_LT(sleeps(thread) - before, rounds + early + rounds / 2);
}

TEST(SerialQueues, RunDelaysFasterByTheirSpeed) {
    SerialQueues source(1000);
    std::atomic<bool> ran = false;
    const double began = secondsNow();
    source.makeSerialQueue("fast").asyncAfter(100, std::make_shared<WorkItem>([&] { ran = true; }));
    waitFor([&] { return ran.load(); });
    EXPECT_GE(secondsNow() - began, 0.1);
}

/// What the program does with it: a check that hands its result to the main loop, put off by the main thread.
TEST(SerialQueues, HandOverToTheMainLoopWhileChecksAreCancelled) {
    EventLoop loop;
    SerialQueues source;
    Queue& queue = source.makeSerialQueue("checks");
    int handed = 0;
    std::shared_ptr<WorkItem> check;
    for (int i = 0; i < 300; ++i) {
        if (check)
            check->cancel();
        check = std::make_shared<WorkItem>([&] { loop.async([&] { ++handed; }); });
        queue.asyncAfter(i % 3 * 0.0002, check);
        sd_event_run(loop.handle(), 300);
    }
    EXPECT_TRUE(spinUntil(loop, [&] { return !check->pending() && handed > 0; }));
    const int last = handed;
    queue.async([&] { loop.async([&] { ++handed; }); });
    EXPECT_TRUE(spinUntil(loop, [&] { return handed > last; }));
}

TEST(SerialQueues, EndWithWorkStillWaiting) {
    const auto waiting = std::make_shared<WorkItem>([] { FAIL() << "it ran after the end"; });
    std::weak_ptr<int> held;
    {
        SerialQueues source;
        Queue& queue = source.makeSerialQueue("end");
        auto load = std::make_shared<int>(1);
        held = load;
        queue.asyncAfter(1000, waiting);
        queue.asyncAfter(1000, std::make_shared<WorkItem>([load] {}));
    }
    EXPECT_TRUE(held.expired());
    EXPECT_TRUE(waiting->pending());
    waiting->cancel(); // of a queue that is gone
}

} // namespace
} // namespace kelpa
