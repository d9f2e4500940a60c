#include "app/AppState.h"
#include "tests/core/Play.h"
#include "ui/WindowController.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// A desk with a minute of work before each break, on which breaks are held. The journal keeps what is asked,
/// the log and the windows.
class Hold : public Play {
  public:
    explicit Hold(const std::string& more = "")
        : Play({"hint", "title", "count", "item", "set", "app", "break"}) {
        (*this)(mouseMayRest + "store pref.work.time int 1\nstore pref.break.hold bool true\n" + more +
                "launch\n");
    }
    /// Plays a script and tells what was asked in it.
    Lines asked(const std::string& script) { return only((*this)(script), {" busy "}); }
    static bool breakShows() { return WindowController::breakShows(); }
};

const Lines nothing;
const std::string asks = "busy asked sound camera fullscreen awake";

TEST(BreakHold, whileItWaitsTheCountStaysAndOnlyEachMinuteAsks) {
    Hold hold;
    EXPECT_EQ(hold("busy camera\n+60\n").back(), "60.000 log info the break waits: camera");
    EXPECT_EQ(AppState::breakHold().heldBy(), BusyReason::Camera);
    EXPECT_EQ(hold.desk.statusBar.title, "");
    EXPECT_EQ(hold("+59.5\n"), nothing);
    EXPECT_TRUE(AppState::workState().timesUp.value());
    EXPECT_EQ(AppState::promptState().lastKind(), BreakKind::None);
    // Two reasons that end one after the other.
    EXPECT_EQ(hold("busy sound camera\n+60\n"),
              (Lines{"120.000 " + asks, "120.000 log info the break waits: sound"}));
    EXPECT_EQ(hold("busy camera\n+60\n").back(), "180.000 log info the break waits: camera");
    const Lines comes = hold("busy none\n+60\n");
    EXPECT_EQ(comes.at(1), "240.000 log info the break waits no longer");
    EXPECT_EQ(comes.at(3), "240.000 window show 1");
    EXPECT_EQ(AppState::promptState().lastKind(), BreakKind::Short);
    EXPECT_EQ(hold.asked("+30\nskip 1\n+59\n"), nothing);
}

TEST(BreakHold, movesTheCycleNoFurtherThanABreakThatDidNotWait) {
    Hold hold("store pref.short.break.times int 2\nstore force_long_break bool true\n");
    hold("+60\nskip 1\nbusy sound\n+60\n");
    EXPECT_EQ(AppState::breakHold().heldBy(), BusyReason::Sound)
        << "a forced long break waits like any other";
    hold("+240\nbusy none\n+60\n");
    EXPECT_EQ(AppState::promptState().lastKind(), BreakKind::Long);
    EXPECT_EQ(hold.desk.time.seconds(), 420);
}

TEST(BreakHold, waitsForAnHourAtMostOrWhatIsChosen) {
    Hold hold;
    hold("busy awake\n+60\n+3599\n");
    EXPECT_FALSE(Hold::breakShows());
    EXPECT_EQ(hold("+1\n").at(0), "3660.000 log info the break has waited for 60 minutes and comes");
    EXPECT_TRUE(Hold::breakShows());
    // Its hour begins anew with the next break. What nobody may choose counts as the nearest that may be.
    hold("skip 1\npref holdLimit 1\n+60\n+899\n");
    EXPECT_FALSE(Hold::breakShows());
    hold("+1\n");
    EXPECT_TRUE(Hold::breakShows());
    hold("skip 1\npref holdLimit 1000\n+60\n+7199\n");
    EXPECT_FALSE(Hold::breakShows());
    hold("+1\n");
    EXPECT_TRUE(Hold::breakShows());
}

TEST(BreakHold, anAnswerHasTwoSeconds) {
    Hold hold;
    EXPECT_EQ(hold("busy sound\nbusy answers never\n+60\n+1.5\n").back(), "60.000 " + asks);
    EXPECT_FALSE(AppState::breakHold().heldBy());
    const Lines lines = hold("+0.5\n");
    EXPECT_EQ(lines.at(0),
              "62.000 log warning Whether somebody is busy was not answered within two seconds, which counts "
              "as not busy");
    EXPECT_EQ(lines.at(1), "62.000 busy given up");
    EXPECT_TRUE(Hold::breakShows());
    // One that is late but in time holds.
    hold("skip 1\nbusy answers 1.9\n+60\n+1.9\n");
    EXPECT_EQ(AppState::breakHold().heldBy(), BusyReason::Sound);
    EXPECT_EQ(hold.asked("+59.9\n"), nothing) << "a minute from the answer on";
    EXPECT_EQ(hold.asked("+1\n").size(), 1U);
}

TEST(BreakHold, asksOnlyForWhatWasChosen) {
    Hold hold("store pref.break.hold.sound bool false\nstore pref.break.hold.awake bool false\n");
    EXPECT_EQ(hold.asked("busy sound\n+60\n"), (Lines{"60.000 busy asked camera fullscreen"}));
    EXPECT_TRUE(Hold::breakShows());
    EXPECT_EQ(hold.asked("skip 1\npref holdForCamera false\npref holdForFullScreen false\n+60\n"), nothing);
    EXPECT_TRUE(Hold::breakShows()) << "where nothing is chosen nothing is asked";
}

TEST(BreakHold, whatEndsWorkEndsTheWaitAndItsHour) {
    Hold hold("store show_new_day_tip bool true\nstore last_weakup_timestamp real 0\n");
    const std::string waits = "busy sound\n+60\n+600\n";
    for (const char* end : {"menu pause\n", "lock\n", "pref workTime 1\n"}) {
        hold(waits);
        ASSERT_TRUE(AppState::breakHold().heldBy()) << end;
        hold(end);
        EXPECT_FALSE(AppState::breakHold().heldBy()) << end;
        EXPECT_EQ(hold.asked("+59\n"), nothing) << end;
        hold("unlock\npref workTime 1\n");
        if (AppState::manualPause())
            hold("menu pause\n");
    }
    // The five minutes without the mouse.
    hold("pref stopTimerAfterMouseStop true\nactivity\n+60\n");
    EXPECT_TRUE(AppState::breakHold().heldBy());
    hold("+240\n");
    EXPECT_FALSE(AppState::working());
    EXPECT_FALSE(AppState::breakHold().heldBy());
    EXPECT_EQ(hold.asked("+600\n"), nothing);
    // A new day greets, and its break is no held one.
    hold("pref stopTimerAfterMouseStop false\npref workTime 1\npref restartTimerAfterAwake "
         "false\nlock\nclock +86400\n+60\n+1\n");
    ASSERT_TRUE(AppState::breakHold().heldBy());
    hold("unlock\n");
    EXPECT_EQ(AppState::promptState().lastKind(), BreakKind::NewDay);
    EXPECT_FALSE(AppState::breakHold().heldBy());
    EXPECT_EQ(hold.asked("+69\n"), nothing) << "its ten seconds and the work period after them";
    EXPECT_EQ(hold.asked("+1\n").size(), 1U);
}

TEST(BreakHold, aLockThatStopsNothingOnlyBeginsTheWaitAnew) {
    Hold hold("store restart_timer_after_awake bool false\n");
    hold("busy sound\n+60\n+3000\n");
    hold("lock\n");
    EXPECT_FALSE(AppState::breakHold().heldBy());
    EXPECT_EQ(hold.asked("+1\n").size(), 1U) << "the break is still due";
    hold("+3599\n");
    EXPECT_FALSE(Hold::breakShows()) << "and has an hour of its own";
    hold("+1\n");
    EXPECT_TRUE(Hold::breakShows());
}

TEST(BreakHold, theBreakComesAtOnceWhenItIsSwitchedOff) {
    Hold hold;
    hold("busy sound\n+60\n+10\npref holdBreaks false\n");
    EXPECT_TRUE(Hold::breakShows());
    EXPECT_EQ(hold.asked("+100\n"), nothing);
    hold("skip 1\npref holdBreaks true\nbusy answers never\n+60\n+1\n");
    EXPECT_FALSE(Hold::breakShows());
    EXPECT_EQ(hold("pref holdBreaks false\n").at(0), "231.000 busy given up")
        << "also while the answer is out";
    EXPECT_TRUE(Hold::breakShows());
    // Another program's change is seen with the next question.
    hold("skip 1\npref holdBreaks true\nbusy answers 0\n+60\nstore pref.break.hold bool false\n+59\n");
    EXPECT_FALSE(Hold::breakShows());
    EXPECT_EQ(hold.asked("+1\n"), nothing);
    EXPECT_TRUE(Hold::breakShows());
}

TEST(BreakHold, whoAsksForTheBreakGetsItAndWhoAsksForMoreTimeGetsThat) {
    Hold hold;
    hold("busy sound\n+60\n+100\n");
    AppState::breakNotice().start();
    EXPECT_FALSE(AppState::breakHold().heldBy());
    EXPECT_EQ(hold.asked("+1\n"), nothing);
    EXPECT_TRUE(Hold::breakShows());
    hold("skip 1\n+60\n+100\n");
    ASSERT_TRUE(AppState::breakHold().heldBy());
    AppState::breakNotice().giveMore(2);
    EXPECT_FALSE(AppState::breakHold().heldBy());
    EXPECT_EQ(hold.asked("+119\n"), nothing);
    EXPECT_EQ(hold.asked("+1\n").size(), 1U) << "and is held again then";
}

TEST(BreakHold, theNoticeStaysAwayFromThoseWhoAreBusy) {
    Hold hold("store pref.work.time int 2\nstore pref.break.notice int 30\n");
    const auto notified = [&](const std::string& script) {
        return only(hold(script), {" busy ", " notification "});
    };
    EXPECT_EQ(notified("busy sound\n+119\n"), (Lines{"90.000 " + asks}));
    EXPECT_EQ(notified("busy none\n+1\n"), (Lines{"120.000 " + asks}));
    // Nobody is busy: it comes with the answer, and tells what is left then.
    EXPECT_EQ(notified("skip 1\nbusy answers 1.5\n+92\n").at(1).substr(0, 70),
              "211.500 notification \"A short break is near\" \"It begins in 29 seconds.");
    EXPECT_EQ(notified("pref workTime 2\n+91\nmenu pause\n+5\n"),
              (Lines{"212.000 notification withdrawn", "302.000 " + asks, "303.000 busy given up"}));
}

TEST(BreakHold, withoutAnybodyToAskNothingIsHeld) {
    Play play({"count", "item", "set", "app", "break"});
    play.desk.offered().busy = nullptr;
    play(mouseMayRest + "store pref.work.time int 1\nstore pref.break.hold bool true\nlaunch\n+60\n");
    EXPECT_TRUE(WindowController::breakShows());
}

TEST(BreakHold, monitorsMayGoWhileABreakWaits) {
    Hold hold("screens 1 2\n");
    hold("busy fullscreen\n+60\nscreens 2\n+30\nscreens\n+30\nscreens 3\nbusy none\n+60\n");
    EXPECT_TRUE(Hold::breakShows());
    EXPECT_TRUE(hold.desk.windows.skip(3));
}

} // namespace
} // namespace kelpa::test
