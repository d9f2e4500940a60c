#include "app/AppState.h"
#include "tests/core/Play.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// A desk with two minutes of work before each break, on which a word is given half a minute before. The
/// journal keeps what is notified, the countdown's beginnings and the windows.
class Notice : public Play {
  public:
    explicit Notice(const std::string& more = "") : Play({"title", "count", "item", "set", "app", "break"}) {
        (*this)(mouseMayRest + "store pref.work.time int 2\nstore pref.break.notice int 30\n" + more +
                "launch\n");
    }
    /// Only what is notified, of the lines that a script adds.
    Lines told(const std::string& script) { return only((*this)(script), {" notification ", " refused "}); }
    [[nodiscard]] const std::function<void(const std::string&)>& listener() {
        return desk.services.notifications.listener();
    }
};

const Lines nothing;
const std::string shortBreak =
    R"(notification "A short break is near" "It begins in 30 seconds." 30 start "Start now" more "5 more minutes")";

TEST(BreakNotice, comesWithTheTickAtItsTimeAndGoesWithTheCount) {
    Notice notice;
    EXPECT_EQ(notice("+89\n"), nothing);
    EXPECT_EQ(notice("+1\n"), (Lines{"90.000 " + shortBreak}));
    EXPECT_EQ(notice("+29\n"), nothing);
    EXPECT_EQ(
        notice("+1\n"),
        (Lines{"120.000 notification withdrawn", "120.000 log info ticktack timer timesup for 120",
               "120.000 window made 1 0,0 1920x1080 level=25", "120.000 window show 1",
               "120.000 log info ticktack timer stoped 1.0", "120.000 log info ticktack timer start 300"}));
}

TEST(BreakNotice, isNotGivenWhereThePeriodIsNoLongerThanTheLead) {
    Notice notice("store pref.work.time int 1\nstore pref.break.notice int 60\n");
    EXPECT_EQ(notice.told("+60\nskip 1\n+60\nskip 1\n"), nothing) << "nor at the beginning of a period";
    // A minute of more time is none either, and what begins when little is left begins anew.
    EXPECT_EQ(notice.told("pref workTime 2\n+50\npref workTime 1\n+60\n"), nothing);
    EXPECT_EQ(notice.told("skip 1\npref workTime 2\n+60\n").size(), 1U);
}

TEST(BreakNotice, isNothingWhereItIsOffAndFollowsTheSetting) {
    Notice notice("store pref.break.notice int 0\n");
    EXPECT_EQ(notice.told("+70\npref breakNotice 60\n+10\n"), nothing) << "its moment had passed";
    EXPECT_EQ(notice.told("pref breakNotice 30\n+10\n").size(), 1U);
    EXPECT_EQ(notice.told("pref breakNotice 0\n"), (Lines{"90.000 notification withdrawn"}));
    EXPECT_EQ(notice.told("+30\nstore pref.break.notice int -5\nskip 1\n+120\n"), nothing);
    EXPECT_EQ(notice.told("store pref.break.notice int 10\nskip 1\n+110\n").size(), 1U)
        << "what another program stores holds from the next period on";
}

TEST(BreakNotice, tellsTheKindWithoutMovingTheCycle) {
    Notice notice("store pref.short.break.times int 2\n");
    for (int cycle = 0; cycle < 2; ++cycle) {
        EXPECT_NE(notice.told("+90\n").at(0).find("A short break"), std::string::npos);
        EXPECT_NE(notice.told("+30\nskip 1\n+90\n").at(1).find("A long break"), std::string::npos);
        notice("+30\nskip 1\n");
    }
    EXPECT_NE(notice.told("store pref.short.break.times int 0\n+90\n").at(0).find("A short break"),
              std::string::npos)
        << "a cycle of 0 is the break's affair";
}

TEST(BreakNotice, startsTheBreakByTheOnePlaceThatBringsBreaks) {
    Notice notice;
    notice("+95\n");
    EXPECT_EQ(notice("notification start\n"),
              (Lines{"95.000 notification withdrawn", "95.000 log info ticktack timer stoped 1.0",
                     "95.000 log info ticktack timer start 0"}));
    EXPECT_EQ(notice.desk.statusBar.title, "00:00");
    EXPECT_TRUE(AppState::breakNotice().coming().started);
    EXPECT_EQ(notice("+1\n").at(0), "96.000 log info ticktack timer timesup for 0");
    EXPECT_EQ(notice.desk.statusBar.title, "");
    EXPECT_FALSE(AppState::breakNotice().coming().started);
    notice("skip 1\n");
    EXPECT_EQ(notice.told("+89\n"), nothing) << "the next period is a full one";
    EXPECT_EQ(notice.told("+1\n").size(), 1U);
}

TEST(BreakNotice, givesMoreTimeThreeTimesForOneBreak) {
    Notice notice("store pref.break.more int 3\n");
    notice("+90\n");
    for (int given = 1; given <= 3; ++given) {
        EXPECT_TRUE(notice("notification more\n").back().ends_with(" log info ticktack timer start 180"));
        EXPECT_EQ(AppState::breakNotice().coming().postponed, given);
        const Lines told = notice.told("+150\n");
        ASSERT_EQ(told.size(), 1U);
        EXPECT_EQ(told[0].find(R"(more "3 more minutes")") == std::string::npos, given == 3);
    }
    EXPECT_EQ(notice.told("notification more\n").at(0).substr(8), "refused notification more");
    notice("+30\n");
    EXPECT_EQ(AppState::breakNotice().coming().postponed, 0);
    EXPECT_NE(notice.told("skip 1\n+90\n").at(0).find("more"), std::string::npos)
        << "counted anew for the next break";
    EXPECT_NE(notice.told("notification more\npref workTime 2\n+90\n").back().find("more"),
              std::string::npos);
    EXPECT_EQ(AppState::breakNotice().coming().postponed, 0) << "and by a full work period";
}

TEST(BreakNotice, offersAndGivesNoMoreTimeBeforeAForcedLongBreak) {
    const std::string forced = "store pref.short.break.times int 1\nstore force_long_break bool true\n";
    Notice notice(forced);
    EXPECT_EQ(
        notice.told("+90\n"),
        (Lines{
            R"(90.000 notification "A long break is near" "It begins in 30 seconds." 30 start "Start now")"}));
    notice.listener()("more");
    EXPECT_EQ(notice("+1\n"), nothing);
    EXPECT_EQ(AppState::breakNotice().coming().postponed, 0);
}

TEST(BreakNotice, goesWhenWhatItOffersHoldsNoMore) {
    Notice notice("store pref.short.break.times int 1\n");
    for (const char* change : {"pref forceLongBreak true\n+1\n", "pref shortBreakTimes 4\n+1\n",
                               "pref moreTime 10\n+1\n", "menu pause\n", "lock\n", "pref workTime 2\n"}) {
        notice("pref forceLongBreak false\npref shortBreakTimes 1\npref moreTime 5\npref workTime 2\n+90\n");
        const Lines told = notice.told(change);
        ASSERT_EQ(told.size(), 1U) << change;
        EXPECT_NE(told[0].find("notification withdrawn"), std::string::npos) << change;
        notice("unlock\n");
        if (AppState::manualPause())
            notice("menu pause\n");
    }
}

TEST(BreakNotice, askedAgainWhenItIsPressedLateOrTwice) {
    Notice notice;
    notice("+90\n");
    const auto pressed = notice.listener();
    // Forced meanwhile, without a tick in between that would have taken the offer away.
    notice("pref shortBreakTimes 1\npref forceLongBreak true\n");
    pressed("more");
    EXPECT_EQ(notice("+1\n"), nothing) << "the period goes on";
    notice("pref forceLongBreak false\npref shortBreakTimes 4\npref workTime 2\n+90\n");
    notice.listener()("bogus");
    EXPECT_EQ(notice("+1\n"), nothing);
    notice("pref workTime 2\n+90\n");
    const auto twice = notice.listener();
    twice("more");
    twice("more");
    twice("start");
    EXPECT_EQ(AppState::breakNotice().coming().postponed, 1);
    EXPECT_EQ(AppState::workState().timeString.value(), "05:00");
    notice("menu pause\n");
    pressed("start");
    EXPECT_EQ(notice("+5\n"), nothing) << "paused";
}

TEST(BreakNotice, isGivenNowhereWithoutNotifications) {
    Play play({"title", "count", "item", "set", "app", "break", "log", "window"});
    play.desk.offered().notifications = nullptr;
    EXPECT_EQ(
        play(mouseMayRest + "store pref.work.time int 2\nstore pref.break.notice int 30\nlaunch\n+119\n"),
        nothing);
    AppState::breakNotice().giveMore(5);
    EXPECT_EQ(AppState::workState().timeString.value(), "05:00") << "scripts ask all the same";
}

} // namespace
} // namespace kelpa::test
