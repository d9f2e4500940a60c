#include "app/AppState.h"
#include "tests/core/Play.h"
#include "tests/support/Files.h"
#include "ui/WindowController.h"
#include "water/PrefWaterView.h"
#include "water/WaterDates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>

namespace kelpa::test {
namespace {

const PrefWaterState& water() {
    return AppState::waterState();
}

/// A desk on a Monday with the reminder on and the last answer some seconds into that day.
std::string at(const std::string& now, double lastAnswerToday) {
    // 2026-11-23T00:00:00 UTC
    return "start 2026-11-23T" + now +
           "\nstore pref.water.enable bool true\nstore pref.water.lastShowDate real " +
           std::to_string(1795392000.0 + lastAnswerToday) + "\n";
}

constexpr double hour = 3600;
constexpr const char* timing = "store pref.water.mode int 1\n";

TEST(WaterDates, KeepTheirTextsApartFromTheLocale) {
    EXPECT_EQ(dateText(Date{1795392000.5}), "1795392000.5");
    EXPECT_EQ(dateFromText("1795392000.5"), Date{1795392000.5});
    for (const char* text : {"", "soon", "1,5", "1.5 ", "nan"})
        EXPECT_EQ(dateFromText(text), Date{0}) << text;
    EXPECT_EQ(timePointsText({Date{978307200}, Date{978307201.5}}), "[0,1.5]");
    EXPECT_EQ(timePointsFromText(" [ 1.5 , 0, 15e-1, 0.15E+1 ] "),
              (std::set{Date{978307200}, Date{978307201.5}}));
    EXPECT_EQ(timePointsFromText("[]"), std::set<Date>{});
    for (const char* text : {"", "1", "[1,]", "[,1]", "[1 2]", "[01]", "[+1]", "[.5]", "[1.]", "[1]x",
                             "[\"1\"]", "[null]", "[[1]]", "{\"a\":1}", "[1e999]", "[nan]", "[1", "[0x1]"})
        EXPECT_EQ(timePointsFromText(text), std::nullopt) << text;
}

TEST(WaterState, AFreshAccountHasTheDefaults) {
    Play play;
    play("start 2026-11-23T10:00:00\nzone Europe/Berlin\nlaunch\n");
    const auto local = [&](Date date) { return play.desk.clock.civil(date); };
    EXPECT_FALSE(water().enable());
    EXPECT_EQ(water().target(), 1500);
    EXPECT_EQ(water().mode(), WaterMode::interval);
    EXPECT_EQ(local(water().intervalStartDate()), (CivilTime{2026, 11, 23, 7, 0, 0}));
    EXPECT_EQ(local(water().intervalEndDate()), (CivilTime{2026, 11, 23, 20, 0, 0}));
    EXPECT_EQ(water().selectedInterval(), 15);
    EXPECT_EQ(water().selectedTimings().size(), 11U);
    EXPECT_EQ(local(*water().selectedTimings().begin()).hour, 9);
    EXPECT_EQ(water().finished(), 0);
    EXPECT_EQ(water().lastSelectedAmount(), 150);
    EXPECT_TRUE(water().isNewDay());
}

TEST(WaterState, ReadsWhatItCannotUseAsAbsentAndSaysSoOnce) {
    Play play({"title", "item"});
    play("start 2026-11-23T10:00:00\nstore pref.water.mode int 7\nstore pref.water.target int 0\n"
         "store pref.water.selectedTimings text []\nstore pref.water.interval.start real 5\n"
         "store pref.water.interval.end text whenever\nlaunch\n");
    EXPECT_EQ(water().mode(), WaterMode::interval);
    EXPECT_EQ(water().target(), 1500);
    EXPECT_EQ(water().selectedTimings().size(), 11U);
    EXPECT_EQ(play.desk.clock.civil(water().intervalStartDate()).hour, 7);
    EXPECT_EQ(water().intervalEndDate(), Date{0});
    (void)water().target();
    const auto& lines = play.journal.lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(),
                         "0.000 log warning stored water target is below 1, the default one is used"),
              1);
}

TEST(WaterPanel, PlansAnewOnlyForWhatItHasNotSeenYet) {
    Play play({"title", "item", "window", "app", "set"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "launch\nmenu water\n+0.5\n");
    const auto* panel = play.desk.windows.waterPanel();
    ASSERT_NE(panel, nullptr);
    const std::string same =
        "pref mode interval\npref selectedInterval 15\npref intervalStartDate 07:00\n"
        "pref intervalEndDate 20:00\npref selectedTimings 09:00 10:00 11:00 12:00 13:00 14:00 "
        "15:00 16:00 17:00 18:00 19:00\n";
    EXPECT_EQ(play(same), Lines{});
    play("+0.5\n");
    EXPECT_EQ(panel->counting.remaining, "04:59") << "the phase of its count is the one that it had";
    EXPECT_EQ(play("store pref.water.selectedInterval int 30\npref selectedInterval 30\n"), Lines{})
        << "the reminder is planned by the pane, which another program has forestalled";
    EXPECT_EQ(panel->counting.remaining, "19:59") << "the panel had seen the old one";
    play("pref intervalEndDate 09:00\n");
    EXPECT_EQ(play("pref intervalEndDate 09:00\npref selectedInterval 30\n"), Lines{});
    EXPECT_EQ(play("pref selectedInterval 45\n").back(), "1.000 log info Not in work time");
    play("water skip\n+3\nstore pref.water.interval.end absent\nmenu water\n");
    EXPECT_EQ(play("pref intervalEndDate 20:00\n"), Lines{}) << "it saw that when it appeared";
}

TEST(WaterState, ReadsWhatNoReminderCanBeFoundWithAsAbsent) {
    Play play({"title", "item", "set", "window", "app"});
    play(at("10:00:00", 9 * hour + 50 * 60) +
         "store pref.water.selectedInterval int 9223372036854775807\n"
         "store pref.water.interval.start text -1e300\nstore pref.water.interval.end text 9.3e18\nlaunch\n");
    EXPECT_EQ(water().nextReminder(), 300);
    EXPECT_TRUE(water().inWorkTime());
    play("store pref.water.selectedInterval int -9223372036854775808\n"
         "store pref.water.lastShowDate real -9223372036854775808\n");
    EXPECT_EQ(water().selectedInterval(), 15);
    EXPECT_EQ(water().nextReminder(), 900 - 1795428000);
    EXPECT_EQ(water().lastClickTimestamp(), 0);
    const auto told = [&] { return only(play.journal.lines(), {"log warning"}); };
    const Lines expected = {"0.000 log warning stored pref.water.interval.start is -1e+300, which is out of "
                            "range, the default one is used",
                            "0.000 log warning stored pref.water.interval.end is 9.3e+18, which is out of "
                            "range, the default one is used",
                            "0.000 log warning stored pref.water.selectedInterval is 9223372036854775807, "
                            "which is out of range, the default one is used",
                            "0.000 log warning stored pref.water.selectedInterval is -9223372036854775808, "
                            "which is out of range, the default one is used",
                            "0.000 log warning stored pref.water.lastShowDate is -9.223372036854776e+18, "
                            "which is out of range, the default one is used"};
    EXPECT_EQ(told(), expected);
    play("pref mode timing\nmenu water\npref mode interval\nstore pref.water.mode int 0\n+1800\n");
    EXPECT_EQ(told(), expected) << "one line a run is enough";
}

TEST(WaterState, TakesTheLongestIntervalThatThereIs) {
    Play play({"title", "log", "item", "set", "window", "app"});
    play(at("10:00:00", 10 * hour) + "store pref.water.selectedInterval int 150000000000000000\nlaunch\n");
    EXPECT_EQ(water().selectedInterval(), 150000000000000000);
    EXPECT_EQ(play.journal.lines().back(), "0.000 water armed 9000000000000000000");
}

TEST(WaterState, CountsPastTheTargetAndEndsWhereANumberCannotBe) {
    Play play({"title", "item", "set"});
    play("start 2026-11-23T10:00:00\nlaunch\npref finished 1600\n");
    EXPECT_EQ(water().remain(), -100);
    EXPECT_NEAR(water().finishedPrecent(), 1.0667F, 1e-4F);
    EXPECT_EQ(wholePercentage(0.999F), 99);
    EXPECT_EQ(wholePercentage(1.25F), 125);
    EXPECT_EQ(wholePercentage(-0.015F), -1);
    EXPECT_THROW((void)wholePercentage(std::numeric_limits<float>::infinity()), desk::FatalEnd);
    EXPECT_THROW((void)wholePercentage(1e17F), desk::FatalEnd);
    play("pref finished 9223372036854775807\n");
    EXPECT_THROW(AppState::waterState().updateFinished(), desk::FatalEnd);
}

TEST(WaterSchedule, IntervalCountsFromTheLastAnswer) {
    Play play({"title", "log", "item"});
    EXPECT_EQ(play(at("10:00:00", 9 * hour + 50 * 60) + "launch\n"), (Lines{"0.000 water armed 300"}));
    EXPECT_EQ(play("+299\n"), Lines{});
    EXPECT_EQ(play("+1\n"),
              (Lines{"300.000 window made Water Reminder 1640,750 280x330 level=3",
                     "300.000 window show Water Reminder", "300.000 water tip \"It's time to drink water!\"",
                     "300.000 app activate"}));
}

TEST(WaterSchedule, SecondsAreCutTowardsZero) {
    Play play({"title", "log", "item", "window", "app"});
    play(at("10:00:00", 9 * hour + 50 * 60 + 0.5) + "launch\n");
    EXPECT_EQ(water().nextReminder(), 300);
    play("clock +600\n");
    EXPECT_EQ(water().nextReminder(), -299);
}

TEST(WaterSchedule, WhatWasArmedFiresWhateverHolds) {
    Play play({"title", "log", "item", "set", "water", "app"});
    play(at("19:55:00", 19 * hour + 50 * 60) + "launch\nstore pref.water.enable bool false\n");
    EXPECT_EQ(play("+600\n").back(), "600.000 window show Water Reminder");
}

TEST(WaterSchedule, OutOfHoursThePendingReminderIsCancelled) {
    Play play({"title", "item", "window", "app", "set"});
    play(at("19:55:00", 19 * hour + 50 * 60) + "launch\n+301\nmenu water\n");
    EXPECT_EQ(play("water skip\n+900\n"),
              (Lines{"301.000 water cancelled", "301.000 log info Not in work time"}));
}

TEST(WaterSchedule, AnOverdueReminderFiresAtOnceButNotInsideTheCall) {
    Play play({"title", "log", "item", "app"});
    const auto lines = play(at("10:00:00", 8 * hour) + "launch\n");
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines.front(), "0.000 water armed -6300");
    EXPECT_EQ(lines[2], "0.000 window show Water Reminder");
}

TEST(WaterSchedule, BothEndsOfTheWorkingHoursAreOutside) {
    Play play({"title", "item", "water", "window", "app", "set"});
    play(at("06:59:59", 0) + "launch\n");
    EXPECT_FALSE(water().inWorkTime());
    play("+1\n");
    EXPECT_FALSE(water().inWorkTime());
    play("+1\n");
    EXPECT_TRUE(water().inWorkTime());
    play("clock +46798\n");
    EXPECT_TRUE(water().inWorkTime());
    play("clock +1\n");
    EXPECT_FALSE(water().inWorkTime());
    const auto& lines = play.journal.lines();
    EXPECT_NE(std::find(lines.begin(), lines.end(), "0.000 log info Not in work time"), lines.end());
}

TEST(WaterSchedule, ARangeOverMidnightIsNeverWorkingTime) {
    Play play({"title", "item", "set", "log", "app", "window"});
    play(at("21:00:00", 0) + "launch\npref intervalStartDate 22:00\npref intervalEndDate 06:00\n");
    for (int i = 0; i < 24; ++i) {
        play("clock +3600\n");
        EXPECT_FALSE(water().inWorkTime()) << i;
    }
}

TEST(WaterSchedule, TimePointsAfterNowAndAfterTheLastAnswer) {
    Play play({"title", "item", "log", "window", "app", "set", "water"});
    play(at("09:30:00", 9 * hour + 120) + timing + "launch\npref selectedTimings 13:00 09:00\n");
    EXPECT_EQ(water().nextReminder(), 12600);
    EXPECT_TRUE(water().inWorkTime());
    play("clock +12600\n");
    EXPECT_FALSE(water().inWorkTime());
    EXPECT_EQ(water().nextReminder(), 72000); // tomorrow at nine
    play("clock -14400\n");
    EXPECT_FALSE(water().inWorkTime()); // nine itself
    play("clock +1\n");
    EXPECT_TRUE(water().inWorkTime());
}

TEST(WaterSchedule, TheTimeOfDayOfAnOldAnswerStillCounts) {
    Play play({"title", "item", "log", "window", "app", "set", "water"});
    play(at("10:00:00", -6 * hour) + timing + "store pref.water.enable bool false\nlaunch\n");
    EXPECT_EQ(water().nextReminder(), 9 * 3600); // not 11:00: the answer was at 18:00
    play("store pref.water.lastShowDate real 1795374000\n");
    EXPECT_EQ(water().nextReminder(), 23 * 3600); // after 19:00 itself there is none
    AppState::waterState().reset();
    EXPECT_EQ(water().nextReminder(), 3600);
    play("clock +34200\n");
    EXPECT_EQ(water().nextReminder(), 48600);
    EXPECT_FALSE(water().inWorkTime());
}

TEST(WaterSchedule, ASingleTimePointIsAnEmptyWorkingDay) {
    Play play({"title", "item", "log", "window", "app", "set", "water"});
    play(at("08:00:00", 0) + timing + "launch\npref selectedTimings 09:00\n");
    EXPECT_FALSE(water().inWorkTime());
    EXPECT_EQ(water().nextReminder(), 3600);
    play("clock +3600\n");
    EXPECT_FALSE(water().inWorkTime());
    EXPECT_EQ(water().nextReminder(), 0); // the only point is now: the first is taken and lies no second away
}

TEST(WaterSchedule, APointThatIsAWholeDayPastWaitsOneDayMore) {
    Play play({"title", "item", "log", "window", "app", "set", "water"});
    // The day that summer time lengthens: its midnight is a day gone at eleven in the evening.
    play("start 2026-10-25T23:00:00\nzone Europe/Berlin\nstore pref.water.mode int 1\nlaunch\n"
         "pref selectedTimings 00:00 01:00\n");
    EXPECT_EQ(water().nextReminder(), 86400);
    play("clock +1\n");
    EXPECT_EQ(water().nextReminder(), 86399);
}

TEST(WaterSchedule, DaysOfTwentyThreeAndTwentyFiveHours) {
    Play play({"title", "item", "log", "window", "app", "set", "water"});
    play("start 2026-03-29T01:30:00\nzone Europe/Berlin\nstore pref.water.mode int 1\nlaunch\n"
         "pref selectedTimings 02:30 09:00 20:00\n");
    EXPECT_EQ(water().nextReminder(), 1800); // 02:30 does not exist: three o'clock comes half an hour later
    play("clock +54000\n");                  // half past five in the afternoon
    EXPECT_EQ(water().nextReminder(), 9000);
}

TEST(WaterPanel, DoneAddsAtOnceAndClosesHalfASecondLater) {
    Play play({"title", "log", "item"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "store pref.water.finished int 1000\nlaunch\n+300\n");
    EXPECT_EQ(play("water amount 250\nwater done\n"),
              (Lines{"300.000 set pref.water.lastSelectedAmount int 250",
                     "300.000 set pref.water.finished int 1250", "300.000 water finished 1250",
                     "300.000 set pref.water.lastShowDate real 1795428300.0"}));
    const auto* panel = play.desk.windows.waterPanel();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->progress.finished + " " + panel->progress.percent + " " + panel->progress.remain,
              "1250 83 250");
    EXPECT_EQ(panel->selected, 250);
    EXPECT_EQ(play("+0.499\n"), Lines{});
    EXPECT_EQ(play("+0.001\n"), (Lines{"300.500 window closing Water Reminder", "300.500 app deactivate",
                                       "300.500 water armed 899"}));
    EXPECT_EQ(play("+2\nwater done\nwater amount 60\n"),
              (Lines{"302.500 window closed Water Reminder", "302.500 refused water done",
                     "302.500 refused water amount"}));
}

TEST(WaterPanel, ClosedByHandItGoesAtOnceAndUnanswered) {
    Play play({"title", "log", "item"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "launch\n+300\n");
    WaterPanelClient& client = play.desk.windows.waterPanel()->client;
    client.closePressed();
    for (const auto press :
         {&WaterPanelClient::closePressed, &WaterPanelClient::skipPressed, &WaterPanelClient::donePressed})
        (client.*press)();
    client.amountTapped(250);
    const Lines all = play.journal.lines();
    EXPECT_EQ(
        (Lines{all.end() - 3, all.end()}),
        (Lines{"300.000 app activate", "300.000 window closed Water Reminder", "300.000 app deactivate"}));
}

TEST(WaterPanel, OffersAnAnswerWheneverItIsShownAlsoOnItsWayOut) {
    Play play;
    play(at("10:00:00", 9 * hour + 50 * 60) + "launch\n+300\n");
    const auto* panel = play.desk.windows.waterPanel();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->offers, 1);
    play("water skip\n+1\n");
    EXPECT_EQ(panel->offers, 1);
    WindowController::showWaterView();
    EXPECT_EQ(panel->offers, 2);
}

TEST(WaterPanel, CountsOnlyWhileItShowsAndStopsWhenTheDrinkIsDue) {
    Play play({"title", "log", "item", "app", "set"});
    play(at("10:00:00", 9 * hour + 46 * 60) + "launch\nmenu water\n");
    const auto* panel = play.desk.windows.waterPanel();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->counting.remaining, "01:00");
    EXPECT_EQ(panel->counting.tip, "Next drink in");
    const WaterPanelTexts& texts = panel->texts;
    EXPECT_EQ(texts.finished + " " + texts.percent + " " + texts.remain + " " + texts.wellDone + " " +
                  texts.skip + " " + texts.done + " " + texts.close + " " + texts.cup,
              "Finished/ml % Remain/ml Well Done! Skip Done Close cup.and.saucer.fill");
    std::string amounts;
    for (const WaterAmount& amount : panel->amounts)
        amounts +=
            std::to_string(amount.millilitres) + "=" + amount.text.substr(0, amount.text.find('w')) + " ";
    EXPECT_EQ(amounts, "50=50 100=100 150=150 200=200 250=250 300=300 350=350 400=400 500=500 ");
    EXPECT_EQ(panel->amounts.back().text, "500water.select.amount");
    play("+59\n");
    EXPECT_EQ(panel->counting.remaining, "00:01");
    EXPECT_EQ(play("+1\n"),
              (Lines{"60.000 window show Water Reminder", "60.000 water tip \"It's time to drink water!\""}));
    EXPECT_EQ(play("+100\n"), Lines{});
    play("menu water\n+2\nmenu water\n");
    EXPECT_EQ(panel->counting.remaining, "");
}

TEST(WaterPanel, CountsAnewAfterEachSettingThatMovesTheNextDrinkAndNotAfterTheTarget) {
    Play play({"title", "item", "app", "set", "log"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "launch\nmenu water\n");
    const auto* panel = play.desk.windows.waterPanel();
    // Only counting anew shows that the wall clock went on by ten seconds.
    const auto counts = [&](const char* change) {
        play(std::string("clock +10\npref ") + change + "\n");
        return panel->counting.remaining;
    };
    EXPECT_EQ(counts("target 1600"), "05:00");
    EXPECT_EQ(counts("finished 100"), "05:00");
    EXPECT_EQ(counts("intervalStartDate 07:30"), "04:30");
    EXPECT_EQ(counts("intervalEndDate 19:30"), "04:20");
    EXPECT_EQ(counts("selectedInterval 30"), "19:10");
    EXPECT_EQ(counts("selectedTimings 09:00 11:00"), "19:00");
    EXPECT_EQ(counts("mode timing"), "58:50");
    EXPECT_EQ(counts("target 1700"), "58:50");
}

TEST(WaterPanel, FollowsChangesOfTheSettingsAndSaysWhenItIsOutOfHours) {
    Play play({"title", "item", "app", "set"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "launch\nmenu water\n");
    const auto* panel = play.desk.windows.waterPanel();
    play("pref selectedInterval 60\n+1\n");
    EXPECT_EQ(panel->counting.remaining, "49:59");
    play("pref finished 150\npref target 100\n");
    EXPECT_EQ(panel->progress.remain, "");
    EXPECT_EQ(panel->progress.percent, "150");
    EXPECT_EQ(panel->progress.fraction, 1);
    EXPECT_EQ(play("pref intervalStartDate 11:00\n+5\n"),
              (Lines{"1.000 water tip \"Not in work time!\"", "1.000 log info Not in work time",
                     "1.000 water cancelled"}));
    EXPECT_EQ(panel->counting.remaining, "");
}

TEST(WaterPanel, ANewDayBeginsWithTheShowingAndTheMenuTogglesOneWindow) {
    Play play({"title", "log", "app"});
    play(at("10:00:00", 9 * hour + 59 * 60) + "store pref.water.finished int 900\nlaunch\n+3600\n");
    play("water skip\n+2\nclock +86400\n");
    const auto shown = play("menu water\n");
    EXPECT_EQ(shown[1], "3602.000 set pref.water.finished int 0");
    EXPECT_EQ(shown[4], "3602.000 window show Water Reminder");
    EXPECT_EQ(play("menu water\n+2\n"),
              (Lines{"3602.000 window closing Water Reminder", "3604.000 window closed Water Reminder"}));
}

TEST(WaterPanel, MovesToAnotherScreenWhenItsOwnGoesAndDiesWithoutAny) {
    Play play({"title", "log", "item", "set", "water"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "screens 1 2\nlaunch\nmenu water\n");
    EXPECT_EQ(play("screens 2\n"), Lines{});
    EXPECT_NE(play.desk.windows.waterPanel(), nullptr);
    play("screens\n");
    EXPECT_THROW(WindowController::showWaterView(), desk::FatalEnd);
}

TEST(WaterPanel, StandsInTheCornerOfItsScreenOrWhereItWasDragged) {
    const Screen laptop{1, {1920, 0, 1280, 800}}, alone{1, {0, 0, 1280, 800}}, small{1, {0, 0, 800, 600}};
    const Screen desk{2, {0, 0, 1920, 1080}}, shrunk{2, {0, 0, 1920, 600}};
    Play play({"title", "log", "item", "set", "water"});
    play(at("10:00:00", 9 * hour + 50 * 60) + "launch\n");
    play.journal.hearAsides();
    // Where a deed puts the panel.
    const auto puts = [&play](const std::function<void()>& deed) {
        Lines frames = only(play.during(deed), {" window frame "});
        for (std::string& line : frames)
            line.erase(0, std::string("0.000 window frame Water Reminder ").size());
        return frames;
    };
    const auto shownOn = [&](const std::vector<Screen>& screens) {
        return puts([&] {
            play.desk.windows.arrange(screens);
            WindowController::showWaterView();
        });
    };
    const auto draggedTo = [&](double x, double y) {
        return puts([&] { play.desk.windows.dragPanel({x, y, 280, 330}); });
    };
    EXPECT_EQ(shownOn({laptop, desk}), Lines{}) << "it is made there";
    EXPECT_EQ(shownOn({alone}), Lines{"1000,470 on 1"});
    EXPECT_EQ(shownOn({small}), Lines{"520,270 on 1"});
    EXPECT_EQ(shownOn({laptop, desk}), Lines{"2920,470 on 1"});

    EXPECT_EQ(draggedTo(100, 500), Lines{"100,500 on 2"});
    EXPECT_EQ(shownOn({desk, laptop}), Lines{});
    EXPECT_EQ(shownOn({alone}), Lines{"1000,470 on 1"});
    EXPECT_EQ(shownOn({desk, laptop}), Lines{"100,500 on 2"}) << "its place holds for the run";
    EXPECT_EQ(shownOn({shrunk, laptop}), Lines{"100,20 on 2"}) << "as far from the upper left corner";
    EXPECT_EQ(draggedTo(-500, 500), Lines{}) << "beside all screens is no place";
    EXPECT_EQ(draggedTo(-200, 100), Lines{"-200,100 on 2"});
    EXPECT_EQ(shownOn({desk}), Lines{"-200,580 on 2"}) << "as much of it is seen as where it was dropped";
    EXPECT_EQ(shownOn({{2, {0, 0, 1920, 300}}}), Lines{"1640,-30 on 2"});
}

} // namespace
} // namespace kelpa::test
