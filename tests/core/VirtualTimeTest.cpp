#include "desk/VirtualTime.h"

#include <gtest/gtest.h>

namespace kelpa::desk {
namespace {

TEST(VirtualTime, RunsJobsOfOneInstantInTheOrderTheyWereArmed) {
    VirtualTime time;
    std::string heard;
    const auto ticker = time.makeTicker(1);
    const auto tick = ticker->connect([&] { heard += 't'; });
    time.asyncAfter(2, std::make_shared<WorkItem>([&] { heard += 'a'; }));
    time.pass(1'000'000);
    time.asyncAfter(1, std::make_shared<WorkItem>([&] { heard += 'b'; }));
    time.pass(1'000'000);
    // The tick at two seconds was armed by the tick at one second: after a, before b.
    EXPECT_EQ(heard, "tatb");
}

TEST(VirtualTime, NothingRunsInsideTheCallThatArmsIt) {
    VirtualTime time;
    std::string heard;
    time.asyncAfter(-5, std::make_shared<WorkItem>([&] {
        heard += '1';
        time.async([&] { heard += '3'; });
        heard += '2';
    }));
    EXPECT_EQ(heard, "");
    time.pass(0);
    EXPECT_EQ(heard, "123");
}

TEST(VirtualTime, CancelledWorkAndTickersStopAlsoFromInside) {
    VirtualTime time;
    int ticks = 0;
    Subscription tick;
    tick = time.every(1, [&] {
        if (++ticks == 2)
            tick.cancel();
    });
    const auto item = std::make_shared<WorkItem>([&] { ticks += 100; });
    time.asyncAfter(3, item);
    item->cancel();
    time.pass(10'000'000);
    EXPECT_EQ(ticks, 2);
}

} // namespace
} // namespace kelpa::desk
