#include "platform/linux/EventLoop.h"
#include "Support.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kelpa::test {
namespace {

/// How late a loaded machine may be; too early is never forgiven.
constexpr double patience = 0.2;

struct EventLoopTest : testing::Test {
    EventLoop loop;
    std::vector<std::string> log;
    void note(const std::string& text) { log.push_back(text); }
    void after(double seconds, const std::string& text) {
        loop.asyncAfter(seconds, std::make_shared<WorkItem>([this, text] { note(text); }));
    }
};

using Log = std::vector<std::string>;

TEST_F(EventLoopTest, ticksComeOnTheGridOfTheirConnection) {
    const auto ticker = loop.makeTicker(0.05);
    std::vector<double> times;
    const double start = secondsNow();
    auto ticks = ticker->connect([&] {
        times.push_back(secondsNow() - start);
        if (times.size() == 6)
            loop.terminate();
    });
    EXPECT_EQ(loop.run(), 0);
    std::vector<double> lateness;
    for (std::size_t i = 0; i < times.size(); ++i)
        lateness.push_back(times[i] - 0.05 * static_cast<double>(i + 1));
    std::sort(lateness.begin(), lateness.end());
    EXPECT_GE(lateness.front(), 0);
    EXPECT_LT(lateness[2], 0.008); // coarse timers are late nearly every time, a busy machine is now and then
    EXPECT_EQ(ticker->interval(), 0.05);
}

TEST_F(EventLoopTest, aConnectionMayEndInsideItsOwnTick) {
    const auto ticker = loop.makeTicker(0.01);
    int count = 0;
    Subscription first, second;
    first = ticker->connect([&] {
        ++count;
        second.cancel();
        first = ticker->connect([&] { count += 10; });
    });
    second = ticker->connect([&] { count += 100; });
    ASSERT_TRUE(spinUntil(loop, [&] { return count >= 11; }));
    EXPECT_LT(count, 100);
}

TEST_F(EventLoopTest, handlesMayOutliveTheLoop) {
    Subscription tick, work, readable;
    auto item = std::make_shared<WorkItem>([] {});
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    {
        EventLoop shortLived;
        tick = shortLived.makeTicker(1)->connect([] {});
        work = shortLived.afterReal(1, [] {});
        readable = shortLived.watch(ends[0], [] {});
        shortLived.asyncAfter(1, item);
    }
    tick.cancel();
    work.cancel();
    readable.cancel();
    item->cancel();
    EXPECT_FALSE(item->pending());
}

TEST_F(EventLoopTest, delaysOfNothingAndLessRunFromTheLoopInTheirOrder) {
    after(0, "zero");
    after(-5, "negative");
    after(std::nan(""), "no number");
    loop.async([this] { note("handed over"); });
    EXPECT_EQ(log, Log{});
    ASSERT_TRUE(spinUntil(loop, [&] { return log.size() == 4; }));
    EXPECT_EQ(log, (Log{"zero", "negative", "no number", "handed over"}));
}

TEST_F(EventLoopTest, hugeDelaysDoNotOverflow) {
    after(1e300, "never");
    after(INFINITY, "never");
    after(1e10, "not in this century");
    spin(loop, 0.02);
    EXPECT_EQ(log, Log{});
}

TEST_F(EventLoopTest, aCancelledItemLeavesTheQueueAtOnce) {
    const auto held = std::make_shared<int>(0);
    auto item = std::make_shared<WorkItem>([held] {});
    std::weak_ptr<WorkItem> watched = item;
    loop.asyncAfter(1000, item);
    item->cancel();
    item.reset();
    EXPECT_TRUE(watched.expired());

    const auto cancelledBefore = std::make_shared<WorkItem>([this] { note("never"); });
    cancelledBefore->cancel();
    loop.asyncAfter(0, cancelledBefore);
    spin(loop, 0.02);
    EXPECT_EQ(log, Log{});
    EXPECT_EQ(cancelledBefore.use_count(), 1);
}

/// What the program does with a serial queue: a check that the main thread puts off again and again, and that
/// hands over what it found.
TEST_F(EventLoopTest, aSerialQueueHandsOverBehindWhatWasDueBefore) {
    Queue& queue = loop.makeSerialQueue("app.example.checks");
    const auto check = [&] {
        note("check");
        loop.async([this] { note("handed over"); });
    };
    for (int i = 0; i < 100; ++i) {
        const auto putOff = std::make_shared<WorkItem>(check);
        queue.asyncAfter(0.01, putOff);
        putOff->cancel();
    }
    queue.asyncAfter(0.01, std::make_shared<WorkItem>(check));
    after(0.01, "main thread");
    spinUntil(loop, [this] { return log.size() == 3; });
    EXPECT_EQ(log, (Log{"check", "main thread", "handed over"}));
}

TEST_F(EventLoopTest, speedAppliesToTicksAndDelaysAlone) {
    EventLoop fast(100);
    const double start = secondsNow();
    double ticked = 0, delayed = 0, real = 0;
    const auto ticker = fast.makeTicker(5);
    auto tick = ticker->connect([&] { ticked = ticked == 0 ? secondsNow() - start : ticked; });
    fast.asyncAfter(10, std::make_shared<WorkItem>([&] { delayed = secondsNow() - start; }));
    auto wait = fast.afterReal(0.15, [&] { real = secondsNow() - start; });
    ASSERT_TRUE(spinUntil(fast, [&] { return real > 0; }));
    EXPECT_EQ(ticker->interval(), 5);
    EXPECT_GE(ticked, 0.05);
    EXPECT_GE(delayed, 0.1);
    EXPECT_LT(delayed, real + patience);
    EXPECT_GE(real, 0.15);
}

TEST_F(EventLoopTest, aTerminalThatIsToBeOutlivedEndsNothing) {
    std::signal(SIGHUP, SIG_IGN);
    EventLoop other;
    kill(getpid(), SIGHUP);
    EXPECT_FALSE(other.runUntil([&other] { return other.ending(); }, 0.1));
}

TEST_F(EventLoopTest, aVanishedReaderIsAnErrorCode) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    close(ends[0]);
    EXPECT_EQ(write(ends[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
}

TEST_F(EventLoopTest, aDescriptorIsWatchedUntilItsHandleEnds) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    Subscription watch;
    watch = loop.watch(ends[0], [&] {
        char byte = 0;
        const ssize_t count = read(ends[0], &byte, 1);
        note(count == 0 ? "end" : std::string(1, byte));
        if (count == 0)
            watch.cancel();
    });
    ASSERT_EQ(write(ends[1], "ab", 2), 2);
    ASSERT_TRUE(spinUntil(loop, [&] { return log.size() == 2; }));
    close(ends[1]);
    spin(loop, 0.05);
    EXPECT_EQ(log, (Log{"a", "b", "end"}));
}

TEST_F(EventLoopTest, theEndOfAChildIsTold) {
    const auto start = [](const std::function<void()>& life) {
        const pid_t pid = fork();
        if (pid == 0) {
            life();
            _exit(0);
        }
        return pid;
    };
    int exited = -1, killed = -1;
    auto first = loop.watchChild(start([] { _exit(7); }), [&](int status) { exited = status; });
    auto second =
        loop.watchChild(start([] { kill(getpid(), SIGKILL); }), [&](int status) { killed = status; });
    ASSERT_TRUE(spinUntil(loop, [&] { return exited >= 0 && killed >= 0; }));
    EXPECT_TRUE(WIFEXITED(exited) && WEXITSTATUS(exited) == 7);
    EXPECT_TRUE(WIFSIGNALED(killed) && WTERMSIG(killed) == SIGKILL);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "both are reaped";
}

} // namespace
} // namespace kelpa::test
