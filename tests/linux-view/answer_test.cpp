// Which helpers count as hung, in steps that are a tenth as long as in earnest.
#include "platform/linux/helper/AnswerWatch.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <limits>
#include <sys/wait.h>
#include <systemd/sd-event.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace kelpa;

constexpr double step = 0.05;
constexpr int usual = 4;
constexpr int starting = 20;

class AnswerWatchTest : public testing::Test, public AnswerWatchClient {
  protected:
    void readAnswers() override {
        if (unread > 0)
            watch.taken(unread);
    }
    [[nodiscard]] bool helperBusy() const override { return busy; }
    void ask() override {
        ++asked;
        watch.sent();
    }
    void helperHangs(double seconds) override { hung.push_back(seconds); }

    /// Serves the loop for so many steps and a half.
    void pass(int steps) {
        const auto end =
            std::chrono::steady_clock::now() + std::chrono::duration<double>((steps + 0.5) * step);
        while (std::chrono::steady_clock::now() < end)
            sd_event_run(loop.handle(), 2000);
        sd_event_run(loop.handle(), 0);
    }
    /// A helper that has started well.
    void begin() {
        watch.begin();
        watch.sent();
        watch.taken(1);
    }
    /// Steps after which it was given up, none where that was before or is yet to come.
    bool hangsAfter(int steps) {
        hung.clear();
        // The alarm may ring a little late each time.
        pass(steps - 2);
        const bool early = !hung.empty();
        pass(steps + 8);
        return !early && hung == std::vector<double>{steps * step};
    }

    EventLoop loop;
    AnswerWatch watch{loop, *this, step};
    bool busy = false;
    int unread = 0;
    int asked = 0;
    std::vector<double> hung;
};

TEST_F(AnswerWatchTest, AHelperThatOwesAnAnswerIsGivenUpAndTheNextOneHasMoreTime) {
    for (const int slowness : {1, 2, 4, 4}) {
        begin();
        watch.sent();
        EXPECT_TRUE(hangsAfter(slowness * usual)) << slowness;
    }
}

TEST_F(AnswerWatchTest, AStartMayTakeLonger) {
    watch.begin();
    watch.sent();
    EXPECT_TRUE(hangsAfter(starting));
}

TEST_F(AnswerWatchTest, WhoeverHasMuchToDoHasFiveTimesAsLong) {
    begin();
    watch.sent();
    busy = true;
    EXPECT_TRUE(hangsAfter(5 * usual));
}

TEST(HeldUpByWork, IsWhoeverComputesAndNotWhoeverIsStopped) {
    EXPECT_TRUE(heldUpByWork(getpid()));
    EXPECT_FALSE(heldUpByWork(std::numeric_limits<int>::max()));
    const int child = fork();
    if (child == 0)
        for (;;)
            pause();
    ASSERT_GT(child, 0);
    kill(child, SIGSTOP);
    waitpid(child, nullptr, WUNTRACED);
    EXPECT_FALSE(heldUpByWork(child)) << "whatever else there is to do";
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

TEST_F(AnswerWatchTest, WhoeverGetsOnDoesNotHang) {
    begin();
    for (int sent = 2; sent < 8; ++sent) {
        watch.sent();
        watch.sent();
        pass(1);
        watch.taken(sent); // of more and more
    }
    EXPECT_TRUE(hung.empty());
    EXPECT_TRUE(hangsAfter(usual));
}

TEST_F(AnswerWatchTest, SilenceIsAskedForASignOfLifeAndNothingElseIs) {
    begin();
    pass(8);
    EXPECT_EQ(asked, 0);
    pass(4);
    EXPECT_EQ(asked, 1);
    watch.end();
    pass(12);
    EXPECT_EQ(asked, 1) << "a helper that is gone needs no wake-ups";
    EXPECT_TRUE(hung.empty());
}

TEST_F(AnswerWatchTest, WhatHeldThisProgramUpIsNotLaidAtItsDoor) {
    begin();
    watch.sent();
    std::this_thread::sleep_for(std::chrono::duration<double>(3 * usual * step));
    pass(1);
    EXPECT_TRUE(hung.empty()) << "both were held up, and it has not had time yet";
    unread = 2;
    std::this_thread::sleep_for(std::chrono::duration<double>(3 * usual * step));
    pass(usual);
    EXPECT_TRUE(hung.empty()) << "it had answered long ago";
}

} // namespace
