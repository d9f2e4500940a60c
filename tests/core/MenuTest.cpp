#include "app/AppInfo.h"
#include "app/AppState.h"
#include "tests/core/Play.h"
#include "ui/StatusBarController.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// The menu as a person reads it: image, title, key; "-" for a separator, brackets for a disabled line.
/// Behind it stand what menus that call by name call, and the tag.
Lines shown(const Play& play) {
    Lines lines;
    for (const MenuLine& line : play.desk.statusBar.lines) {
        std::string text = line.image + "|" + line.title + "|" + line.keyEquivalent + "|" + line.action;
        if (line.tag != 0)
            text += std::to_string(line.tag);
        if (line.separator)
            text = "-";
        lines.push_back(line.enabled || line.separator ? text : "[" + text + "]");
    }
    return lines;
}

TEST(Menu, HasItsLinesInOrder) {
    Play play;
    play("launch\n");
    EXPECT_EQ(shown(play), (Lines{"[|    Kelpa - v1.0.0(1)||]", "-", "stop.circle|- Stop -|p|didClickPause2",
                                  "gearshape.circle|Settings...|,|didClickSettings", "-",
                                  "arrow.counterclockwise.icloud|Check for Updates...||didClickUpdates",
                                  "mail.stack|Feedback...||didClickFeedback",
                                  "info.circle|About...||didClickAbout", "escape|Quit|q|didClickQuit"}));
}

TEST(Menu, WaterLineComesOnceAndGoesOnce) {
    Play play({"title", "log"});
    play("start 2026-11-23T12:00:00\nstore pref.water.finished int 600\nlaunch\n");
    StatusBarController::updateWaterItem();
    StatusBarController::removeWaterItem();
    EXPECT_EQ(play(""), Lines{});
    StatusBarController::insetWaterItem();
    StatusBarController::insetWaterItem();
    play("pref finished 1875\n");
    const int removed = play.desk.statusBar.lines.at(3).id;
    StatusBarController::removeWaterItem();
    StatusBarController::removeWaterItem();
    for (const int withoutAction : {removed, play.desk.statusBar.lines.at(0).id, -1})
        StatusBarController::menu().didClick(withoutAction);
    const auto& lines = play.journal.lines();
    EXPECT_EQ(Lines(lines.begin() + 1, lines.end()),
              (Lines{"0.000 item water inserted 3 \"Water (40% )\"", "0.000 set pref.water.finished int 1875",
                     "0.000 item water \"Water (125% )\"", "0.000 water finished 1875",
                     "0.000 item water removed"}));
}

TEST(Menu, WaterLineIsThereFromTheStartWhereTheReminderIsOn) {
    Play play({"title", "log", "set"});
    play("start 2026-11-23T21:00:00\nstore pref.water.enable bool true\nlaunch\n");
    ASSERT_EQ(shown(play).size(), 10U);
    EXPECT_EQ(shown(play)[3], "drop.triangle|Water (0% Out of hours)|r|didClickWater3");
}

TEST(Menu, WhatThePlatformDoesNotHaveIsDisabled) {
    Play play({"title", "log", "item"});
    play.desk.offered() = {};
    play("launch\n");
    EXPECT_EQ(shown(play),
              (Lines{"[|    Kelpa - v1.0.0(1)||]", "-", "stop.circle|- Stop -|p|didClickPause2",
                     "[gearshape.circle|Settings...|,|]", "-",
                     "[arrow.counterclockwise.icloud|Check for Updates...||]", "[mail.stack|Feedback...||]",
                     "[info.circle|About...||]", "escape|Quit|q|didClickQuit"}));
    EXPECT_EQ(play("pref launchAtLogin true\nmenu about\n"),
              (Lines{"0.000 set launch_at_login bool true", "0.000 refused menu about"}));
}

TEST(Menu, ServicesAreCalled) {
    Play play({"title", "log", "item"});
    play("launch\n");
    EXPECT_EQ(play("menu settings\nmenu updates\nmenu about\nmenu feedback\n"),
              (Lines{"0.000 settings", "0.000 app activate", "0.000 updater check", "0.000 about",
                     "0.000 app activate", "0.000 mail \"Kelpa Feedback\""}));
    const Mail& mail = play.desk.services.lastMail;
    EXPECT_EQ(mail.body, "Please use Chinese or English in your mail, if you can.\n\n\n\n\n\n\n\n"
                         "App version: v1.0.0(1)\nDevice model: x86_64\nSystem version: 12.0.0\n");
    EXPECT_EQ(mail.attachment,
              "/home/desk/app.orvane.Kelpa/Library/Caches/Logs/app.orvane.Kelpa.20260105.log");
    EXPECT_EQ(mail.recipient, AppInfo::feedbackMailbox());
    EXPECT_NE(mail.recipient.find('@'), std::string::npos);
    const AboutContent& about = play.desk.services.lastAbout;
    EXPECT_EQ(about.icon + "|" + about.name + "|" + about.version + "|" + about.copyright + "|" + about.link,
              "app.orvane.Kelpa|Kelpa|v1.0.0(1)|Copyright © 2026 The Kelpa Authors.|Release Notes");
    EXPECT_EQ(about.linkAddress, AppInfo::releaseNotesLink());
    EXPECT_EQ(play("menu water\nmenu quit\n+100\n"), (Lines{"0.000 refused menu water", "0.000 app quit"}));
}

TEST(Title, GoesAndComesWithThePreference) {
    Play play({"log", "item", "window", "app", "break", "set", "count"});
    play("store pref.work.time int 1\nlaunch\n+10\n");
    EXPECT_EQ(play("pref showTime false\n+5\npref showTime true\n"),
              (Lines{"10.000 title \"\"", "15.000 title 00:45"}));
    // Once time is up the title stays empty whatever the preference, and comes back with the next work
    // period.
    EXPECT_EQ(play("+45\npref showTime false\npref showTime true\n").back(), "60.000 title \"\"");
    EXPECT_EQ(play("+300\n"), (Lines{"360.000 title 00:00", "360.000 title 01:00"}));
}

TEST(Title, AForeignChangeIsSeenAtTheNextTick) {
    Play play({"log", "item"});
    play("launch\n+1\n");
    EXPECT_EQ(play("store show_time_in_status_bar bool false\n+0.5\n+0.5\n"), (Lines{"2.000 title \"\""}));
    EXPECT_EQ(play("store show_time_in_status_bar text yes\n+1\n"), (Lines{"3.000 title 24:57"}));
}

} // namespace
} // namespace kelpa::test
