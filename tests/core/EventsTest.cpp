#include "app/AppState.h"
#include "prefs/BreakStyle.h"
#include "tests/core/Play.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kelpa::test {
namespace {

const std::string greets = "store show_new_day_tip bool true\n";
const std::string minuteOfWork = "store pref.work.time int 1\n";

TEST(MouseIdle, StopsTheCycleAfterFiveMinutesAndTheNextMoveStartsItAfresh) {
    Play play({"title"});
    play("launch\n");
    EXPECT_EQ(play("+299.999\n"), (Lines{}));
    EXPECT_EQ(play("+0.001\n+5000\n"), stopAt("300.000"));
    EXPECT_FALSE(AppState::working());
    EXPECT_EQ(play("activity\n"), startAt("5300.000"));
    EXPECT_EQ(play("+300\n"), stopAt("5600.000"));
}

TEST(MouseIdle, EveryMovePutsTheEndOffAndLeavesTheCountdownAlone) {
    Play play({"title"});
    play("launch\n+0.5\n");
    for (int i = 0; i < 1000; ++i)
        play("activity\n+1\n");
    EXPECT_EQ(play.desk.statusBar.title, "08:20");
    EXPECT_EQ(play("+298.999\n"), (Lines{}));
    EXPECT_EQ(play("+0.001\n"), stopAt("1299.500"));
}

TEST(MouseIdle, SwitchedOffItIgnoresTheMouseButACheckUnderWayStillStopsOnce) {
    Play play({"title"});
    play("launch\n+100\npref stopTimerAfterMouseStop false\n");
    EXPECT_EQ(play("activity\n+100\nactivity\n+1000\n"), stopAt("300.000"));
    EXPECT_EQ(play("activity\n+1000\n"), (Lines{}));
    EXPECT_EQ(play("pref stopTimerAfterMouseStop true\nactivity\n+300\n"),
              (Lines{"2200.000 set stop_timer_after_mouse_stop bool true"} + startAt("2200.000") +
               stopAt("2500.000")));
}

TEST(MouseIdle, APauseByHandIsNotEndedByTheMouse) {
    Play play({"title"});
    play("launch\n+10\nmenu pause\n");
    // The check still runs, and stops what stands still already.
    EXPECT_EQ(play("activity\n+300\nactivity\n"), stopAt("310.000"));
    EXPECT_FALSE(AppState::working());
    EXPECT_EQ(play("menu pause\n"), startAt("310.000"));
}

TEST(MouseIdle, ResumedByHandWorkRunsUntilTheCheckThatTheLastMoveArmed) {
    Play play({"title"});
    play("launch\n+300\n");
    // Stopped by the rule, the menu's line still says so: the first click pauses by hand, the second resumes.
    EXPECT_EQ(play("menu pause\n+10\nmenu pause\n+1000\n"), stopAt("300.000") + startAt("310.000"));
}

TEST(MouseIdle, ABreakCallsTheCheckOffAndRunsToItsEndUnderAMouseThatOnlyCrossesIt) {
    Play play({"title", "count", "window", "app", "break"});
    play(minuteOfWork + "store pref.short.break.times int 1\nlaunch\n+50\nactivity\n+10\n");
    // What is done in the break windows is nothing that the desk tells of.
    EXPECT_EQ(play("+900\n"),
              (Lines{"960.000 log info ticktack timer timesup for 900", "960.000 log info skip break view"} +
               startAt("960.000", 60)));
}

TEST(MouseIdle, AMoveElsewhereDuringABreakArmsTheCheckAnewAndThatStopsTheBreak) {
    Play play({"title", "window", "app", "break", "count"});
    play(minuteOfWork + "store pref.short.break.times int 1\nlaunch\n+70\nactivity\n");
    EXPECT_EQ(play("+2000\n"), stopAt("370.000"));
    EXPECT_EQ(AppState::breakState().timeString.value(), "09:50");
    // The next move starts work beneath the break that stands still.
    EXPECT_EQ(play("activity\n"), startAt("2070.000", 60));
    EXPECT_TRUE(play.desk.windows.breakScreen(1));
}

TEST(MouseIdle, ACheckThatHasBegunWhenABreakBeginsStillStops) {
    Play play({"title", "window", "app", "item"});
    play("store pref.work.time int 5\nstore custom_break_prompt bool true\nlaunch\n+299\n");
    // The check was armed before the tick of the same instant; its stop comes after everything that was due.
    const Lines end = play("+1\n+10\n");
    EXPECT_EQ(end.front(), "300.000 log info ticktack timer timesup for 300");
    EXPECT_EQ(end.back(), "300.000 log info ticktack timer stoped 1.0");
    EXPECT_EQ(AppState::breakState().timeString.value(), "05:00");
}

TEST(MouseIdle, TheNewDayBreakLeavesTheCheckPending) {
    Play play({"title", "window", "app", "break", "count", "set"});
    play(greets + "launch\n+100\nlock\nsuspend 86400\n+5\nunlock\n");
    EXPECT_EQ(play("+10\n+185\n"),
              (Lines{"115.000 log info ticktack timer timesup for 10", "115.000 log info skip break view"} +
               startAt("115.000") + stopAt("300.000")));
}

TEST(MouseIdle, WhereNothingTellsOfActivityNothingStops) {
    Play play({"title"});
    play.desk.events.activityWatch = ActivityMonitor::Watch::None;
    play("launch\n");
    EXPECT_EQ(play("+1499\n"), (Lines{}));
    // A source that appears later counts; one that goes takes the pending check along.
    play.desk.events.activity();
    play.desk.events.loseActivity();
    EXPECT_EQ(play("+0.5\n"), (Lines{}));
    EXPECT_FALSE(AppState::mouseMoveEventItem()->pending());
    EXPECT_TRUE(AppState::working());
}

TEST(Lock, StopsTheCycleAndUnlockStartsItFromItsFullLength) {
    Play play({"title", "window", "app"});
    play("launch\n+100\n");
    EXPECT_EQ(play("lock\n+50\nunlock\n"), stopAt("100.000") + startAt("150.000"));
    EXPECT_EQ(play.desk.statusBar.title, "25:00");
}

TEST(Lock, LeavesTheCountdownRunningWhereRestartingIsOff) {
    Play play({"title"});
    play(mouseMayRest + greets + "store restart_timer_after_awake bool false\nlaunch\n+99.5\n");
    EXPECT_EQ(play("lock\n+100.5\nunlock\n+100\n"),
              (Lines{"99.500 set last_weakup_timestamp real 1767603699.5"}));
    EXPECT_EQ(play.desk.statusBar.title, "20:00");
}

TEST(Lock, AtABreakAndPausedByHandClosesTheWindowsAndUnlockStartsNothing) {
    Play play({"title", "count", "break", "item", "app"});
    play(minuteOfWork + mouseMayRest + "launch\n+70\nmenu pause\n");
    EXPECT_EQ(play("lock\n+5\nunlock\n+100\n"), (Lines{"70.000 log info ticktack timer stoped 1.0",
                                                       "70.000 window closing 1", "72.000 window closed 1"}));
}

TEST(NewDay, TheFirstUnlockOfADayIsGreetedForTenSecondsAndThenWorkBegins) {
    Play play({"title", "count"});
    play("start 2026-11-23T18:00:00\n" + greets + mouseMayRest + "launch\n+10\n");
    EXPECT_EQ(play("lock\n+5\n"),
              (Lines{"10.000 set last_weakup_timestamp real 1795456810.0"} + stopAt("10.000") +
               Lines{"10.000 window made 1 0,0 1920x1080 level=25", "10.000 window closing 1",
                     "10.000 app deactivate", "12.000 window closed 1"}));
    const Lines greeting = play("suspend 50400\nunlock\n");
    EXPECT_EQ(
        (Lines{greeting.begin() + 1, greeting.end()}),
        (Lines{"15.000 break skip yes", "15.000 window show 1", "15.000 app activate",
               "15.000 log info ticktack timer stoped 1.0", "15.000 log info ticktack timer start 10"}));
    const auto known = newDayPrompts(BreakStyle::default_);
    const std::string prompt = AppState::promptState().prompt.value();
    EXPECT_NE(std::find(known.begin(), known.end(), prompt), known.end()) << prompt;
    EXPECT_EQ(play("+10\n+1\n"),
              (Lines{"25.000 log info ticktack timer timesup for 10", "25.000 log info skip break view",
                     "25.000 window closing 1", "25.000 app deactivate"} +
               startAt("25.000")));
}

TEST(NewDay, IsGreetedWhateverTheRestartSettingAndSkipEndsIt) {
    Play play({"title", "count", "set", "item", "break"});
    play(greets + mouseMayRest +
         "store restart_timer_after_awake bool false\nstore custom_break_prompt bool true\n"
         "store break_style int 2\nstore new_day_break_prompt_list_2 list [\"mine\"]\nlaunch\n");
    EXPECT_EQ(
        play("unlock\n+3\nskip 1\n"),
        (Lines{"0.000 window made 1 0,0 1920x1080 level=25", "0.000 window show 1", "0.000 app activate",
               "0.000 log info ticktack timer stoped 1.0", "0.000 log info ticktack timer start 10",
               "3.000 log info skip break view", "3.000 window closing 1", "3.000 app deactivate",
               "3.000 log info ticktack timer stoped 1.0", "3.000 log info ticktack timer start 1500"}));
    const auto known = newDayPrompts(BreakStyle::struggle);
    const std::string prompt = AppState::promptState().prompt.value();
    EXPECT_NE(std::find(known.begin(), known.end(), prompt), known.end()) << prompt;
}

TEST(NewDay, AMoveThatTheGreetingDoesNotCoverStartsWorkBeneathIt) {
    Play play({"title", "set", "item", "break", "window", "app"});
    play(greets + "launch\nlock\nsuspend 86400\nunlock\n+3\n");
    EXPECT_EQ(play("activity\n"), (Lines{"3.000 log info ticktack timer stoped 1.0",
                                         "3.000 log info ticktack timer start 1500"}));
    EXPECT_EQ(play("+100\n"), (Lines{}));
    EXPECT_EQ(AppState::breakState().timeString.value(), "00:07");
}

/// The lengths of the breaks that follow, one a minute of work.
std::string breaks(Play& play, int count) {
    std::string lengths;
    for (int i = 0; i < count; ++i)
        for (const std::string& line : only(play("+60\nskip 1\n"), {"break skip"}))
            lengths += line.ends_with("yes") ? 's' : 'L';
    return lengths;
}

TEST(NewDay, EveryUnlockStartsTheRoundAfreshWhileTheTipIsOn) {
    Play play({"title", "count"});
    play(minuteOfWork + mouseMayRest + greets +
         "store force_long_break bool true\nstore pref.short.break.times int 3\nlaunch\n");
    EXPECT_EQ(breaks(play, 2), "ss");
    play("lock\nunlock\n"); // the same day
    EXPECT_EQ(breaks(play, 3), "ssL");
}

TEST(NewDay, NoUnlockTouchesTheRoundWhileTheTipIsOff) {
    Play play({"title", "count"});
    play(minuteOfWork + mouseMayRest +
         "store force_long_break bool true\nstore pref.short.break.times int 3\nlaunch\n");
    EXPECT_EQ(breaks(play, 2), "ss");
    const Lines lines = play("lock\nsuspend 86400\nunlock\n");
    EXPECT_EQ(AppState::prefState().lastWeakupTimestamp(), 0.0);
    EXPECT_EQ(lines.back(), "120.000 item pause stop.circle \"- Stop -\"");
    EXPECT_EQ(breaks(play, 1), "L");
}

const std::string water = "start 2026-11-23T10:00:00\nstore pref.water.enable bool true\n"
                          "store pref.water.finished int 900\n" +
                          mouseMayRest;
const std::string drankTenMinutesAgo = "store pref.water.lastShowDate real 1795427400\n";

TEST(WaterDay, AnUnlockOnTheSameDayLeavesItAlone) {
    Play play({"title", "log", "count"});
    play(water + drankTenMinutesAgo + "launch\n");
    EXPECT_EQ(play("lock\nsuspend 3600\nunlock\n").back(), "0.000 item pause stop.circle \"- Stop -\"");
    EXPECT_EQ(AppState::waterState().finished(), 900);
}

TEST(WaterDay, SwitchedOffItKeepsItsTotal) {
    Play play({"title", "log", "count", "window", "app"});
    play(water + "launch\npref enable false\n");
    play.desk.store.put("pref.water.finished", std::int64_t{900});
    EXPECT_EQ(play("lock\nsuspend 86400\nunlock\n").back(), "0.000 item pause stop.circle \"- Stop -\"");
    EXPECT_EQ(AppState::waterState().finished(), 900);
}

TEST(WaterDay, BeginsAlsoBehindAPauseAndWithEverythingElseSwitchedOff) {
    Play play({"title", "log", "count", "window", "app"});
    play(water + drankTenMinutesAgo + "store restart_timer_after_awake bool false\nlaunch\nmenu pause\n");
    EXPECT_EQ(play("lock\nsuspend 86400\nunlock\n"),
              (Lines{"0.000 set pref.water.lastShowDate real 1795514400.0",
                     "0.000 set pref.water.finished int 0", "0.000 item water \"Water (0% )\"",
                     "0.000 water finished 0", "0.000 water cancelled", "0.000 water armed 900"}));
}

TEST(Night, LockedAndAsleepUntilTheMorning) {
    Play play({"title", "count", "item", "break"});
    play("start 2026-11-23T17:55:00\nzone Europe/Berlin\n" + greets +
         "store pref.water.enable bool true\nstore pref.water.finished int 1200\n"
         "store pref.water.lastShowDate real 1795452000\nlaunch\n+240\nactivity\n+60\n");
    // Locked at six, asleep ten seconds later, back at eight: the clock of the countdown stood still.
    play("lock\n+10\nsuspend 50390\n");
    EXPECT_EQ(
        play("unlock\n+3\n"),
        (Lines{"310.000 window show 1", "310.000 app activate", "310.000 log info ticktack timer stoped 1.0",
               "310.000 log info ticktack timer start 10", "310.000 window closing Water Reminder",
               "310.000 app deactivate", "310.000 set pref.water.lastShowDate real 1795503600.0",
               "310.000 set pref.water.finished int 0", "310.000 water finished 0", "310.000 water armed 900",
               "312.000 window closed Water Reminder"}));
    EXPECT_EQ(play("+7\n").back(), "320.000 log info ticktack timer start 1500");
    EXPECT_EQ(play.desk.statusBar.title, "25:00");
}

TEST(Clock, StepsAndZonesMoveNeitherTheCountdownNorTheWaitForTheMouse) {
    Play play({"title"});
    play("start 2026-03-29T01:58:00\nzone Europe/Berlin\nlaunch\n");
    EXPECT_EQ(play("+100\nclock +3600\n+50\nclock -86400\nzone Asia/Tokyo\nsuspend 28800\n+149.999\n"),
              (Lines{}));
    EXPECT_EQ(play.desk.statusBar.title, "20:01");
    EXPECT_EQ(play("+0.001\n"), stopAt("300.000"));
}

} // namespace
} // namespace kelpa::test
