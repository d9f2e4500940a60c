#include "app/AppState.h"
#include "tests/core/Play.h"
#include "timer/TicktackController.h"
#include "ui/WindowController.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

constexpr const char* inABreak = "store pref.work.time int 1\nstore pref.break.time int 30\nlaunch\n+61\n";

TEST(Windows, FadeInFromNothingAndOutWithinTwoSeconds) {
    Play play({"log", "title", "count", "item", "break", "app"});
    play("launch\n");
    play.journal.hearAsides();
    WindowController::showBreak();
    WindowController::closeBreak();
    play("+2\n");
    EXPECT_EQ(play.journal.lines(),
              (Lines{"0.000 window made 1 0,0 1920x1080 level=25", "0.000 window alpha 1 0.0",
                     "0.000 window fade 1 1.0 in 2.0", "0.000 window show 1",
                     "0.000 window fade 1 0.0 in 2.0", "0.000 window closing 1", "2.000 window closed 1"}));
}

TEST(Windows, AShowCallsOffTheCloseUnderWay) {
    Play play({"log", "title", "count", "item", "break", "app"});
    play(inABreak);
    WindowController::closeBreak();
    play("+1\n");
    WindowController::showBreak();
    EXPECT_EQ(play("+5\n"), Lines{});
    WindowController::closeBreak();
    EXPECT_EQ(play("+2\n"), (Lines{"69.000 window closed 1"}));
}

TEST(Windows, AScreenThatAppearsDuringABreakIsCoveredAndEndsIt) {
    Play play({"log", "title", "count", "item", "break"});
    play(inABreak);
    EXPECT_EQ(play("screens 1 2\n"), (Lines{"61.000 window made 2 1920,0 1920x1080 level=25",
                                            "61.000 window show 2", "61.000 app activate"}));
    const auto& first = *play.desk.windows.breakScreen(1);
    const auto& added = *play.desk.windows.breakScreen(2);
    EXPECT_EQ(added.prompt + added.count + added.texts.skip, first.prompt + first.count + first.texts.skip);
    EXPECT_TRUE(added.skipOffered);
    EXPECT_EQ(play("skip 2\n"),
              (Lines{"61.000 window closing 1", "61.000 window closing 2", "61.000 app deactivate"}));
    EXPECT_EQ(play("screens 1 2 3\n+2\n"), (Lines{"63.000 window closed 1", "63.000 window closed 2"}));
}

TEST(Windows, TheWindowOfALostScreenGoesWithIt) {
    Play play({"log", "title", "count", "item", "break"});
    play(std::string("screens 1 2\n") + inABreak);
    EXPECT_EQ(play("screens 1\n"), (Lines{"61.000 window closed 2"}));
    EXPECT_EQ(play("screens 2 1\n"), (Lines{"61.000 window show 2", "61.000 app activate"}));
    EXPECT_EQ(play("skip 1\nscreens 1\n+2\n"),
              (Lines{"61.000 window closing 2", "61.000 window closing 1", "61.000 app deactivate",
                     "61.000 window closed 2", "63.000 window closed 1"}));
}

TEST(Windows, OutsideABreakScreensComeAndGoQuietly) {
    Play play({"log", "title", "count", "item", "break"});
    EXPECT_EQ(play("launch\n+5\nscreens 1 2\nscreens 2\nscreens\n+5\n"), Lines{});
}

TEST(BreakScreen, ShowsBackslashAndNAsALineBreakAndFollowsTheState) {
    Play play({"title"});
    play("store custom_break_prompt bool true\nstore break_prompt_text text one\\ntwo\n");
    play(inABreak);
    EXPECT_EQ(AppState::promptState().prompt.value(), "one\\ntwo");
    const auto* screen = play.desk.windows.breakScreen(1);
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(screen->prompt, "one\ntwo");
    EXPECT_EQ(screen->count, "00:29");
    EXPECT_TRUE(screen->skipOffered);
    EXPECT_EQ(screen->texts.newFeature + screen->texts.waterReminder + screen->texts.linkSymbol +
                  screen->texts.hint + screen->texts.skip,
              "New Feature:Water Reminderchevron.forwardYou can enable it in the preference panel.Skip");
}

TEST(BreakScreen, MadeAfterABreaksEndItIsNotToldOfThatEnd) {
    Play play({"title", "count", "item", "break", "app"});
    play("launch\n");
    TicktackController::break_(1);
    play("+2\n");
    WindowController::closeBreak();
    WindowController::showBreak();
    EXPECT_EQ(play("+30\n"), Lines{});
}

} // namespace
} // namespace kelpa::test
