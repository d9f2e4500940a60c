#include "app/AppState.h"
#include "panes/TypedFields.h"
#include "tests/core/Settings.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa::test {
namespace {

const PrefWaterState& water() {
    return AppState::waterState();
}

/// Monday 2026-11-23 at ten, answered last ten minutes ago.
constexpr const char* atTen =
    "start 2026-11-23T10:00:00\nstore pref.water.lastShowDate real 1795427400\nlaunch\n";

std::int64_t minutes(int hour, int minute) {
    return 60 * hour + minute;
}

std::string tiles(const std::vector<PreferencesEntry>& points) {
    std::string all;
    for (const PreferencesEntry& point : points)
        all += point.text + " ";
    return all;
}

TEST(WaterPaneWindow, TheSwitchPutsTheReminderInPlaceAndTakesItAway) {
    Settings settings(atTen, {"title"});
    EXPECT_EQ(settings.after([](auto window) { window.switched("enable", true); }),
              (Lines{"0.000 set pref.water.enable bool true", "0.000 item water inserted 3 \"Water (0% )\"",
                     "0.000 water armed 300"}));
    EXPECT_TRUE(settings["enable"].on());
    settings.play("menu water\n+3\n");
    EXPECT_EQ(
        settings.after([](auto window) { window.switched("enable", false); }),
        (Lines{"3.000 set pref.water.enable bool false", "3.000 item water removed",
               "3.000 window closing Water Reminder", "3.000 app deactivate", "3.000 water cancelled"}));
    EXPECT_FALSE(settings["enable"].on());
    EXPECT_EQ(
        settings.after([](auto window) { window.chosen("selectedInterval", 30); }),
        (Lines{"3.000 set pref.water.selectedInterval int 30", "3.000 log info waterState.enable is false"}));
}

TEST(WaterPaneWindow, TheTargetGoesInFiftiesBetweenItsLimits) {
    Settings settings(std::string(atTen), {"title", "log", "item", "water"});
    const auto enter = [&](const char* text) {
        const auto lines = settings.after([&](auto window) {
            window.typed("target", text);
            window.entered("target", text);
        });
        return lines.empty() ? settings["target"].text() : settings["target"].text() + " written";
    };
    EXPECT_EQ(enter("1524"), "1500");
    EXPECT_EQ(enter("1525"), "1550 written");
    EXPECT_EQ(enter("50"), "50 written");
    settings.person().stepped("target", -1);
    EXPECT_EQ(settings["target"].text(), "50");
    settings.person().stepped("target", 1);
    EXPECT_EQ(settings["target"].text(), "100");
    EXPECT_EQ(enter("20000"), "20000 written");
    settings.person().stepped("target", 1);
    EXPECT_EQ(water().target(), 20000);
    EXPECT_EQ(enter("49"), "20000");
    EXPECT_EQ(enter("20001"), "20000");
    EXPECT_EQ(settings["target"].problem(), "Please enter a number from 50 to 20000.");
    settings.person().typed("target", "1234");
    EXPECT_EQ(settings.play("+1\n"), (Lines{"1.000 set pref.water.target int 1250"}));
    const int told = settings["target"].told();
    settings.person().cameToFront();
    EXPECT_EQ(settings["target"].told(), told) << "the field is still typed in";
    settings.person().entered("target", "1234");
    EXPECT_EQ(settings["target"].text(), "1250");
}

TEST(WaterPaneWindow, EachChangePlansTheReminderAnew) {
    Settings settings(std::string("start 2026-11-23T10:00:00\nstore pref.water.enable bool true\n"
                                  "store pref.water.lastShowDate real 1795427400\nlaunch\n"),
                      {"title", "log", "item"});
    EXPECT_EQ(settings.after([](auto window) { window.chosen("selectedInterval", 30); }),
              (Lines{"0.000 set pref.water.selectedInterval int 30", "0.000 water cancelled",
                     "0.000 water armed 1200"}));
    EXPECT_EQ(
        settings.after([](auto window) { window.stepped("target", 1); }),
        (Lines{"0.000 set pref.water.target int 1550", "0.000 water cancelled", "0.000 water armed 1200"}));
    EXPECT_EQ(settings.after([](auto window) { window.timeEntered("intervalStartDate", 8, 0); }).back(),
              "0.000 water armed 1200");
    EXPECT_EQ(settings.after([](auto window) { window.timeEntered("intervalEndDate", 9, 0); }).back(),
              "0.000 water cancelled");
    EXPECT_EQ(settings.after([](auto window) { window.timeEntered("intervalEndDate", 19, 0); }).back(),
              "0.000 water armed 1200");
    EXPECT_EQ(settings.after([](auto window) { window.chosen("mode", 1); }),
              (Lines{"0.000 set pref.water.mode int 1", "0.000 water cancelled", "0.000 water armed 3600"}));
    const Lines added = settings.after([](auto window) { window.added("selectedTimings", minutes(10, 30)); });
    EXPECT_TRUE(added.front().starts_with("0.000 set pref.water.selectedTimings text [817"));
    EXPECT_EQ(added.back(), "0.000 water armed 1800");
    EXPECT_EQ(settings.after([](auto window) { window.removed("selectedTimings", minutes(10, 30)); }).back(),
              "0.000 water armed 3600");
    EXPECT_EQ(settings.after([](auto window) {
        window.chosen("selectedInterval", 31);
        window.chosen("selectedInterval", 30);
        window.chosen("mode", 1);
        window.timeEntered("intervalStartDate", 8, 0);
        window.timeEntered("intervalStartDate", 24, 0);
        window.added("selectedTimings", minutes(24, 0));
        window.added("selectedTimings", -1);
    }),
              Lines{});
}

TEST(WaterPaneWindow, TheModeSwapsTheScheduleAndItsTip) {
    Settings settings(atTen);
    const auto shown = [&] {
        std::string all;
        for (const char* id : {"intervalStartDate", "intervalEndDate", "selectedInterval", "selectedTimings"})
            all += settings[id].visible() ? "1" : "0";
        return all + " " + settings["mode"].hint();
    };
    EXPECT_EQ(shown(), "1110 Will remind you every selected time interval");
    settings.person().chosen("mode", 1);
    EXPECT_EQ(shown(), "0001 Will remind you at selected time points");
    settings.play("store pref.water.mode int 0\n");
    settings.person().cameToFront();
    EXPECT_EQ(shown(), "1110 Will remind you every selected time interval");
    settings.play("pref mode timing\n");
    EXPECT_EQ(shown(), "0001 Will remind you at selected time points");
    EXPECT_EQ(settings["mode"].entries(),
              (std::vector<PreferencesEntry>{{0, "Interval", ""}, {1, "Timing", ""}}));
    EXPECT_EQ(settings["selectedInterval"].entries(), (std::vector<PreferencesEntry>{{15, "15min", ""},
                                                                                     {30, "30min", ""},
                                                                                     {45, "45min", ""},
                                                                                     {60, "60min", ""},
                                                                                     {90, "90min", ""},
                                                                                     {120, "120min", ""}}));
}

TEST(WaterPaneWindow, TimesAreTodaysAndFollowTheTimeZone) {
    Settings settings("start 2026-11-23T10:00:30\nzone Europe/Berlin\nlaunch\n");
    settings.person().timeEntered("intervalStartDate", 8, 15);
    settings.person().timeEntered("intervalEndDate", 6, 0);
    const auto& clock = settings.play.desk.clock;
    EXPECT_EQ(clock.civil(water().intervalStartDate()), (CivilTime{2026, 11, 23, 8, 15, 0}));
    EXPECT_EQ(clock.civil(water().intervalEndDate()), (CivilTime{2026, 11, 23, 6, 0, 0}));
    EXPECT_EQ(settings["intervalEndDate"].number(), minutes(6, 0)) << "an end before the start is taken";
    EXPECT_FALSE(water().inWorkTime());
    settings.play("zone Asia/Shanghai\n");
    settings.person().cameToFront();
    EXPECT_EQ(settings["intervalStartDate"].number(), minutes(15, 15));
    EXPECT_EQ(tiles(settings["selectedTimings"].entries()).substr(0, 12), "00:00 01:00 ");
    EXPECT_EQ(settings["selectedTimings"].number(), minutes(18, 0));
    settings.play("clock +21600\n");
    settings.person().cameToFront();
    EXPECT_EQ(settings["selectedTimings"].number(), minutes(0, 0)) << "after the last hour the first one";
}

TEST(WaterPaneWindow, TilesStandInTheOrderOfTheDayAndTheLastOneStays) {
    Settings settings("start 2026-11-23T10:00:30\nlaunch\npref selectedTimings 13:30 09:00\n", {"set"});
    EXPECT_EQ(tiles(settings["selectedTimings"].entries()), "09:00 13:30 ");
    EXPECT_EQ(settings["selectedTimings"].entries().back().removal, "Remove this time 13:30");
    EXPECT_EQ(settings["selectedTimings"].number(), minutes(11, 0)) << "the next full hour is proposed";
    settings.play("clock +86400\n");
    settings.person().added("selectedTimings", minutes(9, 0));
    settings.person().added("selectedTimings", minutes(8, 5));
    EXPECT_EQ(tiles(settings["selectedTimings"].entries()), "08:05 09:00 09:00 13:30 ");
    EXPECT_EQ(settings.play.desk.clock.civil(*water().selectedTimings().rbegin()),
              (CivilTime{2026, 11, 24, 9, 0, 0}));
    EXPECT_EQ(settings.after([](auto window) { window.removed("selectedTimings", minutes(8, 6)); }),
              (Lines{"0.000 log error Can't find item"}));
    for (const int hour : {9, 9, 13})
        settings.person().removed("selectedTimings", minutes(hour, hour == 13 ? 30 : 0));
    const int told = settings["selectedTimings"].told();
    EXPECT_EQ(settings.after([](auto window) { window.removed("selectedTimings", minutes(8, 5)); }), Lines{});
    EXPECT_EQ(tiles(settings["selectedTimings"].entries()), "08:05 ");
    EXPECT_GT(settings["selectedTimings"].told(), told) << "the face is told again what stands";
}

TEST(DigitalAccumulator, ItsButtonsKnowNoBoundsButThoseOfTheIntegers) {
    desk::VirtualTime time;
    desk::KeptJournal journal(time);
    desk::RecordingPreferences window(journal);
    ShownPreferences shown(window);
    TransientSetting<std::int64_t> value(3);
    DigitalAccumulatorView view({"amount", PreferencesControlKind::Accumulator, "", ""}, shown, time, value,
                                {0, 10}, 7);
    view.did(PreferencesAct::Stepped, -1);
    EXPECT_EQ(value(), -4);
    view.did(PreferencesAct::Typed, "9");
    view.did(PreferencesAct::Stepped, 1);
    EXPECT_EQ(value(), 16);
    value.set(std::numeric_limits<std::int64_t>::max() - 6);
    EXPECT_DEATH(view.did(PreferencesAct::Stepped, 1), "overflow");
    value.set(std::numeric_limits<std::int64_t>::min() + 6);
    EXPECT_DEATH(view.did(PreferencesAct::Stepped, -1), "overflow");
}

} // namespace
} // namespace kelpa::test
