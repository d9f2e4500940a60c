#include "app/AppState.h"
#include "tests/core/Settings.h"
#include "ui/IconFont.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

using test::Lines;
using test::Settings;

const PrefState& pref() {
    return AppState::prefState();
}

std::string outline(const PreferencesPane& pane) {
    std::string text = pane.label + " " + pane.symbol + "\n";
    for (const auto& section : pane.sections) {
        text += "# " + section.title + "\n";
        for (const auto& row : section.rows)
            text += row.caption + " | " + row.control.id + " | " + row.control.label + " | " +
                    row.control.unit + "\n";
    }
    return text;
}

TEST(Panes, StandInOrderWithTheirTexts) {
    Settings settings("launch\n");
    const PreferencesLayout& layout = settings.window().layout();
    EXPECT_EQ(layout.title, "Settings");
    EXPECT_EQ(layout.minimumWidth, 480);
    EXPECT_EQ(layout.minimumHeight, 400);
    ASSERT_EQ(layout.panes.size(), 5U);
    EXPECT_EQ(outline(layout.panes[0]),
              "General gearshape.circle\n# \n"
              "Start options | launchAtLogin | Launch at login | \n"
              "StatusBar options | showTime | Show time in StatusBar | \n"
              "Update options | autoCheckUpdate | Auto check update for Kelpa | \n");
    EXPECT_EQ(outline(layout.panes[1]),
              "Workflow tray.circle\n# Short Break Options\n"
              "Every | workTime | Length of a work period in minutes | mins\n"
              "Break | breakTime | Length of a short break in seconds | seconds\n"
              " | customBreakPrompt | Custom break prompt | \n"
              "Text | breakPrompt | Custom break prompt | \n# Long Break Options\n"
              "Every | shortBreakTimes | Breaks from one long break to the next | short breaks\n"
              "Break | longBreakTime | Length of a long break in minutes | mins\n"
              " | forceLongBreak | Force for long breaks(skip button will not display) | \n# Other Options\n"
              " | restartTimerAfterAwake | Restart timer after Mac awake | \n"
              " | stopTimerAfterMouseStop | Stop timer after Mouse stop for 5 mins | \n"
              " | showNewDayTip | Show a new day prompt | \n");
    EXPECT_EQ(outline(layout.panes[2]), "Style books.vertical.circle\n# Break Style\n"
                                        " | breakStyle | Break Style | \n# Break Prompts\n"
                                        " | promptList | Break Prompts | \n"
                                        " | promptEntries | Break Prompts | \n");
    EXPECT_EQ(outline(layout.panes[3]), "Water drop.circle\n# Options\n"
                                        "Enable | enable | Enable drink water reminder | \n"
                                        "Target | target | Target | ml\n"
                                        "Mode | mode | Mode | \n# Schedule\n"
                                        "Start time | intervalStartDate | Start time | \n"
                                        "End time | intervalEndDate | End time | \n"
                                        "water.interval | selectedInterval | water.interval | \n"
                                        " | selectedTimings | Time points | \n");
    EXPECT_EQ(outline(layout.panes[4]), "About info.circle\n");
    std::string buttons;
    for (const auto& button : {layout.prompts.add, layout.prompts.edit, layout.prompts.remove,
                               layout.prompts.reset, layout.addTimePoint, layout.decrease, layout.increase})
        buttons += button.symbol + " " + button.name + "\n";
    EXPECT_EQ(
        buttons + layout.removalSymbol,
        "plus Add\nsquare.and.pencil Edit\ntrash.fill Delete\ngobackward Reset to the built-in prompts\n"
        "plus Add a time\nminus Decrease\nplus Increase\nxmark.circle.fill");
}

TEST(Panes, AreToldWhatIsStoredWheneverTheWindowComesUpAndOnlyThat) {
    Settings settings("launch\n", {"title", "log", "item"});
    EXPECT_TRUE(settings["showTime"].on);
    EXPECT_EQ(settings["workTime"].text, "25");
    settings.play("store pref.work.time int 50\nstore show_time_in_status_bar bool false\n"
                  "store break_prompt_list_0 list [\"a\"]\n");
    EXPECT_EQ(settings["workTime"].text, "25");
    settings.client().cameToFront();
    EXPECT_EQ(settings["workTime"].text, "50");
    EXPECT_FALSE(settings["showTime"].on);
    EXPECT_EQ(settings["promptEntries"].prompts, std::vector<std::string>{"a"});
    settings.client().closed();
    const int told = settings["breakTime"].told;
    EXPECT_EQ(settings.play("store pref.work.time int 51\nmenu settings\n"),
              (Lines{"0.000 settings", "0.000 app activate"}));
    EXPECT_EQ(settings["workTime"].text, "51");
    EXPECT_EQ(settings["breakTime"].told, told);
    settings.play("pref workTime 52\npref customBreakPrompt true\npref breakStyle struggle\n");
    EXPECT_EQ(settings["workTime"].text, "52");
    EXPECT_TRUE(settings["breakPrompt"].enabled);
    EXPECT_EQ(settings["breakStyle"].chosen, 2);
}

TEST(Panes, TakeNothingForAControlThatThereIsNot) {
    Settings settings("launch\n");
    EXPECT_EQ(settings.after([](auto& window) {
        window.typed("colour", "red");
        window.entered("launchAtLogin", "true");
        window.chosen("breakStyle", 7);
        window.stepped("promptEntries", 1);
    }),
              (Lines{"0.000 log warning the preferences window has no control 'colour'"}));
}

TEST(GeneralPane, SwitchesWriteAndTheSettingsDoTheRest) {
    Settings settings("launch\n", {"log", "item"});
    EXPECT_EQ(settings.after([](auto& window) {
        window.switched("showTime", false);
        window.switched("showTime", true);
        window.switched("launchAtLogin", true);
        window.switched("launchAtLogin", true);
        window.switched("autoCheckUpdate", false);
    }),
              (Lines{"0.000 set show_time_in_status_bar bool false", "0.000 title \"\"",
                     "0.000 set show_time_in_status_bar bool true", "0.000 title 25:00",
                     "0.000 set launch_at_login bool true", "0.000 login register",
                     "0.000 set launch_at_login bool true", "0.000 login register",
                     "0.000 set auto_check_update bool false"}));
    EXPECT_TRUE(settings["launchAtLogin"].on);
}

TEST(WorkflowPane, ANumberCountsWhenTheTypingPauses) {
    Settings settings("launch\n", {"title", "item"});
    EXPECT_EQ(settings.after([](auto& window) {
        window.typed("workTime", "");
        window.typed("workTime", "4");
    }),
              Lines{});
    EXPECT_EQ(settings.play("+0.9\n"), Lines{});
    settings.client().typed("workTime", "40");
    const int told = settings["workTime"].told;
    EXPECT_EQ(settings.play("+0.9\n"), Lines{});
    EXPECT_EQ(settings.play("+0.1\n"),
              (Lines{"1.900 set pref.work.time int 40", "1.900 log info ticktack timer stoped 1.0",
                     "1.900 log info ticktack timer start 2400"}));
    settings.client().typed("workTime", "40 ");
    EXPECT_EQ(settings.play("+5\n"), Lines{});
    EXPECT_EQ(settings["workTime"].told, told + 1) << "what is being typed is left alone";
}

TEST(WorkflowPane, ANumberCountsWhenTheProgramEndsBeforeTheTypingPauses) {
    Settings settings("launch\n", {"title", "item", "log"});
    EXPECT_EQ(settings.after([&](auto& window) {
        window.typed("breakTime", "20");
        window.typed("longBreakTime", "many");
        settings.play.desk.end();
    }),
              Lines{"0.000 set pref.break.time int 20"});
}

TEST(WorkflowPane, ANumberCountsAtOnceWhenTheFieldIsLeftButOnlyIfItIsAnother) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto enter = [&](const char* text) {
        return settings.after([&](auto& window) {
            window.typed("workTime", text);
            window.entered("workTime", text);
        });
    };
    EXPECT_EQ(enter(" \u00A030\u3000"), (Lines{"0.000 set pref.work.time int 30"}));
    EXPECT_EQ(settings["workTime"].text, "30");
    EXPECT_EQ(enter("4５"), (Lines{"0.000 set pref.work.time int 45"}));
    EXPECT_EQ(enter("045"), Lines{});
    EXPECT_EQ(enter("45"), Lines{});
    EXPECT_EQ(settings.play("+5\n"), Lines{});
    settings.play("store pref.work.time int 50\n");
    EXPECT_EQ(enter("45"), Lines{}) << "a field that was not edited writes nothing over another's number";
    EXPECT_EQ(settings["workTime"].text, "50");
}

TEST(WorkflowPane, WhatTheCycleCannotRunWithIsNeverStored) {
    Settings settings("launch\n", {"title", "item", "log"});
    const std::string problem = "Please enter a number from 1 to 100.";
    for (const char* text : {"101", "-1", "−1", "1.5", "4x", "1 0", "+4", "99999999999999999999"}) {
        settings.client().typed("shortBreakTimes", text);
        EXPECT_EQ(settings["shortBreakTimes"].problem, problem) << text;
    }
    for (const char* text : {"", " ", "0"}) {
        settings.client().typed("shortBreakTimes", "5");
        EXPECT_EQ(settings["shortBreakTimes"].problem, "");
        settings.client().typed("shortBreakTimes", text);
        EXPECT_EQ(settings["shortBreakTimes"].problem, "") << "it may become a number yet: " << text;
        EXPECT_EQ(settings.play("+1\n"), Lines{});
        EXPECT_EQ(settings["shortBreakTimes"].problem, problem);
    }
    const int told = settings["shortBreakTimes"].told;
    EXPECT_EQ(settings.after([](auto& window) { window.entered("shortBreakTimes", "0"); }), Lines{});
    EXPECT_GT(settings["shortBreakTimes"].told, told);
    EXPECT_EQ(settings["shortBreakTimes"].text, "4");
    EXPECT_EQ(settings["shortBreakTimes"].problem, problem) << "why the number came back";
    settings.play("+4.9\n");
    EXPECT_EQ(settings["shortBreakTimes"].problem, problem);
    settings.play("+0.1\n");
    EXPECT_EQ(settings["shortBreakTimes"].problem, "");
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
            return settings.after([&](auto& window) { window.entered(range.id, text); }).size();
        };
        EXPECT_EQ(enters(range.below) + enters(range.above), 0U) << range.id;
        EXPECT_EQ(enters(range.lowest), 1U) << range.id;
        settings.client().stepped(range.id, -1);
        EXPECT_EQ(settings[range.id].text, range.lowest);
        EXPECT_EQ(enters(range.highest), 1U) << range.id;
        settings.client().stepped(range.id, 1);
        EXPECT_EQ(settings[range.id].text, range.highest);
    }
}

TEST(WorkflowPane, StepsCountAtOnceAndFromWhatIsTyped) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto step = [&](int direction) {
        return settings.after([&](auto& window) { window.stepped("breakTime", direction); });
    };
    EXPECT_EQ(step(1), (Lines{"0.000 set pref.break.time int 301"}));
    EXPECT_EQ(step(-1), (Lines{"0.000 set pref.break.time int 300"}));
    settings.client().typed("breakTime", "60");
    EXPECT_EQ(step(1), (Lines{"0.000 set pref.break.time int 61"}));
    settings.client().typed("breakTime", "9999");
    EXPECT_EQ(step(1), (Lines{"0.000 set pref.break.time int 62"}));
    EXPECT_EQ(settings["breakTime"].problem, "");
    EXPECT_EQ(settings["breakTime"].text, "62");
    EXPECT_EQ(settings.play("+5\n"), Lines{});
}

TEST(WorkflowPane, ForeignNumbersAreShownAndStayUntilTheyAreEdited) {
    Settings settings("store pref.short.break.times int 0\nstore pref.work.time int 10000\n"
                      "store pref.break.time int -9223372036854775808\nlaunch\n",
                      {"title", "item", "log"});
    EXPECT_EQ(settings["shortBreakTimes"].text + " " + settings["workTime"].text + " " +
                  settings["breakTime"].text,
              "0 10000 -9223372036854775808");
    EXPECT_EQ(settings.after([](auto& window) {
        window.typed("shortBreakTimes", "0");
        window.entered("shortBreakTimes", "0");
    }),
              Lines{});
    EXPECT_EQ(settings["shortBreakTimes"].problem, "");
    EXPECT_EQ(settings.after([](auto& window) {
        window.closed();
        window.cameToFront();
    }),
              Lines{});
    EXPECT_EQ(settings.after([](auto& window) {
        window.stepped("shortBreakTimes", -1);
        window.stepped("workTime", 1);
        window.stepped("breakTime", -1);
    }),
              (Lines{"0.000 set pref.short.break.times int 1", "0.000 set pref.work.time int 600",
                     "0.000 set pref.break.time int 5"}));
}

TEST(WorkflowPane, ClosingKeepsAGoodNumberAndDropsABadOne) {
    Settings settings("launch\n", {"title", "item", "log"});
    EXPECT_EQ(settings.after([](auto& window) {
        window.typed("longBreakTime", "20");
        window.typed("breakTime", "60");
        window.typed("breakTime", "6000000");
        window.closed();
    }),
              (Lines{"0.000 set pref.long.break.time int 20"}));
    EXPECT_EQ(settings["breakTime"].text, "300");
    EXPECT_EQ(settings["breakTime"].problem, "");
    EXPECT_EQ(settings.play("+5\n"), Lines{});
}

TEST(WorkflowPane, ComingToTheFrontLeavesWhatIsTypedUnlessTheSettingChanged) {
    Settings settings("launch\n", {"title", "item", "log"});
    settings.client().typed("breakTime", "6o");
    const int told = settings["breakTime"].told;
    settings.client().cameToFront();
    EXPECT_EQ(settings["breakTime"].told, told);
    settings.play("store pref.break.time int 90\n");
    settings.client().cameToFront();
    EXPECT_EQ(settings["breakTime"].text, "90");
    EXPECT_EQ(settings["breakTime"].problem, "");
    settings.client().typed("breakTime", "60");
    EXPECT_EQ(settings.play("pref breakTime 45\n+5\n"), (Lines{"0.000 set pref.break.time int 45"}));
    EXPECT_EQ(settings["breakTime"].text, "45");
}

TEST(WorkflowPane, TheCustomPromptIsWrittenInPausesAndTypedOnlyWhileItIsWanted) {
    Settings settings("store break_prompt_text text a\nlaunch\n", {"title", "item", "log"});
    EXPECT_FALSE(settings["breakPrompt"].enabled);
    EXPECT_EQ(settings.after([](auto& window) { window.switched("customBreakPrompt", true); }),
              (Lines{"0.000 set custom_break_prompt bool true"}));
    EXPECT_TRUE(settings["breakPrompt"].enabled);
    settings.client().typed("breakPrompt", "ab");
    settings.client().typed("breakPrompt", "ab\\nc");
    EXPECT_EQ(settings.play("+1\n"), (Lines{"1.000 set break_prompt_text text ab\\nc"}));
    EXPECT_EQ(settings.after([](auto& window) {
        window.entered("breakPrompt", "ab\\nc");
        window.entered("breakPrompt", "");
    }),
              (Lines{"1.000 set break_prompt_text text "}));
    settings.play("store break_prompt_text text same\n");
    EXPECT_EQ(settings.after([](auto& window) { window.entered("breakPrompt", "same"); }), Lines{});
    settings.play.desk.store.put("break_prompt_text", std::string("two\nlines"));
    settings.client().cameToFront();
    EXPECT_EQ(settings["breakPrompt"].text, "two\\nlines");
    EXPECT_EQ(settings.after([](auto& window) { window.entered("breakPrompt", "two\\nlines"); }), Lines{});
    EXPECT_EQ(pref().breakPrompt(), "two\nlines");
}

TEST(WorkflowPane, AWorkTimeSetWhilePausedByHandWaits) {
    Settings settings("launch\nmenu pause\n", {"title", "item"});
    EXPECT_EQ(settings.after([](auto& window) { window.entered("workTime", "7"); }),
              (Lines{"0.000 set pref.work.time int 7"}));
}

TEST(StylePaneWindow, ChoosesStyleAndListAndShowsTheirPrompts) {
    Settings settings("launch\n", {"title", "item", "log"});
    const auto texts = [&](const char* id) {
        std::string all;
        for (const auto& choice : settings[id].choices)
            all += std::to_string(choice.value) + choice.text + " ";
        return all;
    };
    EXPECT_EQ(texts("breakStyle"), "0Default 1Relaxation 2Struggle ");
    EXPECT_EQ(texts("promptList"), "0Break 1New Day ");
    EXPECT_EQ(settings["promptEntries"].prompts, prompts(BreakStyle::default_));
    EXPECT_EQ(settings.after([](auto& window) { window.chosen("breakStyle", 2); }),
              (Lines{"0.000 set break_style int 2"}));
    EXPECT_EQ(settings["promptEntries"].prompts, prompts(BreakStyle::struggle));
    EXPECT_EQ(settings.after([](auto& window) { window.chosen("promptList", 1); }), Lines{});
    EXPECT_EQ(settings["promptList"].chosen, 1);
    EXPECT_EQ(settings["promptEntries"].prompts, newDayPrompts(BreakStyle::struggle));
    settings.play("pref breakStyle relaxation\n");
    EXPECT_EQ(settings["promptEntries"].prompts, newDayPrompts(BreakStyle::relaxation));
}

TEST(StylePaneWindow, EditsTheListAsItIsStored) {
    Settings settings("store break_prompt_list_0 list [\"a\",\"b\"]\nlaunch\n", {"title", "item", "log"});
    const std::string lengthy = std::string(5000, 'x') + "\\ny";
    settings.client().promptAdded("promptEntries", lengthy);
    settings.client().promptEdited("promptEntries", "a", "c");
    EXPECT_EQ(settings["promptEntries"].prompts, (std::vector<std::string>{lengthy, "c", "b"}));
    settings.play("store break_prompt_list_0 list [\"from another program\"]\n");
    EXPECT_EQ(settings.after([](auto& window) { window.promptAdded("promptEntries", "d"); }),
              (Lines{"0.000 set break_prompt_list_0 list [\"d\",\"from another program\"]"}));
    const int told = settings["promptEntries"].told;
    EXPECT_EQ(settings.after([](auto& window) {
        window.promptAdded("promptEntries", "");
        window.promptEdited("promptEntries", "d", "");
    }),
              Lines{});
    EXPECT_GT(settings["promptEntries"].told, told) << "what was emptied comes back";
    settings.client().promptDeleted("promptEntries", "d");
    settings.client().promptDeleted("promptEntries", "from another program");
    EXPECT_TRUE(settings["promptEntries"].prompts.empty());
    settings.client().promptsReset("promptEntries");
    EXPECT_EQ(settings["promptEntries"].prompts, prompts(BreakStyle::default_));
    EXPECT_EQ(settings.play.desk.store.texts("break_prompt_list_0"), prompts(BreakStyle::default_));
}

TEST(StylePaneWindow, FollowsAnotherStyleObject) {
    Settings settings("launch\n", {"title", "item", "log"});
    AppState::prefState().setStyleState(std::make_unique<PrefStyleState>(settings.play.desk.store));
    settings.play("pref breakStyle struggle\n");
    EXPECT_EQ(settings["breakStyle"].chosen, 2);
    EXPECT_EQ(settings["promptEntries"].prompts, prompts(BreakStyle::struggle));
    settings.client().chosen("breakStyle", 1);
    EXPECT_EQ(AppState::prefState().styleState().breakStyle(), BreakStyle::relaxation);
}

class NamedFont final : public Fonts {
  public:
    [[nodiscard]] std::optional<std::vector<unsigned char>> fontAsset(const std::string&) const override {
        return std::vector<unsigned char>{1};
    }
    [[nodiscard]] std::optional<std::string> registerFont(const std::vector<unsigned char>&) override {
        return std::nullopt;
    }
    [[nodiscard]] std::optional<GlyphImage> drawGlyph(const std::string&, const std::string&,
                                                      double) override {
        return std::nullopt;
    }
};

TEST(AboutPane, TellsOfTheProgramUnderItsPicture) {
    test::Play play;
    play.desk.system.infos["CFBundleShortVersionString"] = std::string("2.3.4");
    play.desk.system.infos["CFBundleVersion"] = std::string("56");
    play("launch\nmenu settings\n");
    const auto about = play.desk.services.preferences().layout().panes[4].about;
    ASSERT_TRUE(about);
    EXPECT_EQ(about->icon + about->glyph + about->glyphFont, "app.orvane.Kelpa");
    EXPECT_EQ(about->name + " " + about->version, "Kelpa v2.3.4(56)");
    EXPECT_EQ(about->link, "Release Notes");
    EXPECT_EQ(about->linkAddress.substr(0, 8), "https://");
}

TEST(AboutPane, TellsTheYearInWhichItIsLookedAt) {
    test::Play play;
    play("start 2026-12-31T23:59:00\nlaunch\nmenu settings\n");
    const auto copyright = [&] { return play.desk.services.preferences().copyright().substr(0, 17); };
    EXPECT_EQ(copyright(), "Copyright © 2026");
    play("+61\n");
    EXPECT_EQ(copyright(), "Copyright © 2026");
    play("menu settings\n");
    EXPECT_EQ(copyright(), "Copyright © 2027");
}

TEST(AboutPane, ShowsItsGlyphWhereThereIsNoPicture) {
    test::Play play;
    play.desk.system.icon = std::nullopt;
    play("launch\n");
    NamedFont fonts;
    IconFont::wire(fonts);
    play("menu settings\n");
    const auto about = play.desk.services.preferences().layout().panes[4].about;
    ASSERT_TRUE(about);
    EXPECT_EQ(about->icon, "");
    EXPECT_EQ(about->glyph, "\uE64B");
    EXPECT_EQ(about->glyphFont, "iconfont");
}

} // namespace
} // namespace kelpa
