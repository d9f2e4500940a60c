#include "app/AppState.h"
#include "base/Text.h"
#include "tests/core/Play.h"
#include "timer/TicktackController.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kelpa::test {
namespace {

constexpr const char* minuteCycle = "store pref.work.time int 1\n"
                                    "store pref.break.time int 5\n"
                                    "store pref.long.break.time int 1\n"
                                    "store custom_break_prompt bool true\n"
                                    "store break_prompt_text text rest\n";

TEST(Cycle, TheLaunchTakesItsStepsInOrder) {
    EXPECT_TRUE(AppState::working());
    EXPECT_FALSE(AppState::manualPause());
    Play play;
    play.journal.hearAsides();
    EXPECT_EQ(
        play("start 2026-11-23T10:00:00\nstore pref.water.enable bool true\n"
             "store auto_check_update bool false\nstore break_prompt_text text rest\nlaunch\n"),
        (Lines{"0.000 log info ~~~~~~~~~~~~~~~~~~~~~~~~hello Kelpa~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~",
               "0.000 log info ticktack timer stoped 1.0", "0.000 log info ticktack timer start 1500",
               "0.000 item water inserted 3 \"Water (0% )\"", "0.000 item pause stop.circle \"- Stop -\"",
               "0.000 updater by hand", "0.000 updater every 43200.0", "0.000 updater with profile",
               "0.000 updater start", "0.000 set pref.water.lastShowDate real 1795428000.0",
               "0.000 set pref.water.finished int 0", "0.000 item water \"Water (0% )\"",
               "0.000 water finished 0", "0.000 water armed 900", "0.000 item created kelpa",
               "0.000 title 25:00", "0.000 observe lock", "0.000 observe activity",
               "0.000 log info sandbox home path: /home/desk/app.orvane.Kelpa"}));
    EXPECT_EQ(play.time.queueLabels(), (Lines{"app.orvane.Kelpa.system.event.queue"}));
    EXPECT_EQ(AppState::promptState().prompt.value(), "rest");
    EXPECT_FALSE(AppState::promptState().showSkipButton.value());
}

TEST(Cycle, WhatABreakShowsIsLoadedTenSecondsAheadAndOnlyThen) {
    Play play({"title", "count", "log", "item", "app", "break"});
    play.journal.hearAsides();
    play(std::string(minuteCycle) + "launch\n+49.999\n");
    EXPECT_EQ(play("+0.001\n+9.999\n"), (Lines{"50.000 window prepare"}));
    play("+10\n");
    EXPECT_EQ(play("store pref.work.time int 0\nmenu pause\nmenu pause\n"), (Lines{"69.999 window prepare"}));
}

TEST(Cycle, AWorkPeriodTurnsIntoABreakAndBackIntoWork) {
    Play play;
    play(std::string(minuteCycle) + "launch\n+59\n");
    EXPECT_EQ(play("+1\n"),
              (Lines{"60.000 title 00:00", "60.000 log info ticktack timer timesup for 60",
                     "60.000 window made 1 0,0 1920x1080 level=25", "60.000 window show 1",
                     "60.000 app activate", "60.000 break skip yes", "60.000 break prompt \"rest\"",
                     "60.000 log info ticktack timer stoped 1.0", "60.000 count 00:05",
                     "60.000 log info ticktack timer start 5", "60.000 title \"\""}));
    play("+4\n");
    EXPECT_EQ(play("+3\n"),
              (Lines{"65.000 count 00:00", "65.000 log info ticktack timer timesup for 5",
                     "65.000 log info skip break view", "65.000 window closing 1", "65.000 app deactivate",
                     "65.000 log info ticktack timer stoped 1.0", "65.000 title 00:00", "65.000 title 01:00",
                     "65.000 log info ticktack timer start 60", "65.000 item pause stop.circle \"- Stop -\"",
                     "66.000 title 00:59", "67.000 window closed 1", "67.000 title 00:58"}));
}

/// What the log says of periods that ran out, as "seconds: length".
Lines ends(const Lines& journal) {
    Lines found;
    for (const std::string& line : journal) {
        const auto at = line.find(" log info ticktack timer timesup for ");
        if (at != std::string::npos)
            found.push_back(line.substr(0, at) + ": " + line.substr(line.rfind(' ') + 1));
    }
    return found;
}

Lines expectedEnds(std::int64_t until, std::int64_t work, std::int64_t shortBreak, std::int64_t longBreak,
                   int cycle) {
    Lines expected;
    std::int64_t now = 0;
    for (int breaks = 1;; ++breaks) {
        for (const std::int64_t length : {work, breaks % cycle == 0 ? longBreak : shortBreak}) {
            now += length;
            if (now > until)
                return expected;
            expected.push_back(std::to_string(now) + ".000: " + std::to_string(length));
        }
    }
}

TEST(Cycle, TheLastBreakOfEachCycleIsLong) {
    for (const int cycle : {1, -1, 3})
        alone([cycle] {
            Play play({"title", "count"});
            play(mouseMayRest + "store pref.short.break.times int " + std::to_string(cycle) +
                 "\nstore pref.break.time int 20\nstore pref.long.break.time int 5\nlaunch\n");
            EXPECT_EQ(ends(play("+20000\n")), expectedEnds(20000, 1500, 20, 300, cycle)) << cycle;
        });
}

TEST(Cycle, ForcedLongBreaksOfferNoSkipButTheNoticeEndsThem) {
    Play play({"title", "count", "item", "window"});
    play(std::string(minuteCycle) +
         "store pref.short.break.times int 3\nstore force_long_break bool true\nlaunch\n+130\n");
    EXPECT_EQ(play("+60\n"), (Lines{"190.000 log info ticktack timer timesup for 60", "190.000 app activate",
                                    "190.000 break skip no", "190.000 break prompt \"rest\"",
                                    "190.000 log info ticktack timer stoped 1.0",
                                    "190.000 log info ticktack timer start 60"}));
    EXPECT_EQ(play("skip 1\n"), (Lines{"190.000 refused skip"}));
    // A face that is a moment behind may offer it still.
    play.desk.windows.breakScreen(1)->client.skipPressed();
    EXPECT_EQ(play.journal.lines().back(), "190.000 refused skip");
    EXPECT_EQ(
        play("notice 1\n"),
        (Lines{"190.000 log info Click new feature: Water Reminder", "190.000 log info skip break view",
               "190.000 app deactivate", "190.000 log info ticktack timer stoped 1.0",
               "190.000 log info ticktack timer start 60", "190.000 settings", "190.000 app activate"}));
}

TEST(Cycle, TwoScreensHearOfTheEndTwice) {
    Play play({"title", "count", "item"});
    play(std::string("screens 1 2\n") + minuteCycle + "launch\n+64\n");
    EXPECT_EQ(
        play("+1\n"),
        (Lines{"65.000 log info ticktack timer timesup for 5", "65.000 log info skip break view",
               "65.000 window closing 1", "65.000 window closing 2", "65.000 app deactivate",
               "65.000 log info ticktack timer stoped 1.0", "65.000 log info ticktack timer start 60",
               "65.000 log info skip break view", "65.000 app deactivate",
               "65.000 log info ticktack timer stoped 1.0", "65.000 log info ticktack timer start 60"}));
    EXPECT_EQ(play("+2\n"), (Lines{"67.000 window closed 1", "67.000 window closed 2"}));
    EXPECT_EQ(ends(play("+57.999\n")), Lines{});
    EXPECT_EQ(ends(play("+0.001\n")), (Lines{"125.000: 60"}));
}

TEST(Cycle, SkipOnEitherScreenEndsTheBreakEverywhere) {
    Play play({"title", "count", "item", "log"});
    play(std::string("screens 5 9\n") + minuteCycle + "launch\n+61\n");
    BreakScreenClient& late = play.desk.windows.breakScreen(9)->client;
    EXPECT_EQ(play("skip 9\n"),
              (Lines{"61.000 window closing 5", "61.000 window closing 9", "61.000 app deactivate"}));
    EXPECT_EQ(play("+3\nskip 9\n"),
              (Lines{"63.000 window closed 5", "63.000 window closed 9", "64.000 refused skip"}));
    late.skipPressed();
    late.noticeTapped();
    EXPECT_EQ(play.journal.lines().back(), "64.000 refused skip");
}

TEST(Cycle, PauseStopsWorkWhereItIsAndResumingStartsAfresh) {
    Play play;
    play(mouseMayRest + "launch\n+100\n");
    EXPECT_EQ(play("menu pause\n+1000\n"), (Lines{"100.000 log info ticktack timer stoped 1.0",
                                                  "100.000 item pause play.circle \"- Wrok -\""}));
    EXPECT_EQ(play("pref workTime 2\n"), (Lines{"1100.000 set pref.work.time int 2"}));
    EXPECT_EQ(play("menu pause\n"),
              (Lines{"1100.000 log info ticktack timer stoped 1.0", "1100.000 title 02:00",
                     "1100.000 log info ticktack timer start 120",
                     "1100.000 item pause stop.circle \"- Stop -\""}));
}

TEST(Cycle, PauseDuringABreakFreezesItAndSkipThenLeavesWorkStopped) {
    Play play({"title", "count"});
    play(std::string(minuteCycle) + "launch\n+62\n");
    EXPECT_EQ(play("menu pause\n+100\n"), (Lines{"62.000 log info ticktack timer stoped 1.0",
                                                 "62.000 item pause play.circle \"- Wrok -\""}));
    EXPECT_EQ(AppState::breakState().timeString.value(), "00:03");
    EXPECT_EQ(play("skip 1\n+100\n"), (Lines{"162.000 log info skip break view", "162.000 window closing 1",
                                             "162.000 app deactivate", "164.000 window closed 1"}));
    EXPECT_FALSE(AppState::working());
}

TEST(Cycle, ResumingDuringABreakWorksBeneathTheScreen) {
    Play play({"title", "count", "item"});
    play(std::string(minuteCycle) + "launch\n+62\nmenu pause\n");
    EXPECT_EQ(
        play("menu pause\n+60\n"),
        (Lines{"62.000 log info ticktack timer stoped 1.0", "62.000 log info ticktack timer start 60",
               "122.000 log info ticktack timer timesup for 60", "122.000 window show 1",
               "122.000 app activate", "122.000 break skip yes", "122.000 break prompt \"rest\"",
               "122.000 log info ticktack timer stoped 1.0", "122.000 log info ticktack timer start 5"}));
}

TEST(Cycle, APeriodOfNothingEndsAtItsFirstTick) {
    Play play({"item", "window", "app"});
    play("store pref.break.time int 0\nstore pref.work.time int 0\nstore custom_break_prompt bool true\n"
         "store break_prompt_text text rest\nstore pref.short.break.times int 2\n");
    const auto launched = play("launch\n");
    EXPECT_EQ(launched[3], "0.000 title 00:00");
    EXPECT_EQ(play("+1\n"),
              (Lines{"1.000 log info ticktack timer timesup for 0", "1.000 break skip yes",
                     "1.000 break prompt \"rest\"", "1.000 log info ticktack timer stoped 1.0",
                     "1.000 count 00:00", "1.000 log info ticktack timer start 0", "1.000 title \"\""}));
    EXPECT_EQ(ends(play("+1\n")), (Lines{"2.000: 0"}));
}

TEST(Cycle, AfterTimesUpACountdownStaysAtZeroAndIsQuiet) {
    Play play({"item", "window", "app", "title"});
    play("launch\n");
    // No window was made yet, so that nobody hears of this break's end and nothing follows it.
    TicktackController::break_(2);
    EXPECT_EQ(play("+4\n"),
              (Lines{"1.000 count 00:01", "2.000 count 00:00", "2.000 log info ticktack timer timesup for 2",
                     "3.000 count 00:00", "4.000 count 00:00"}));
    TicktackController::stop();
    EXPECT_EQ(play("+4\n"), Lines{});
    EXPECT_TRUE(AppState::breakState().timesUp.value());
}

TEST(Cycle, ASettingWithWhichItCannotGoOnIsNamedAndEndsTheProgram) {
    struct End {
        std::string script, second, setting, fatal;
    };
    const End all[] = {
        {"launch\n+1499\nstore pref.short.break.times int 0\n+1\n", "1500.000", "pref.short.break.times is 0",
         "1500.000 fatal Division by zero in remainder operation"},
        {"store pref.work.time int 153722867280912931\nlaunch\n", "0.000",
         "pref.work.time is 153722867280912931", "0.000 fatal Integer overflow in multiplication"},
        // Its turn comes after a short one.
        {"store pref.long.break.time int -153722867280912931\nlaunch\n+3300\n", "3300.000",
         "pref.long.break.time is -153722867280912931", "3300.000 fatal Integer overflow in multiplication"},
        // Without a screen nobody hears that the time is up.
        {"store pref.break.time int -9223372036854775805\nscreens\nlaunch\n+1504\n", "1500.000",
         "pref.break.time is -9223372036854775805", "1504.000 fatal Integer overflow in subtraction"},
        {"store pref.break.time int -9223372036854775808\nlaunch\n+1501\n", "1500.000",
         "pref.break.time is -9223372036854775808", "1501.000 fatal Integer overflow in subtraction"}};
    for (const End& end : all)
        alone([&end] {
            Play play({"title", "count"});
            EXPECT_THROW(play(mouseMayRest + "store pref.short.break.times int 2\n" + end.script),
                         desk::FatalEnd);
            const Lines told = only(play.journal.lines(), {" log error ", " fatal "});
            EXPECT_EQ(told, (Lines{end.second + " log error stored " + end.setting +
                                       ", with which the cycle cannot go on",
                                   end.fatal}));
        });
}

TEST(Cycle, PromptsComeFromTheStyleEachPeriodAnewNeverFromTheEditedLists) {
    Play play({"title", "count", "log", "item", "window", "app"});
    play("store pref.work.time int 1\nstore break_style int 2\nlaunch\nstyle reset\nstyle add mine\n");
    std::vector<std::string> texts;
    for (const std::string& line : play("+200000\n"))
        if (const auto at = line.find("break prompt \""); at != std::string::npos)
            texts.push_back(line.substr(at + 14, line.size() - at - 15));
    const auto known = prompts(BreakStyle::struggle);
    ASSERT_GT(texts.size(), 350U);
    for (const auto& text : texts)
        EXPECT_NE(std::find(known.begin(), known.end(), text), known.end()) << text;
    for (const auto& text : known)
        EXPECT_NEAR(static_cast<double>(std::count(texts.begin(), texts.end(), text)),
                    static_cast<double>(texts.size()) / static_cast<double>(known.size()),
                    static_cast<double>(texts.size()) / 20);
}

} // namespace
} // namespace kelpa::test
