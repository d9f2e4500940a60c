#include "app/AppState.h"
#include "tests/core/Play.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kelpa::test {
namespace {

Lines hintAt(const std::string& time, const std::string& text) {
    return {time + " hint \"" + text + "\""};
}

/// A desk at 14:00 at which work has begun.
class Paused : public Play {
  public:
    explicit Paused(const std::string& settings = mouseMayRest)
        : Play({"title", "window", "count", "break", "app", "set"}) {
        (*this)("start 2026-03-28T14:00:00\n" + settings + "launch\n");
    }
};

TEST(TimedPause, EndsByItselfAtTheTimeAndTellsItMeanwhile) {
    Paused play;
    EXPECT_EQ(play("kelpa pause 45m\n"), stopAt("0.000") + hintAt("0.000", "Paused until 14:45"));
    EXPECT_TRUE(AppState::manualPause());
    EXPECT_EQ(play("+2699.999\n"), Lines{});
    EXPECT_EQ(play("+0.001\n+600\n"), hintAt("2700.000", "") + startAt("2700.000"));
    EXPECT_FALSE(AppState::manualPause());
    EXPECT_EQ(play.desk.statusBar.title, "15:00");
    EXPECT_EQ(play("kelpa pause until 14:00\n")[2], "3300.000 hint \"Paused until 2026-03-29 14:00\"");
}

TEST(TimedPause, WhilePausedItOnlySetsTheTimeAndOneWithoutTakesItAway) {
    Paused play;
    play("menu pause\n");
    EXPECT_EQ(play("kelpa pause 2h\n"), hintAt("0.000", "Paused until 16:00"));
    EXPECT_EQ(play("kelpa pause 1h30m\n"), hintAt("0.000", "Paused until 15:30"));
    EXPECT_EQ(play("kelpa pause until 14:30\n"), hintAt("0.000", "Paused until 14:30"));
    EXPECT_EQ(play("+1799\nkelpa pause\n+86400\n"), hintAt("1799.000", ""));
    EXPECT_EQ(play("kelpa pause 1m\n+59\nkelpa resume\n"),
              hintAt("88199.000", "Paused until 14:30") + hintAt("88258.000", "") + startAt("88258.000"));
    EXPECT_EQ(play("kelpa pause 1m\nmenu pause\n+59\n").back(),
              "88258.000 item pause stop.circle \"- Stop -\"");
    EXPECT_EQ(play("+5\n"), Lines{}) << "what was forgotten comes no more";
}

TEST(TimedPause, WhatIsNoTimeIsRefusedAndChangesNothing) {
    Paused play;
    for (const char* text :
         {"0m", "0h0m", "-5m", "45", "45min", "m", "1m2h", "169h", "10081m", "99999h", "until", "until 24:00",
          "until 14:60", "until 1430", "until 14:3", "until today"})
        EXPECT_TRUE(
            play(std::string("kelpa pause ") + text + "\n")[0].starts_with("0.000 refused kelpa pause "))
            << text;
    EXPECT_EQ(play("kelpa pause 10080m\n").size(), 3U);
    EXPECT_EQ(
        play("kelpa resume\n+1500\nkelpa pause 45m\n").back(),
        "1500.000 refused kelpa pause 45m: A break is on the screen and can be neither paused nor resumed");
}

TEST(TimedPause, TomorrowIsTheFirstMomentOfTheLocalDayEvenWhereThatHasNoMidnight) {
    Play play;
    play("start 2026-03-07T22:00:00\nzone America/Havana\n" + mouseMayRest +
         "launch\nkelpa pause until tomorrow\n");
    EXPECT_EQ(play.desk.statusBar.hint, "Paused until 2026-03-08 01:00");
    play("+7199\n");
    EXPECT_TRUE(AppState::manualPause());
    play("+1\n");
    EXPECT_FALSE(AppState::manualPause());
}

TEST(TimedPause, FollowsTheWallClockWhenTheMachineSleepsAndWhenTheClockIsSet) {
    Paused play;
    play("kelpa pause until 15:00\n+600\n");
    EXPECT_EQ(play("clock -3600\n+3600\n"), Lines{});
    EXPECT_EQ(play("suspend 2999\n"), Lines{});
    EXPECT_EQ(play("+1\n"), hintAt("4201.000", "") + startAt("4201.000"));
    play("kelpa pause until 18:00\n");
    EXPECT_EQ(play("suspend 28800\n"), hintAt("4201.000", "") + startAt("4201.000"));
    play("kelpa pause 10m\n");
    EXPECT_EQ(play("clock 600\n").size(), 4U);
}

TEST(TimedPause, EndsAtTheUnlockWhereLockAndUnlockStopAndStartWork) {
    Paused play;
    play("kelpa pause 10m\nlock\n");
    EXPECT_EQ(play("+3600\n"), Lines{});
    EXPECT_EQ(play("unlock\n"), hintAt("3600.000", "") + startAt("3600.000"));
    play("kelpa pause 10m\nlock\n+300\nunlock\n");
    EXPECT_EQ(play("+300\n"), hintAt("4200.000", "") + startAt("4200.000")) << "unlocked before its time";
    play("kelpa pause 10m\nlock\n+900\npref restartTimerAfterAwake false\n");
    EXPECT_EQ(play("unlock\n"), hintAt("5100.000", "") + startAt("5100.000")) << "it was promised";
    play("kelpa pause 10m\nlock\n");
    EXPECT_EQ(play("+600\n"), hintAt("5700.000", "") + startAt("5700.000")) << "nothing stops at a lock now";
}

TEST(TimedPause, EndsWhenAGreetingThatIsOnTheScreenCloses) {
    Paused play(mouseMayRest + "store show_new_day_tip bool true\n");
    play("kelpa pause until tomorrow\nlock\n+35990\n"); // ten seconds before midnight
    play("clock +86400\nkelpa pause until tomorrow\n+5\nunlock\n");
    EXPECT_EQ(play("+5\n"), Lines{}) << "the greeting is there";
    const Lines end = play("+5\n");
    EXPECT_EQ(std::count(end.begin(), end.end(), "36005.000 log info ticktack timer start 1500"), 1);
    EXPECT_EQ(std::count(end.begin(), end.end(), "36005.000 hint \"\""), 1);
    play("kelpa pause 10m\nlock\n+600\nclock 86400\n");
    play("unlock\n+9\n");
    EXPECT_FALSE(AppState::manualPause()) << "it ended at the unlock, and the greeting is followed by work";
    play("+1\n");
    EXPECT_EQ(play.desk.statusBar.title, "25:00");
    EXPECT_TRUE(AppState::working());
}

TEST(TimedPause, AWorkPeriodThatNobodySeesBeginStopsAfterFiveMinutes) {
    Paused play("");
    play("kelpa pause 1h\n+3500\nactivity\n");
    EXPECT_EQ(play("+100\n"), hintAt("3600.000", "") + startAt("3600.000"));
    EXPECT_EQ(play("+299.999\n"), Lines{}) << "the launch as well gives five whole minutes";
    EXPECT_EQ(play("+0.001\n+9999\n"), stopAt("3900.000"));
    play("activity\n");
    EXPECT_TRUE(AppState::working());
}

TEST(TimedPause, WhereNoMouseCanBeWatchedNothingStopsIt) {
    Play play({"title", "window", "count", "break", "app", "set"});
    play.desk.events.activityWatch = ActivityMonitor::Watch::None;
    play("launch\nkelpa pause 1h\n+3600\n");
    EXPECT_EQ(play("+1499\n"), Lines{});
}

} // namespace
} // namespace kelpa::test
