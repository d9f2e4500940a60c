#include "app/RemoteControl.h"
#include "tests/core/Play.h"
#include "tests/support/Allocations.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

/// Allocations while an hour of ticks passes from the present state of the desk.
std::size_t allocationsInTicks(test::Play& play, int seconds) {
    const std::size_t before = allocations();
    for (int i = 0; i < seconds; ++i)
        play.desk.pass(1'000'000);
    return allocations() - before;
}

TEST(Tick, AllocatesNothingDuringWorkOrABreak) {
    test::Play play({"title", "count"});
    play("screens 1 2\n" + test::mouseMayRest +
         "store pref.work.time int 120\nstore pref.break.time int 7200\nlaunch\n+1\n");
    EXPECT_EQ(allocationsInTicks(play, 7000), 0U);
    play("+300\n");
    EXPECT_EQ(allocationsInTicks(play, 7000 - 150), 0U);
    EXPECT_GT(allocations(), 0U);
}

TEST(Tick, AllocatesNothingOnceNoScriptWatchesAnyMore) {
    test::Play play({"title", "count"});
    play(test::mouseMayRest + "store pref.work.time int 120\nlaunch\n");
    int told = 0;
    RemoteControl::observe([&told] { ++told; }).cancel();
    play("+1\n");
    EXPECT_EQ(allocationsInTicks(play, 3000), 0U);
    EXPECT_EQ(told, 0);
}

} // namespace
} // namespace kelpa
