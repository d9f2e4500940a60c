#include "platform/linux/LinuxClock.h"
#include "Support.h"

#include <ctime>
#include <gtest/gtest.h>
#include <thread>

namespace kelpa {
namespace {

struct LinuxClockTest : testing::Test {
    EventLoop loop;
    LinuxClock clock{loop};
    LinuxClockTest() { setenv("TZ", "Europe/Berlin", 1); }
};

TEST_F(LinuxClockTest, partsOfASecondAreDroppedDownwards) {
    EXPECT_EQ(clock.civil({1711846799.999}), (CivilTime{2024, 3, 31, 1, 59, 59}));
    EXPECT_EQ(clock.civil({-0.5}), (CivilTime{1970, 1, 1, 0, 59, 59}));
}

TEST_F(LinuxClockTest, aChangedZoneIsSeenAtOnce) {
    EXPECT_EQ(clock.utcOffset({1711846800}), 7200);
    setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_EQ(clock.utcOffset({1711846800}), 19800);
    EXPECT_EQ(clock.civil({1711846800}), (CivilTime{2024, 3, 31, 6, 30, 0}));
}

TEST_F(LinuxClockTest, theNowIsTheSystems) {
    const auto before = static_cast<double>(std::time(nullptr)) - 1;
    const double now = clock.now().secondsSince1970;
    EXPECT_GE(now, before);
    EXPECT_LE(now, before + 10);
}

TEST_F(LinuxClockTest, speedRunsAheadFromTheStart) {
    const LinuxClock fast(loop, 1000);
    const double start = clock.now().secondsSince1970;
    EXPECT_NEAR(fast.now().secondsSince1970, start, 60);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_GE(fast.now().secondsSince1970 - start, 190);
    EXPECT_LT(clock.now().secondsSince1970 - start, 60);
}

TEST_F(LinuxClockTest, whatIsToBeDoneAtATimeIsDoneOnceItIsThere) {
    const double start = clock.now().secondsSince1970;
    std::string done;
    const auto past = clock.at({start - 3600}, [&] { done += "past "; });
    const auto soon = clock.at({start + 0.2}, [&] { done += "soon "; });
    const auto cancelled =
        std::make_unique<Subscription>(clock.at({start + 0.1}, [&] { done += "cancelled "; }));
    const auto later = clock.at({start + 3600}, [&] { done += "later "; });
    EXPECT_EQ(done, "") << "never inside the call";
    cancelled->cancel();
    ASSERT_TRUE(test::spinUntil(loop, [&] { return done == "past soon "; })) << done;
    EXPECT_GE(clock.now().secondsSince1970, start + 0.2);
}

TEST_F(LinuxClockTest, aFastClockIsThereSooner) {
    LinuxClock fast(loop, 1000);
    const Date due{fast.now().secondsSince1970 + 300};
    bool done = false;
    Subscription waiting;
    waiting = fast.at(due, [&] {
        waiting.cancel();
        done = true;
    });
    ASSERT_TRUE(test::spinUntil(loop, [&] { return done; }));
    EXPECT_GE(fast.now().secondsSince1970, due.secondsSince1970);
    EXPECT_LE(fast.now().secondsSince1970, due.secondsSince1970 + 1000);
}

TEST_F(LinuxClockTest, theWeekFollowsTheLocale) {
    const test::TempFolder folder;
    if (!test::useLocaleFolder(folder, "de_DE") || !test::useLocaleFolder(folder, "en_US"))
        GTEST_SKIP() << "this machine has no sources of locales";
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    EXPECT_EQ(clock.weekRule(), (WeekRule{1, 4}));
    setenv("LC_ALL", "en_US.UTF-8", 1);
    EXPECT_EQ(clock.weekRule(), (WeekRule{0, 1}));
    for (const char* none : {"C", "POSIX", "C.UTF-8", "xx_XX.UTF-8"}) {
        setenv("LC_ALL", none, 1);
        EXPECT_EQ(clock.weekRule(), std::nullopt) << none;
    }
}

} // namespace
} // namespace kelpa
