#include "app/AppState.h"
#include "app/RemoteControl.h"
#include "history/HistorySums.h"
#include "tests/core/Play.h"
#include "ui/WindowController.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa::test {
namespace {

const std::string kept = "store pref.history.enable bool true\n" + mouseMayRest;
const std::string monday = "start 2026-11-23T09:00:00\n";

/// A desk of which nothing but the history is noted.
struct HistoryPlay : Play {
    HistoryPlay() : Play({"log", "item", "title", "count", "window", "break", "app", "water", "set"}) {}
};

Lines lines(const std::string& script) {
    HistoryPlay play;
    return play(script);
}

TEST(History, IsOffAtFirstAndThenNothingIsKept) {
    EXPECT_EQ(lines(monday + mouseMayRest +
                    "store pref.water.enable bool true\nlaunch\n+1500\nskip 1\n+60\nmenu water\nwater "
                    "done\n+1\nend\n"),
              Lines{});
}

TEST(History, TellsHowWorkEnded) {
    EXPECT_EQ(lines(monday + kept +
                    "launch\n+1500\nskip 1\n+10\nmenu pause\n+100\nmenu pause\n+20\npref workTime 30\n"
                    "+30\nlock\n+100\nunlock\n+40\nend\n"),
              (Lines{"1500.000 history 2026-11 2026-11-23,09:00:00,work,,,1500,,,,,break",
                     "1500.000 history 2026-11 2026-11-23,09:25:00,break,short,300,0,0,due,,,skipped",
                     "1510.000 history 2026-11 2026-11-23,09:25:00,work,,,10,,,,,paused",
                     "1630.000 history 2026-11 2026-11-23,09:26:50,work,,,20,,,,,restarted",
                     "1660.000 history 2026-11 2026-11-23,09:27:10,work,,,30,,,,,locked",
                     "1800.000 history 2026-11 2026-11-23,09:29:20,work,,,40,,,,,quit"}));
}

TEST(History, TellsOfAMouseThatRestedAndOfASleepThatCountsNothing) {
    EXPECT_EQ(lines(monday + "store pref.history.enable bool true\nlaunch\n+100\nsuspend 3600\n+200\n"),
              Lines{"300.000 history 2026-11 2026-11-23,09:00:00,work,,,300,,,,,idle"});
}

TEST(History, TellsHowABreakEndedInOneLineForAllScreens) {
    const std::array<const char*, 3> ends[] = {{"+300\n", "1800", "300,0,due,,,complete"},
                                               {"+7\nskip 2\n", "1507", "7,0,due,,,skipped"},
                                               {"+7\nnotice 1\n", "1507", "7,0,due,,,notice"},
                                               {"+7\nlock\n+60\n", "1507", "7,0,due,,,locked"},
                                               {"+7\nend\n", "1507", "7,0,due,,,quit"}};
    for (const auto& end : ends)
        alone([&end] {
            const auto& [script, second, figures] = end;
            Lines all = lines(monday + "screens 1 2\n" + kept + "launch\n+1500\n" + script);
            std::erase(all, "1507.000 settings");
            EXPECT_EQ(
                all,
                (Lines{"1500.000 history 2026-11 2026-11-23,09:00:00,work,,,1500,,,,,break",
                       second + std::string(".000 history 2026-11 2026-11-23,09:25:00,break,short,300,") +
                           figures}));
        });
}

TEST(History, AGreetingReplacesABreakAndIsOne) {
    EXPECT_EQ(
        lines(monday + kept +
              "store restart_timer_after_awake bool false\nstore show_new_day_tip bool true\n"
              "store pref.short.break.times int 1\nlaunch\n+1500\n+7\nlock\nsuspend 86400\nunlock\n+10\n"),
        (Lines{"1500.000 history 2026-11 2026-11-23,09:00:00,work,,,1500,,,,,break",
               "1507.000 history 2026-11 2026-11-23,09:25:00,break,long,900,7,0,due,,,replaced",
               "1517.000 history 2026-11 2026-11-24,09:25:07,break,newday,10,10,0,due,,,complete"}));
}

TEST(History, WorkThatWasGivenMoreTimeIsOnePeriodAndTheBreakTellsHowOften) {
    HistoryPlay play;
    play(monday + kept + "launch\n+1490\n");
    AppState::breakNotice().giveMore(5);
    play("+250\n");
    AppState::breakNotice().giveMore(5);
    play("+100\n");
    AppState::breakNotice().start();
    EXPECT_EQ(play("+1\n+300\n"),
              (Lines{"1841.000 history 2026-11 2026-11-23,09:00:00,work,,,1841,,,,,break",
                     "2141.000 history 2026-11 2026-11-23,09:30:41,break,short,300,300,2,early,,,complete"}));
}

TEST(History, WorkBeneathABreakIsCountedApartFromIt) {
    // A new length begins work at once; the count of the break on the screen stands still from then on.
    EXPECT_EQ(lines(monday + kept + "launch\n+1500\n+20\npref workTime 30\n+40\nskip 1\n"),
              (Lines{"1500.000 history 2026-11 2026-11-23,09:00:00,work,,,1500,,,,,break",
                     "1560.000 history 2026-11 2026-11-23,09:25:00,break,short,300,20,0,due,,,skipped",
                     "1560.000 history 2026-11 2026-11-23,09:25:20,work,,,40,,,,,restarted"}));
}

TEST(History, TellsOfEachDrinkWithTheTargetOfThatTime) {
    EXPECT_EQ(
        lines(monday + kept +
              "store pref.water.enable bool true\nlaunch\nmenu water\nwater amount 250\nwater done\n+1\n"
              "pref target 2000\nmenu water\nwater done\n+1\nmenu water\nwater skip\n"),
        (Lines{"0.000 history 2026-11 2026-11-23,09:00:00,drink,,,,,,250,1500,drunk",
               "1.000 history 2026-11 2026-11-23,09:00:01,drink,,,,,,250,2000,drunk"}));
}

TEST(History, ALineStandsInTheMonthInWhichItBegan) {
    EXPECT_EQ(lines("start 2026-11-30T23:50:00\n" + kept + "launch\n+1500\n"),
              Lines{"1500.000 history 2026-11 2026-11-30,23:50:00,work,,,1500,,,,,break"});
}

TEST(History, ABreakWithALengthBelowNothingLastsNone) {
    EXPECT_EQ(lines(monday + kept + "store pref.break.time int -5\nlaunch\n+1501\n"),
              (Lines{"1500.000 history 2026-11 2026-11-23,09:00:00,work,,,1500,,,,,break",
                     "1501.000 history 2026-11 2026-11-23,09:25:00,break,short,0,1,0,due,,,complete"}));
}

TEST(History, AClockThatIsSetBackHarmsNothing) {
    EXPECT_EQ(lines("zone Europe/Berlin\n" + kept + "launch\n+1\nclock -86400\n+9\nmenu pause\n"),
              Lines{"10.000 history 2026-01 2026-01-05,09:00:00,work,,,10,,,,,paused"});
}

TEST(History, WhatIsSwitchedOnInTheMiddleIsKeptWholeAndWhatIsSwitchedOffNotAtAll) {
    EXPECT_EQ(lines(monday + mouseMayRest +
                    "launch\n+100\npref keepHistory true\n+10\nmenu pause\nmenu pause\n+5\n"
                    "pref keepHistory false\n+5\nmenu pause\n"),
              Lines{"110.000 history 2026-11 2026-11-23,09:00:00,work,,,110,,,,,paused"});
}

TEST(History, WaitsForRoomOnTheDiskAndLosesNothing) {
    Play play({"item", "title", "count", "window", "break", "app", "water", "set"});
    const auto told = [&](const std::string& script) { return only(play(script), {"history"}); };
    told(monday + kept + "launch\ndisk full\n");
    EXPECT_EQ(told("+10\nmenu pause\nmenu pause\n+20\nmenu pause\nmenu pause\n"),
              Lines{"10.000 log warning the history cannot be written and waits: No space left on device"})
        << "once is enough";
    EXPECT_EQ(told("disk room\n+30\nmenu pause\n"),
              (Lines{"60.000 history 2026-11 2026-11-23,09:00:00,work,,,10,,,,,paused",
                     "60.000 history 2026-11 2026-11-23,09:00:10,work,,,20,,,,,paused",
                     "60.000 history 2026-11 2026-11-23,09:00:30,work,,,30,,,,,paused",
                     "60.000 log info the history is written again"}));
    told("disk full\nmenu pause\n+1\n");
    EXPECT_EQ(told("end\n"),
              (Lines{"61.000 log warning the history cannot be written and waits: No space left on device",
                     "61.000 log error the history loses 1 lines"}));
}

TEST(History, ForgettingDropsAlsoWhatWaits) {
    HistoryPlay play;
    play(monday + kept + "launch\ndisk full\n+10\nmenu pause\n");
    AppState::history().forgetEverything();
    EXPECT_EQ(play("disk room\nmenu pause\n+5\nmenu pause\n"),
              Lines{"15.000 history 2026-11 2026-11-23,09:00:10,work,,,5,,,,,paused"});
    AppState::history().forgetEverything();
    EXPECT_TRUE(play.desk.history.files.empty());
}

TEST(HistoryLines, AreReadAsTheyWereWrittenAndAsASpreadsheetMakesThem) {
    HistoryEntry entry;
    entry.start = {2026, 2, 28, 7, 5, 9};
    entry.event = HistoryEvent::Break;
    entry.kind = BreakKind::Long;
    entry.length = 900;
    entry.seconds = 17;
    entry.postponed = 2;
    entry.early = true;
    entry.end = HistoryEnd::Skipped;
    const std::string line = "2026-02-28,07:05:09,break,long,900,17,2,early,,,skipped";
    EXPECT_EQ(lineOf(entry), line);
    for (const std::string& same : {line, line + "\r",
                                    std::string("2026-02-28,7:05:09,\"break\",\"long\",900,17,"
                                                "2,\"early\",\"\",\"\",\"skipped\"")})
        EXPECT_EQ(entryOf(same), entry) << same;
}

TEST(HistoryLines, ThatAreDamagedOrForeignAreNone) {
    const std::string line = "2026-02-28,07:05:09,drink,,,,,,250,1500,drunk";
    ASSERT_TRUE(entryOf(line));
    for (std::size_t length = 0; length < line.size(); ++length)
        EXPECT_FALSE(entryOf(line.substr(0, length))) << "cut off after " << length;
    for (const char* foreign :
         {"", "\n", "date,time,event,kind,length_s,seconds,postponed,begun,ml,target_ml,end",
          "2026-02-29,07:05:09,drink,,,,,,250,1500,drunk", "2026-02-28,24:00:00,drink,,,,,,250,1500,drunk",
          "2026-257-01,07:05:09,drink,,,,,,250,1500,drunk", "2026-01-257,07:05:09,drink,,,,,,250,1500,drunk",
          "28.02.2026,07:05:09,drink,,,,,,250,1500,drunk", "2026-02-28,07:05:09,drink,,,,,,-250,1500,drunk",
          "2026-02-28,07:05:09,drink,,,,,,9223372036854775807,1500,drunk",
          "2026-02-28,07:05:09,eat,,,,,,250,1500,drunk", "2026-02-28,07:05:09,drink,,,,,,250,1500,drunk,",
          "2026-02-28;07:05:09;drink;;;;;;250;1500;drunk", "2026-02-28,07:05:09,drink,,,,,,\"250,1500,drunk"})
        EXPECT_FALSE(entryOf(foreign)) << foreign;
}

HistoryDate day(const char* text) {
    return historyDate(text).value();
}

TEST(HistorySums, AddUpTheDaysThatWereAskedFor) {
    HistoryPlay play;
    auto& files = play.desk.history.files;
    files["2026-11"] = "date\n2026-11-28,09:00:00,work,,,1500,,,,,break\n"
                       "2026-11-29,09:00:00,work,,,1500,,,,,break\n"
                       "2026-11-29,09:25:00,break,short,300,300,0,due,,,complete\n"
                       "2026-11-29,10:00:00,break,short,300,20,0,due,,,locked\n"
                       "2026-11-29,11:00:00,break,long,900,20,0,due,,,skipped\n"
                       "2026-11-29,11:30:00,break,short,300,20,0,due,,,notice\n"
                       "2026-11-29,11:40:00,break,newday,10,10,0,due,,,complete\n"
                       "2026-11-29,12:00:00,drink,,,,,,250,1500,drunk\n2026-11-29,12:00\n"
                       "2026-11-29,23:50:00,work,,,1200,,,,,pau";
    files["2026-12"] =
        "2026-12-01,09:00:00,drink,,,,,,100,2000,drunk\n2026-12-01,10:00:00,work,,,60,,,,,idle\n"
        "2026-12-02,09:00:00,drink,,,,,,100,2000,drunk\n";
    const auto sums = sumsOf(play.desk.history, day("2026-11-29"), day("2026-12-01"));
    EXPECT_EQ(sums.days, (std::vector<HistorySum>{{1500, 2, 2, 250, 1500}, {}, {60, 0, 0, 100, 2000}}));
}

TEST(HistorySums, DaysAreWrittenAndReadInOneWay) {
    EXPECT_EQ(dateText(day("2024-02-29") + std::chrono::days(1)), "2024-03-01");
    for (const char* text : {"", "2026-02-29", "2026-2-9", "29.02.2024", "2026-11-230", "+026-11-23"})
        EXPECT_FALSE(historyDate(text)) << text;
}

/// A desk on Wednesday, 25 November 2026, with the window open.
struct HistoryWindowPlay : HistoryPlay {
    explicit HistoryWindowPlay(const std::string& setting = kept) {
        (*this)("start 2026-11-25T09:00:00\n" + setting + "launch\n");
    }
    std::vector<std::string> figures(std::size_t column) {
        std::vector<std::string> all;
        for (const HistoryChart& chart : window.picture.charts)
            all.insert(all.end(), chart.bars[column].texts.begin(), chart.bars[column].texts.end());
        return all;
    }
    [[nodiscard]] std::string period(std::size_t column) const {
        const HistoryPeriod& period = window.picture.periods.at(column);
        return period.first + " " + period.last;
    }

    desk::RecordingHistoryWindow& window = desk.services.history;
    std::map<std::string, std::string>& files = desk.history.files;
};

TEST(HistoryWindow, ShowsTheLastDaysAsSharesAndInFigures) {
    HistoryWindowPlay play;
    play.files["2026-11"] =
        "2026-11-11,09:00:00,work,,,600,,,,,break\n2026-11-12,09:00:00,work,,,19500,,,,,break\n"
        "2026-11-12,09:00:00,break,short,300,300,0,due,,,complete\n"
        "2026-11-12,10:00:00,break,short,300,300,0,due,,,complete\n"
        "2026-11-12,11:00:00,break,short,300,3,0,due,,,skipped\n"
        "2026-11-25,08:00:00,drink,,,,,,250,1600,drunk\n";
    WindowController::showHistory();
    ASSERT_EQ(play.window.picture.periods.size(), 14U);
    EXPECT_EQ(play.period(0), "2026-11-12 2026-11-12");
    EXPECT_EQ(play.period(13), "2026-11-25 2026-11-25");
    EXPECT_EQ(play.figures(0), (Lines{"5 h 25 min", "2 taken", "1 skipped", "0 ml"}));
    EXPECT_EQ(play.figures(13), (Lines{"0 h 0 min", "0 taken", "0 skipped", "250 of 1600 ml"}));
    const auto& charts = play.window.picture.charts;
    EXPECT_EQ(charts[0].scale + "|" + charts[1].scale + "|" + charts[2].scale, "6 h|5|2000 ml");
    EXPECT_DOUBLE_EQ(charts[0].bars[0].parts[0], 19500.0 / (6 * 3600));
    EXPECT_EQ(charts[1].bars[0].parts, (std::vector<double>{0.4, 0.2}));
    EXPECT_DOUBLE_EQ(charts[2].bars[13].parts[0], 0.125);
    EXPECT_DOUBLE_EQ(charts[2].bars[13].goal, 0.8);
    EXPECT_EQ(play.window.picture.note, "");
}

TEST(HistoryWindow, ShowsTheLastWeeksFromMondayToSunday) {
    HistoryWindowPlay play;
    play.files["2026-09"] =
        "2026-09-06,09:00:00,work,,,600,,,,,break\n2026-09-07,09:00:00,work,,,1200,,,,,break\n"
        "2026-09-13,09:00:00,work,,,60,,,,,break\n";
    WindowController::showHistory();
    play.window.client->rangeChosen(HistoryRange::Weeks);
    ASSERT_EQ(play.window.picture.periods.size(), 12U);
    EXPECT_EQ(play.period(0), "2026-09-07 2026-09-13");
    EXPECT_EQ(play.period(11), "2026-11-23 2026-11-29");
    EXPECT_EQ(play.figures(0).front(), "0 h 21 min");
    play.window.client->closed();
    WindowController::showHistory();
    EXPECT_EQ(play.window.picture.periods.size(), 14U) << "it opens with the days";
}

TEST(HistoryWindow, FollowsWhatIsWrittenWhileItIsOpen) {
    HistoryWindowPlay play;
    WindowController::showHistory();
    EXPECT_EQ(play.window.picture.note, "Nothing has been recorded yet.");
    play("+120\nmenu pause\n");
    EXPECT_EQ(play.figures(13).front(), "0 h 2 min");
    EXPECT_EQ(play.window.picture.note, "");
    play("menu pause\n+60\npref keepHistory false\n");
    EXPECT_EQ(play.window.picture.note, "The history is switched off in the settings.");
    play.files["2026-11"] += "2026-11-25,08:00:00,work,,,600,,,,,break\n";
    play.window.client->cameToFront();
    EXPECT_EQ(play.figures(13).front(), "0 h 12 min") << "another program wrote";
    play.window.client->closed();
    const int told = play.window.pictures;
    play("pref keepHistory true\nmenu pause\n");
    EXPECT_EQ(play.window.pictures, told) << "nobody looks";
}

TEST(HistoryWindow, ForgetsEverythingAndSaysWhereThatFails) {
    HistoryWindowPlay play;
    play.files["2025-01"] = "2025-01-01,08:00:00,work,,,600,,,,,break\n";
    WindowController::showHistory();
    play.desk.history.diskFull = true;
    play.window.client->forgetConfirmed();
    EXPECT_EQ(play.window.picture.note, "Not everything could be deleted. The log tells more.");
    play.desk.history.diskFull = false;
    const int told = play.window.pictures;
    play.window.client->forgetConfirmed();
    EXPECT_TRUE(play.files.empty());
    EXPECT_EQ(play.window.pictures, told + 1) << "files are read once, and no picture speaks of the failure";
    EXPECT_EQ(play.window.picture.note, "Nothing has been recorded yet.");
}

TEST(HistoryWindow, IsOpenedFromTheSettingsAndByScripts) {
    HistoryWindowPlay play(mouseMayRest);
    desk::Desk::preferences().did("showHistory", PreferencesAct::Entered, true);
    EXPECT_EQ(play.window.client, nullptr) << "no press";
    desk::Desk::preferences().did("showHistory", PreferencesAct::Pressed, std::string());
    ASSERT_NE(play.window.client, nullptr);
    EXPECT_EQ(play.window.picture.note, "The history is switched off in the settings.");
    RemoteControl remote(play.desk.services, play.time);
    EXPECT_EQ(remote.showHistory(), std::nullopt);
    EXPECT_EQ(play.window.pictures, 2);
}

} // namespace
} // namespace kelpa::test
