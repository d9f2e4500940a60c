#include "app/RemoteControl.h"

#include "app/AppState.h"
#include "base/Text.h"
#include "tests/core/Play.h"
#include "ui/WindowController.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using State = RemoteStatus::State;

constexpr const char* settings = "store pref.work.time int 1\nstore pref.break.time int 30\n"
                                 "store pref.long.break.time int 70\nstore pref.short.break.times int 2\n";

/// A desk with a script's grip on it. The journal keeps the log and the windows.
class Remote : public Play {
  public:
    explicit Remote(const std::string& more = "") : Play({"title", "count", "item", "set", "app"}) {
        (*this)(settings + more + "launch\n");
    }

    static std::string now() {
        const RemoteStatus status = RemoteControl::status();
        return std::string(nameOf(status.state)) + " " + status.time + " " +
               std::string(nameOf(status.breakKind)) + (status.paused ? " paused" : "");
    }
    static std::string said(RemoteControl::Refusal refusal) { return std::string(refusal.value_or("")); }
    /// What the desk notes while a request is obeyed, and its refusal behind it.
    Lines after(RemoteControl::Refusal (RemoteControl::*verb)()) {
        RemoteControl::Refusal refusal;
        Lines noted = during([&] { refusal = (control.*verb)(); });
        if (refusal)
            noted.push_back("refused: " + std::string(*refusal));
        return noted;
    }

    RemoteControl control{desk.services, time};
};

const Lines nothing;

TEST(RemoteControl, tellsTheStateOfACycle) {
    Remote remote;
    EXPECT_EQ(Remote::now(), "working 01:00 none");
    remote("+60\n");
    EXPECT_EQ(Remote::now(), "break 00:30 short");
    remote("+30\n");
    EXPECT_EQ(Remote::now(), "working 01:00 none");
    remote("+60\n+1\n");
    EXPECT_EQ(Remote::now(), "break 0109:59 long");
    remote("skip 1\n");
    EXPECT_EQ(Remote::now(), "working 01:00 none") << "the windows fade, the break is over";
    AppState::promptState().showNewDay();
    EXPECT_EQ(Remote::now(), "break 00:10 newday");
    remote("+10\n+60\n");
    EXPECT_EQ(Remote::now(), "break 00:30 short") << "the greeting was none of the cycle";
    remote("skip 1\n+5\n");
    AppState::setWorking(false);
    EXPECT_EQ(Remote::now(), "stopped 00:55 none");
    AppState::setManualPause(true);
    EXPECT_EQ(Remote::now(), "paused 00:55 none paused");
}

TEST(RemoteControl, tellsOfTheWater) {
    Remote remote("store pref.water.enable bool true\nstore pref.water.target int 2000\n");
    remote("pref finished 350\n");
    const RemoteStatus status = RemoteControl::status();
    EXPECT_TRUE(status.waterEnabled);
    EXPECT_EQ(status.waterFinished, 350);
    EXPECT_EQ(status.waterTarget, 2000);
}

TEST(RemoteControl, pausesAndResumesAsTheMenuLineDoes) {
    Remote remote;
    remote("+10\n");
    EXPECT_EQ(remote.after(&RemoteControl::resume), nothing) << "a work period that runs goes on";
    EXPECT_EQ(Remote::now(), "working 00:50 none");
    EXPECT_EQ(remote.after(&RemoteControl::pause), (Lines{"10.000 log info ticktack timer stoped 1.0"}));
    EXPECT_EQ(remote.after(&RemoteControl::pause), nothing);
    EXPECT_EQ(Remote::now(), "paused 00:50 none paused");
    EXPECT_EQ(remote("+100\n"), nothing);
    EXPECT_EQ(remote.after(&RemoteControl::resume), (Lines{"110.000 log info ticktack timer stoped 1.0",
                                                           "110.000 log info ticktack timer start 60"}));
    EXPECT_EQ(Remote::now(), "working 01:00 none");
    EXPECT_EQ(remote.after(&RemoteControl::toggle).size(), 1U);
    EXPECT_EQ(Remote::now(), "paused 01:00 none paused");
    EXPECT_EQ(remote.after(&RemoteControl::toggle).size(), 2U);
    EXPECT_EQ(Remote::now(), "working 01:00 none");
    // What the program stopped by itself a person may start, or stop for good.
    AppState::setWorking(false);
    EXPECT_EQ(remote.after(&RemoteControl::resume).size(), 2U);
    EXPECT_EQ(Remote::now(), "working 01:00 none");
    AppState::setWorking(false);
    EXPECT_EQ(remote.after(&RemoteControl::pause).size(), 1U);
    EXPECT_EQ(Remote::now(), "paused 01:00 none paused");
}

TEST(RemoteControl, aBreakCanBeNeitherPausedNorResumed) {
    Remote remote;
    remote("+60\n+5\n");
    for (const auto verb : {&RemoteControl::pause, &RemoteControl::resume, &RemoteControl::toggle})
        EXPECT_EQ(remote.after(verb),
                  (Lines{"refused: A break is on the screen and can be neither paused nor resumed"}));
    EXPECT_EQ(Remote::now(), "break 00:25 short");
}

TEST(RemoteControl, skipsOnlyWhereTheScreenOffersIt) {
    Remote remote("store force_long_break bool true\n");
    EXPECT_EQ(remote.after(&RemoteControl::skip), (Lines{"refused: No break is on the screen"}));
    remote("+60\n+5\n");
    EXPECT_EQ(
        remote.after(&RemoteControl::skip),
        (Lines{"65.000 log info skip break view", "65.000 window closing 1",
               "65.000 log info ticktack timer stoped 1.0", "65.000 log info ticktack timer start 60"}));
    EXPECT_EQ(remote.after(&RemoteControl::skip), (Lines{"refused: No break is on the screen"}))
        << "it only fades";
    remote("+60\n+5\n");
    ASSERT_EQ(Remote::now(), "break 0109:55 long");
    EXPECT_EQ(remote.after(&RemoteControl::skip), (Lines{"refused: This break cannot be skipped"}));
    EXPECT_EQ(Remote::now(), "break 0109:55 long");
}

TEST(RemoteControl, startsTheNextBreakAndPutsItOff) {
    Remote remote(
        "store pref.break.more int 3\nstore pref.break.hold bool true\nstore force_long_break bool true\n");
    const auto refused = [&](const std::string& command) {
        const Lines noted = remote("kelpa " + command + "\n");
        return noted.empty() ? "" : noted.back();
    };
    const std::string minutes = ": A break is put off by whole minutes, from 2 to 15";
    for (const char* wrong : {"1", "16", "-3", "2.5", "99999999999999999999", "soon", "3 4"})
        EXPECT_EQ(refused(std::string("postpone ") + wrong),
                  std::string("0.000 refused kelpa postpone ") + wrong + minutes);
    EXPECT_EQ(Remote::now(), "working 01:00 none");
    remote("kelpa postpone\n");
    EXPECT_EQ(Remote::now(), "working 03:00 none");
    EXPECT_EQ(refused("postpone 2"), "0.000 refused kelpa postpone 2: More time than that is left");
    remote("+170\nkelpa postpone 2\n+60\nkelpa postpone 15\n");
    EXPECT_EQ(Remote::now(), "working 15:00 none");
    EXPECT_EQ(refused("postpone 15"),
              "230.000 refused kelpa postpone 15: This break has been put off as often as it can be");
    remote("kelpa break\n+0.5\nkelpa break\n+0.5\n");
    EXPECT_EQ(Remote::now(), "break 00:30 short") << "asking twice does not put it off";
    for (const char* verb : {"break", "postpone"})
        EXPECT_EQ(refused(verb),
                  "231.000 refused kelpa " + std::string(verb) + ": A break is on the screen already");
    EXPECT_EQ(refused("postpone 5"), "231.000 refused kelpa postpone 5: A break is on the screen already");
    remote("skip 1\n");
    EXPECT_EQ(refused("postpone"),
              "231.000 refused kelpa postpone: The break that comes next is a long one and cannot "
              "be put off");
    EXPECT_EQ(refused("break").substr(0, 15), "231.000 log inf");
    remote("+1\n");
    ASSERT_EQ(Remote::now(), "break 0110:00 long");
    remote("pref forceLongBreak false\n+4205\nmenu pause\n");
    for (const char* verb : {"break", "postpone"})
        EXPECT_EQ(refused(verb).substr(9),
                  "refused kelpa " + std::string(verb) + ": No work period counts down and no break waits");
    AppState::setManualPause(false);
    AppState::setWorking(false);
    EXPECT_NE(refused("break").find("No work period"), std::string::npos);
}

TEST(RemoteControl, tellsOfABreakThatWaitsAndTheTooltipSaysIt) {
    Remote remote("store pref.break.hold bool true\nstore stop_timer_after_mouse_stop bool false\n");
    int told = 0;
    const auto observing = RemoteControl::observe([&] { ++told; });
    remote("busy camera\n+60\n");
    EXPECT_EQ(Remote::now(), "working 00:00 none");
    EXPECT_EQ(RemoteControl::status().heldBy, BusyReason::Camera);
    EXPECT_GT(told, 60);
    EXPECT_EQ(remote("busy sound\n+60\n").back(), "120.000 hint \"A break waits while sound is recorded.\"");
    EXPECT_EQ(remote("kelpa postpone\n").at(2), "120.000 hint \"\"");
    EXPECT_EQ(RemoteControl::status().heldBy, std::nullopt);
    remote("+300\n");
    ASSERT_EQ(RemoteControl::status().heldBy, BusyReason::Sound);
    remote("kelpa break\n+1\n");
    EXPECT_EQ(Remote::now(), "break 00:30 short");
}

TEST(RemoteControl, showsWhatTheMenuCanShow) {
    Remote remote;
    EXPECT_EQ(remote.after(&RemoteControl::showWater),
              (Lines{"refused: The water reminder is switched off"}));
    remote("pref enable true\n");
    EXPECT_EQ(remote.after(&RemoteControl::showWater), (Lines{"0.000 window show Water Reminder"}));
    EXPECT_EQ(remote.after(&RemoteControl::showSettings), (Lines{"0.000 settings"}));
}

TEST(RemoteControl, changesNoMoreThanTwentyTimesASecond) {
    Remote remote;
    remote("+1\n");
    const std::string refusal = "More changes were asked for within a second than are made";
    const auto obeyed = [&](int calls) {
        int count = 0;
        for (int i = 0; i < calls; ++i)
            count += remote.control.toggle() ? 0 : 1;
        return count;
    };
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(remote.after(&RemoteControl::resume), nothing) << "what changes nothing does not count";
    EXPECT_EQ(obeyed(15), 15);
    remote("+0.6\n");
    EXPECT_EQ(remote.after(&RemoteControl::showSettings), (Lines{"1.600 settings"}));
    EXPECT_EQ(obeyed(4), 4);
    EXPECT_EQ(
        remote.after(&RemoteControl::toggle),
        (Lines{
            "1.600 log warning More than 20 changes were asked for within a second: those beyond are refused",
            "refused: " + refusal}));
    ASSERT_EQ(Remote::now(), "paused 01:00 none paused");
    EXPECT_EQ(remote.after(&RemoteControl::pause), nothing) << "it is so already";
    for (const auto verb : {&RemoteControl::toggle, &RemoteControl::resume, &RemoteControl::showSettings})
        EXPECT_EQ(remote.after(verb), (Lines{"refused: " + refusal}));
    EXPECT_EQ(obeyed(100'000), 0);
    remote("+0.5\n");
    EXPECT_EQ(obeyed(100), 15) << "the first ones are a second old";
    EXPECT_EQ(only(remote.journal.lines(), {"More than 20"}).size(), 1U)
        << "one line is enough while it goes on";
    remote("+2\n");
    EXPECT_EQ(obeyed(100), 20);
    EXPECT_NE(remote.journal.lines().back().find("More than 20"), std::string::npos) << "another time";
    EXPECT_FALSE(remote.control.quit());
}

TEST(RemoteControl, endsTheProgramAtAnyTime) {
    Play play({"title", "count", "item", "set", "log"});
    play("store pref.work.time int 1\nstore pref.short.break.times int 1\nstore force_long_break bool true\n"
         "launch\n+60\n");
    RemoteControl control(play.desk.services, play.time);
    EXPECT_FALSE(control.quit());
    EXPECT_EQ(play.journal.lines().back(), "60.000 app quit");
}

/// What each event tells those who observe; the desk plays no time of its own here.
TEST(RemoteControl, tellsThoseWhoObserveOfEveryChange) {
    Remote remote("store pref.short.break.times int 1\n");
    int told = 0;
    auto observing = RemoteControl::observe([&] { ++told; });
    const auto tells = [&](const std::function<void()>& change) {
        told = 0;
        change();
        return told > 0;
    };
    EXPECT_TRUE(tells([&] { remote("+1\n"); })) << "a tick";
    EXPECT_TRUE(tells([&] { remote.control.pause(); }));
    EXPECT_FALSE(tells([&] { remote("+5\n"); })) << "nothing moves";
    EXPECT_FALSE(tells([&] { remote.control.pause(); }));
    EXPECT_TRUE(tells([&] { remote.control.resume(); }));
    EXPECT_TRUE(tells([&] { remote("+60\n"); })) << "a break begins";
    // The user's stop beneath a break: closing the windows is all that changes then.
    AppState::setManualPause(true);
    EXPECT_TRUE(tells([&] { remote.control.skip(); }));
    EXPECT_EQ(Remote::now().substr(0, 6), "paused");
    EXPECT_TRUE(tells([&] { remote("pref enable true\n"); }));
    EXPECT_TRUE(tells([&] { remote("pref target 1000\n"); }));
    EXPECT_TRUE(tells([&] { remote("pref finished 100\n"); }));
    observing.cancel();
    EXPECT_FALSE(tells([&] {
        remote.control.resume();
        remote("+61\npref finished 200\n");
    }));
}

} // namespace
} // namespace kelpa::test
