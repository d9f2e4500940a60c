#include "app/AppState.h"
#include "tests/core/Settings.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const PrefState& pref() {
    return AppState::prefState();
}

TEST(Panes, AreToldWhatIsStoredWheneverTheWindowComesUpAndOnlyThat) {
    Settings settings("launch\n", {"title", "log", "item"});
    EXPECT_TRUE(settings["showTime"].on());
    EXPECT_EQ(settings["workTime"].text(), "25");
    settings.play("store pref.work.time int 50\nstore show_time_in_status_bar bool false\n"
                  "store break_prompt_list_0 list [\"a\"]\n");
    EXPECT_EQ(settings["workTime"].text(), "25");
    settings.person().cameToFront();
    EXPECT_EQ(settings["workTime"].text(), "50");
    EXPECT_FALSE(settings["showTime"].on());
    EXPECT_EQ(texts(settings["promptEntries"].entries()), std::vector<std::string>{"a"});
    settings.person().closed();
    const int told = settings["breakTime"].told();
    EXPECT_EQ(settings.play("store pref.work.time int 51\nmenu settings\n"),
              (Lines{"0.000 settings", "0.000 app activate"}));
    EXPECT_EQ(settings["workTime"].text(), "51");
    EXPECT_EQ(settings["breakTime"].told(), told);
    settings.play("pref workTime 52\npref customBreakPrompt true\npref breakStyle struggle\n");
    EXPECT_EQ(settings["workTime"].text(), "52");
    EXPECT_TRUE(settings["breakPrompt"].enabled());
    EXPECT_EQ(settings["breakStyle"].number(), 2);
}

TEST(Panes, TellAWindowThatForgotEverythingAlsoWhatIsBeingTyped) {
    Settings settings("launch\n");
    settings.person().typed("workTime", "4");
    settings.window().forget();
    settings.window().client()->showAgain();
    EXPECT_EQ(settings["workTime"].text(), "4");
    EXPECT_TRUE(settings["showTime"].on());
    EXPECT_FALSE(settings["breakPrompt"].enabled());
    EXPECT_EQ(settings["mode"].hint(), "Will remind you every selected time interval");
    EXPECT_EQ(texts(settings["promptEntries"].entries()), prompts(BreakStyle::default_));
}

TEST(Panes, AnswerAnActOnce) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto told = [&](const char* id, const std::function<void()>& deed) {
        const int before = settings[id].told();
        deed();
        return settings[id].told() - before;
    };
    const auto person = settings.person();
    EXPECT_EQ(told("showTime", [&] { person.switched("showTime", false); }), 1);
    EXPECT_EQ(told("showTime", [&] { person.switched("showTime", false); }), 1)
        << "what is not another value";
    person.stepped("breakTime", 1);
    EXPECT_EQ(told("breakTime", [&] { person.stepped("breakTime", 1); }), 1);
    EXPECT_EQ(told("mode", [&] { person.chosen("mode", 7); }), 1) << "what is not taken";
    EXPECT_EQ(told("intervalStartDate", [&] { person.timeEntered("intervalStartDate", 8, 0); }), 1);
    EXPECT_EQ(told("promptEntries", [&] { person.added("promptEntries", "new"); }), 1);
    EXPECT_EQ(told("breakTime", [&] { person.typed("breakTime", "60"); }), 0) << "in the way of typing";
}

TEST(Panes, TakeNothingForAControlThatThereIsNot) {
    Settings settings("launch\n");
    EXPECT_EQ(settings.after([](auto window) {
        window.typed("colour", "red");
        window.entered("launchAtLogin", "true");
        window.chosen("breakStyle", 7);
        window.stepped("promptEntries", 1);
    }),
              (Lines{"0.000 log warning the preferences window has no control 'colour'"}));
}

TEST(GeneralPane, SwitchesWriteAndTheSettingsDoTheRest) {
    Settings settings("launch\n", {"log", "item"});
    EXPECT_EQ(settings.after([](auto window) {
        window.switched("showTime", false);
        window.switched("showTime", true);
        window.switched("launchAtLogin", false);
        window.switched("launchAtLogin", true);
        window.switched("launchAtLogin", true);
        window.switched("autoCheckUpdate", false);
    }),
              (Lines{"0.000 set show_time_in_status_bar bool false", "0.000 title \"\"",
                     "0.000 set show_time_in_status_bar bool true", "0.000 title 25:00",
                     "0.000 set launch_at_login bool false", "0.000 login unregister",
                     "0.000 set launch_at_login bool true", "0.000 login register",
                     "0.000 set launch_at_login bool true", "0.000 login register",
                     "0.000 set auto_check_update bool false"}));
    EXPECT_TRUE(settings["launchAtLogin"].on());
}

TEST(WorkflowPane, ANumberCountsWhenTheTypingPauses) {
    Settings settings("launch\n", {"title", "item"});
    EXPECT_EQ(settings.after([](auto window) {
        window.typed("workTime", "");
        window.typed("workTime", "4");
    }),
              Lines{});
    EXPECT_EQ(settings.play("+0.9\n"), Lines{});
    settings.person().typed("workTime", "40");
    const int told = settings["workTime"].told();
    EXPECT_EQ(settings.play("+0.9\n"), Lines{});
    EXPECT_EQ(settings.play("+0.1\n"),
              (Lines{"1.900 set pref.work.time int 40", "1.900 log info ticktack timer stoped 1.0",
                     "1.900 log info ticktack timer start 2400"}));
    settings.person().typed("workTime", "40 ");
    EXPECT_EQ(settings.play("+5\n"), Lines{});
    EXPECT_EQ(settings["workTime"].told(), told) << "what is being typed is left alone";
}

TEST(WorkflowPane, ANumberCountsWhenTheProgramEndsBeforeTheTypingPauses) {
    Settings settings("launch\n", {"title", "item", "log"});
    EXPECT_EQ(settings.after([&](auto window) {
        window.typed("breakTime", "20");
        window.typed("longBreakTime", "many");
        settings.play.desk.end();
    }),
              Lines{"0.000 set pref.break.time int 20"});
}

TEST(WorkflowPane, ANumberCountsAtOnceWhenTheFieldIsLeftButOnlyIfItIsAnother) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto enter = [&](const char* text) {
        return settings.after([&](auto window) {
            window.typed("workTime", text);
            window.entered("workTime", text);
        });
    };
    EXPECT_EQ(enter(" \u00A030\u3000"), (Lines{"0.000 set pref.work.time int 30"}));
    EXPECT_EQ(settings["workTime"].text(), "30");
    EXPECT_EQ(enter("4５"), (Lines{"0.000 set pref.work.time int 45"}));
    EXPECT_EQ(enter("045"), Lines{});
    EXPECT_EQ(enter("45"), Lines{});
    EXPECT_EQ(settings.play("+5\n"), Lines{});
    settings.play("store pref.work.time int 50\n");
    EXPECT_EQ(enter("45"), Lines{}) << "a field that was not edited writes nothing over another's number";
    EXPECT_EQ(settings["workTime"].text(), "50");
}

TEST(WorkflowPane, WhatTheCycleCannotRunWithIsNeverStored) {
    Settings settings("launch\n", {"title", "item", "log"});
    const std::string problem = "Please enter a number from 1 to 100.";
    for (const char* text : {"101", "-1", "−1", "1.5", "4x", "1 0", "+4", "99999999999999999999"}) {
        settings.person().typed("shortBreakTimes", text);
        EXPECT_EQ(settings["shortBreakTimes"].problem(), problem) << text;
    }
    for (const char* text : {"", " ", "0"}) {
        settings.person().typed("shortBreakTimes", "5");
        EXPECT_EQ(settings["shortBreakTimes"].problem(), "");
        settings.person().typed("shortBreakTimes", text);
        EXPECT_EQ(settings["shortBreakTimes"].problem(), "") << "it may become a number yet: " << text;
        EXPECT_EQ(settings.play("+1\n"), Lines{});
        EXPECT_EQ(settings["shortBreakTimes"].problem(), problem);
    }
    const int told = settings["shortBreakTimes"].told();
    EXPECT_EQ(settings.after([](auto window) { window.entered("shortBreakTimes", "0"); }), Lines{});
    EXPECT_GT(settings["shortBreakTimes"].told(), told);
    EXPECT_EQ(settings["shortBreakTimes"].text(), "4");
    EXPECT_EQ(settings["shortBreakTimes"].problem(), problem) << "why the number came back";
    settings.play("+4.9\n");
    EXPECT_EQ(settings["shortBreakTimes"].problem(), problem);
    settings.play("+0.1\n");
    EXPECT_EQ(settings["shortBreakTimes"].problem(), "");
    EXPECT_EQ(pref().shortBreakTimes(), 4);
}

TEST(WorkflowPane, EachNumberHasItsRange) {
    struct Range {
        const char* id;
        std::string lowest, below, highest, above;
    };
    Settings settings("launch\n", {"title", "item", "log"});
    for (const Range& range :
         {Range{"workTime", "1", "0", "600", "601"}, Range{"breakTime", "5", "4", "7200", "7201"},
          Range{"longBreakTime", "1", "0", "240", "241"}, Range{"shortBreakTimes", "1", "0", "100", "101"}}) {
        const auto enters = [&](const std::string& text) {
            return settings.after([&](auto window) { window.entered(range.id, text); }).size();
        };
        EXPECT_EQ(enters(range.below) + enters(range.above), 0U) << range.id;
        EXPECT_EQ(enters(range.lowest), 1U) << range.id;
        settings.person().stepped(range.id, -1);
        EXPECT_EQ(settings[range.id].text(), range.lowest);
        EXPECT_EQ(enters(range.highest), 1U) << range.id;
        settings.person().stepped(range.id, 1);
        EXPECT_EQ(settings[range.id].text(), range.highest);
    }
}

TEST(WorkflowPane, StepsCountAtOnceAndFromWhatIsTyped) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto step = [&](int direction) {
        return settings.after([&](auto window) { window.stepped("breakTime", direction); });
    };
    EXPECT_EQ(step(1), (Lines{"0.000 set pref.break.time int 301"}));
    EXPECT_EQ(step(-1), (Lines{"0.000 set pref.break.time int 300"}));
    settings.person().typed("breakTime", "60");
    EXPECT_EQ(step(1), (Lines{"0.000 set pref.break.time int 61"}));
    settings.person().typed("breakTime", "9999");
    EXPECT_EQ(step(1), (Lines{"0.000 set pref.break.time int 62"}));
    EXPECT_EQ(settings["breakTime"].problem(), "");
    EXPECT_EQ(settings["breakTime"].text(), "62");
    EXPECT_EQ(settings.play("+5\n"), Lines{});
}

TEST(WorkflowPane, ForeignNumbersAreShownAndStayUntilTheyAreEdited) {
    Settings settings("store pref.short.break.times int 0\nstore pref.work.time int 10000\n"
                      "store pref.break.time int -9223372036854775808\nlaunch\n",
                      {"title", "item", "log"});
    EXPECT_EQ(settings["shortBreakTimes"].text() + " " + settings["workTime"].text() + " " +
                  settings["breakTime"].text(),
              "0 10000 -9223372036854775808");
    EXPECT_EQ(settings.after([](auto window) {
        window.typed("shortBreakTimes", "0");
        window.entered("shortBreakTimes", "0");
    }),
              Lines{});
    EXPECT_EQ(settings["shortBreakTimes"].problem(), "");
    EXPECT_EQ(settings.after([](auto window) {
        window.closed();
        window.cameToFront();
    }),
              Lines{});
    EXPECT_EQ(settings.after([](auto window) {
        window.stepped("shortBreakTimes", -1);
        window.stepped("workTime", 1);
        window.stepped("breakTime", -1);
    }),
              (Lines{"0.000 set pref.short.break.times int 1", "0.000 set pref.work.time int 600",
                     "0.000 set pref.break.time int 5"}));
}

TEST(WorkflowPane, ClosingKeepsAGoodNumberAndDropsABadOne) {
    Settings settings("launch\n", {"title", "item", "log"});
    EXPECT_EQ(settings.after([](auto window) {
        window.typed("longBreakTime", "20");
        window.typed("breakTime", "60");
        window.typed("breakTime", "6000000");
        window.closed();
    }),
              (Lines{"0.000 set pref.long.break.time int 20"}));
    EXPECT_EQ(settings["breakTime"].text(), "300");
    EXPECT_EQ(settings["breakTime"].problem(), "");
    EXPECT_EQ(settings.play("+5\n"), Lines{});
}

TEST(WorkflowPane, ComingToTheFrontLeavesWhatIsTypedUnlessTheSettingChanged) {
    Settings settings("launch\n", {"title", "item", "log"});
    settings.person().typed("breakTime", "6o");
    const int told = settings["breakTime"].told();
    settings.person().cameToFront();
    EXPECT_EQ(settings["breakTime"].told(), told);
    settings.play("store pref.break.time int 90\n");
    settings.person().cameToFront();
    EXPECT_EQ(settings["breakTime"].text(), "90");
    EXPECT_EQ(settings["breakTime"].problem(), "");
    settings.person().typed("breakTime", "60");
    EXPECT_EQ(settings.play("pref breakTime 45\n+5\n"), (Lines{"0.000 set pref.break.time int 45"}));
    EXPECT_EQ(settings["breakTime"].text(), "45");
}

TEST(WorkflowPane, TheCustomPromptIsWrittenInPausesAndTypedOnlyWhileItIsWanted) {
    Settings settings("store break_prompt_text text a\nlaunch\n", {"title", "item", "log"});
    EXPECT_FALSE(settings["breakPrompt"].enabled());
    EXPECT_EQ(settings.after([](auto window) { window.switched("customBreakPrompt", true); }),
              (Lines{"0.000 set custom_break_prompt bool true"}));
    EXPECT_TRUE(settings["breakPrompt"].enabled());
    settings.person().typed("breakPrompt", "ab");
    settings.person().typed("breakPrompt", "ab\\nc");
    EXPECT_EQ(settings.play("+1\n"), (Lines{"1.000 set break_prompt_text text ab\\nc"}));
    EXPECT_EQ(settings.after([](auto window) {
        window.entered("breakPrompt", "ab\\nc");
        window.entered("breakPrompt", "");
    }),
              (Lines{"1.000 set break_prompt_text text "}));
    settings.play("store break_prompt_text text same\n");
    EXPECT_EQ(settings.after([](auto window) { window.entered("breakPrompt", "same"); }), Lines{});
    settings.play.desk.store.put("break_prompt_text", std::string("two\nlines"));
    settings.person().cameToFront();
    EXPECT_EQ(settings["breakPrompt"].text(), "two\\nlines");
    EXPECT_EQ(settings.after([](auto window) { window.entered("breakPrompt", "two\\nlines"); }), Lines{});
    EXPECT_EQ(pref().breakPrompt(), "two\nlines");
}

std::string workflowSections(const Play& play) {
    std::string titles;
    for (const auto& section : play.desk.services.preferences.layout().panes.at(1).sections)
        titles += section.title + "|";
    return titles;
}

TEST(WorkflowPane, ChoosesTheWordBeforeABreakAndWhatBreaksWaitFor) {
    Settings settings("launch\n", {"title", "item", "log"});
    EXPECT_EQ(
        texts(settings["breakNotice"].entries()),
        (std::vector<std::string>{"Off", "10 seconds before", "30 seconds before", "60 seconds before"}));
    EXPECT_EQ(workflowSections(settings.play),
              "Short Break Options|Long Break Options|Other Options|Before a Break|While I Am Busy|History|");
    EXPECT_EQ(settings["breakNotice"].number(), 0);
    EXPECT_EQ(settings["moreTime"].text(), "5");
    EXPECT_FALSE(settings["holdLimit"].enabled() || settings["hold.sound"].enabled());
    EXPECT_TRUE(settings["hold.sound"].on());
    const auto chooses = [](auto person) {
        person.chosen("breakNotice", 30);
        person.entered("moreTime", "15");
        person.switched("holdBreaks", true);
        person.entered("holdLimit", "120");
        person.switched("hold.sound", false);
        person.entered("moreTime", "1");
        person.entered("holdLimit", "121");
    };
    EXPECT_EQ(settings.after(chooses),
              (Lines{"0.000 set pref.break.notice int 30", "0.000 set pref.break.more int 15",
                     "0.000 set pref.break.hold bool true", "0.000 set pref.break.hold.limit int 120",
                     "0.000 set pref.break.hold.sound bool false"}));
    EXPECT_TRUE(settings["holdLimit"].enabled() && settings["hold.awake"].enabled());
    settings.play("pref holdBreaks false\n");
    EXPECT_FALSE(settings["holdLimit"].enabled() || settings["hold.awake"].enabled());
}

TEST(WorkflowPane, WhatTheDesktopCannotBeAskedForIsNotToBeHadAndSaysWhy) {
    Settings settings("launch\n");
    settings.play.desk.services.busyness.unavailableFor[BusyReason::Camera] = "No camera can be seen here.";
    settings.play("pref holdBreaks true\n");
    EXPECT_TRUE(settings["hold.camera"].enabled());
    settings.person().cameToFront();
    EXPECT_FALSE(settings["hold.camera"].enabled());
    EXPECT_EQ(settings["hold.camera"].hint(), "No camera can be seen here.");
    EXPECT_TRUE(settings["hold.camera"].on()) << "what was chosen stays";
    EXPECT_TRUE(settings["hold.sound"].enabled());
    EXPECT_EQ(settings["hold.sound"].hint(), "");
    settings.play.desk.services.busyness.unavailableFor.clear();
    settings.person().cameToFront();
    EXPECT_TRUE(settings["hold.camera"].enabled());
    EXPECT_EQ(settings["hold.camera"].hint(), "");
}

TEST(WorkflowPane, HasNoRowsForWhatThePlatformLacks) {
    Play play;
    play.desk.offered().notifications = nullptr;
    play.desk.offered().busy = nullptr;
    play("launch\nmenu settings\n");
    EXPECT_EQ(workflowSections(play), "Short Break Options|Long Break Options|Other Options|History|");
}

TEST(StylePaneWindow, ChoosesStyleAndListAndShowsTheirPrompts) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto choices = [&](const char* id) {
        std::string all;
        for (const auto& choice : settings[id].entries())
            all += std::to_string(choice.value) + choice.text + " ";
        return all;
    };
    EXPECT_EQ(choices("breakStyle"), "0Default 1Relaxation 2Struggle ");
    EXPECT_EQ(choices("promptList"), "0Break 1New Day ");
    EXPECT_EQ(texts(settings["promptEntries"].entries()), prompts(BreakStyle::default_));
    EXPECT_EQ(settings.after([](auto window) { window.chosen("breakStyle", 2); }),
              (Lines{"0.000 set break_style int 2"}));
    EXPECT_EQ(texts(settings["promptEntries"].entries()), prompts(BreakStyle::struggle));
    EXPECT_EQ(settings.after([](auto window) { window.chosen("promptList", 1); }), Lines{});
    EXPECT_EQ(settings["promptList"].number(), 1);
    EXPECT_EQ(texts(settings["promptEntries"].entries()), newDayPrompts(BreakStyle::struggle));
    settings.play("pref breakStyle relaxation\n");
    EXPECT_EQ(texts(settings["promptEntries"].entries()), newDayPrompts(BreakStyle::relaxation));
}

TEST(StylePaneWindow, EditsTheListAsItIsStored) {
    Settings settings("store break_prompt_list_0 list [\"a\",\"b\"]\nlaunch\n", {"title", "item", "log"});
    const std::string lengthy = std::string(5000, 'x') + "\\ny";
    settings.person().added("promptEntries", lengthy);
    settings.person().edited("promptEntries", "a", "c");
    EXPECT_EQ(texts(settings["promptEntries"].entries()), (std::vector<std::string>{lengthy, "c", "b"}));
    settings.play("store break_prompt_list_0 list [\"from another program\"]\n");
    EXPECT_EQ(settings.after([](auto window) { window.added("promptEntries", "d"); }),
              (Lines{"0.000 set break_prompt_list_0 list [\"d\",\"from another program\"]"}));
    const int told = settings["promptEntries"].told();
    EXPECT_EQ(settings.after([](auto window) {
        window.added("promptEntries", "");
        window.edited("promptEntries", "d", "");
    }),
              Lines{});
    EXPECT_GT(settings["promptEntries"].told(), told) << "what was emptied comes back";
}

TEST(StylePaneWindow, FollowsAnotherStyleObject) {
    Settings settings("launch\n", {"title", "item", "log"});
    settings.play("store break_style int 2\n");
    AppState::prefState().setStyleState(std::make_unique<PrefStyleState>(settings.play.desk.store));
    EXPECT_EQ(settings["breakStyle"].number(), 2) << "what it has is shown as it comes";
    EXPECT_EQ(texts(settings["promptEntries"].entries()), prompts(BreakStyle::struggle));
    settings.play("pref breakStyle default\n");
    EXPECT_EQ(settings["breakStyle"].number(), 0);
    EXPECT_EQ(texts(settings["promptEntries"].entries()), prompts(BreakStyle::default_));
    settings.person().chosen("breakStyle", 1);
    EXPECT_EQ(AppState::prefState().styleState().breakStyle(), BreakStyle::relaxation);
}

TEST(AboutPane, TellsOfTheProgramUnderItsPicture) {
    Play play;
    play.desk.system.bundleInfo = {{"CFBundleDisplayName", std::string("Alga")},
                                   {"CFBundleShortVersionString", std::string("2.3.4")},
                                   {"CFBundleVersion", std::string("56")}};
    play("launch\nmenu settings\n");
    const auto about = play.desk.services.preferences.layout().panes[4].about;
    ASSERT_TRUE(about);
    EXPECT_EQ(about->icon + about->glyph + about->glyphFont, "app.orvane.Kelpa");
    EXPECT_EQ(about->name + " " + about->version, "Alga v2.3.4(56)");
    EXPECT_EQ(about->link, "Release Notes");
    EXPECT_EQ(about->linkAddress.substr(0, 8), "https://");
}

TEST(AboutPane, TellsTheYearInWhichItIsLookedAt) {
    Play play;
    play("start 2026-12-31T23:59:00\nlaunch\nmenu settings\n");
    const auto copyright = [&] {
        return play.desk.services.preferences.control(copyrightLine).text().substr(0, 17);
    };
    EXPECT_EQ(copyright(), "Copyright © 2026");
    play("+61\n");
    EXPECT_EQ(copyright(), "Copyright © 2026");
    play("menu settings\n");
    EXPECT_EQ(copyright(), "Copyright © 2027");
}

} // namespace
} // namespace kelpa::test
