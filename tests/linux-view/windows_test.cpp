#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "tests/linux-view/RemoteWindows.h"
#include "tests/support/Allocations.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <systemd/sd-event.h>
#include <unistd.h>

namespace kelpa::test {
namespace {

TEST(RestartBudget, AllowsThreeAMinute) {
    RestartBudget budget;
    EXPECT_TRUE(budget.spend(100));
    EXPECT_TRUE(budget.spend(101));
    EXPECT_TRUE(budget.spend(130));
    EXPECT_FALSE(budget.spend(159.9));
    EXPECT_TRUE(budget.spend(160));
    EXPECT_FALSE(budget.spend(160.5));
    EXPECT_TRUE(budget.spend(161));
}

TEST(Screens, CountsUpwardsFromThePrimaryScreen) {
    Screens screens;
    EXPECT_TRUE(
        screens.update({{"left", {0, 200, 1024, 768}, false}, {"main", {1024, 0, 1920, 1080}, true}}));
    const std::vector<Screen> expected{{1, {0, 0, 1920, 1080}}, {2, {-1024, 112, 1024, 768}}};
    EXPECT_EQ(screens.all(), expected);
    EXPECT_EQ(screens.pixels(screens.all()[1].frame), (PixelRect{0, 200, 1024, 768}));
    EXPECT_EQ(screens.pixels({1640, 750, 280, 330}), (PixelRect{2664, 0, 280, 330}));
    EXPECT_EQ(screens.at(1023, 967)->number, 2U);
    EXPECT_EQ(screens.at(1024, 0)->number, 1U);
    EXPECT_EQ(screens.at(0, 100), nullptr);
    EXPECT_EQ(screens.connector(2), "left");
}

TEST(Screens, NeverGivesANumberToAnotherConnector) {
    Screens screens;
    const Monitor a{"A", {0, 0, 800, 600}, true};
    const Monitor b{"B", {800, 0, 800, 600}, false};
    const Monitor c{"C", {1600, 0, 800, 600}, false};
    screens.update({a, b});
    screens.update({a});
    EXPECT_EQ(screens.connector(2), "");
    screens.update({a, c});
    EXPECT_EQ(screens.all().back().number, 3U);
    screens.update({b, c, a});
    EXPECT_EQ(screens.all().front().number, 1U);
    EXPECT_EQ(screens.connector(2), "B");
    EXPECT_FALSE(screens.update({b, c, a}));
    EXPECT_EQ(screens.mainScreen()->number, 1U);
}

TEST(Screens, TellsOfAScreenOfItsOwnWhileThereIsNone) {
    Screens screens;
    EXPECT_TRUE(screens.update({}));
    ASSERT_EQ(screens.all().size(), 1U);
    const Screen pretended = screens.all().front();
    EXPECT_EQ(pretended.frame, (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(*screens.mainScreen(), pretended);
    EXPECT_FALSE(screens.update({{"off", {0, 0, 0, 0}, true}}));

    EXPECT_TRUE(screens.update({{"A", {100, 0, 1920, 1080}, true}}));
    ASSERT_EQ(screens.all().size(), 1U);
    EXPECT_NE(screens.mainScreen()->number, pretended.number);
    EXPECT_EQ(screens.pixels(screens.mainScreen()->frame), (PixelRect{100, 0, 1920, 1080}));
    screens.update({});
    EXPECT_EQ(screens.all(), std::vector{pretended});
}

TEST(Screens, LeavesOutMirrorsAndMonitorsWithoutAnArea) {
    const std::vector<Monitor> monitors{
        {"A", {0, 0, 800, 600}, false}, {"mirror", {0, 0, 800, 600}, true}, {"off", {0, 0, 0, 0}, false}};
    Screens screens;
    screens.update(monitors);
    ASSERT_EQ(screens.all().size(), 1U);
    EXPECT_EQ(screens.connector(screens.all().front().number), "mirror");
    Screens outputs(Mirrors::EachItsOwn);
    outputs.update(monitors);
    EXPECT_EQ(outputs.all().size(), 2U) << "a window of Wayland shows on one output";
}

TEST_F(RemoteBreak, NeedNoViewUntilSomethingIsShown) {
    face_->setPrompt("rest");
    bool closed = false;
    window_->fadeTo(0, 0.05, [&] {
        window_->close();
        closed = true;
    });
    windows_->deactivate();
    EXPECT_TRUE(runUntil([&] { return closed; }));
    EXPECT_EQ(windows_->viewPid(), 0);
    EXPECT_TRUE(received().empty());
    EXPECT_EQ(desktop_.events, std::vector<std::string>{"give back"});
}

TEST_F(RemoteWindows, TellTheViewEverythingOnce) {
    make(desktop_.screens.all()[1]);
    face_->setTexts({"new", "water", "hint", "skip it", "forward"});
    face_->setPrompt("two\nlines");
    face_->setCount("05:00");
    face_->setSkipOffered(true);
    appear();
    windows_->activate();
    face_->setCount("05:00");
    face_->setCount("04:59");
    ASSERT_TRUE(receives("1 set count 04:59"));
    const auto lines = received();
    const std::vector<std::string> first{"started",
                                         "open 1 break 2 800 0 640 480 B",
                                         R"(1 set texts {"hint":"hint","linkSymbol":"forward",)"
                                         R"("newFeature":"new","skip":"skip it","waterReminder":"water"})",
                                         "1 set prompt two\\nlines",
                                         "1 set count 05:00",
                                         "1 set skipOffered 1"};
    ASSERT_GT(lines.size(), first.size());
    EXPECT_TRUE(std::equal(first.begin(), first.end(), lines.begin())) << testing::PrintToString(lines);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "1 set count 05:00"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "activate"), 1);
    EXPECT_EQ(desktop_.events, std::vector<std::string>{"remember"});
}

TEST_F(RemoteBreak, ShowOfAnEndlessPromptWhatTheScreenHasRoomFor) {
    face_->setPrompt(std::string(2'000'000, 'p'));
    appear();
    face_->setCount("05:00");
    ASSERT_TRUE(receives("1 show"));
    EXPECT_TRUE(receives("1 set prompt " + std::string(wire::view::longestText - 3, 'p') + "…"));
    EXPECT_TRUE(receives("1 set count 05:00"));
    EXPECT_TRUE(receives("started")) << "the view was cut off";
}

TEST_F(RemoteWindows, BelongToTheScreenThatTheyAreMovedOnto) {
    make(desktop_.screens.all()[1]);
    appear();
    ASSERT_TRUE(receives("open 1 break 2 800 0 640 480 B"));
    desktop_.screens.update({{"A", {0, 0, 800, 600}, true}, {"C", {800, 0, 640, 480}, false}});
    window_->setFrame({520, 270, 280, 330}, 1);
    EXPECT_TRUE(receives("open 1 break 2 520 0 280 330 A"));
}

TEST_F(RemoteWindows, StandWhereTheirFrameIsOnTheScreensAsTheyAreNow) {
    make(desktop_.screens.all()[1]);
    appear();
    ASSERT_TRUE(receives("open 1 break 2 800 0 640 480 B"));
    const auto plug = [this](const std::vector<Monitor>& monitors) { desktop_.screens.update(monitors); };
    plug({{"A", {0, 1080, 800, 600}, true}, {"B", {800, 1080, 640, 480}, false}});
    EXPECT_TRUE(receives("open 1 break 2 800 1080 640 480 B")) << "the frame is the same";
    plug({});
    plug({{"A", {50, 0, 800, 600}, true}, {"B", {850, 0, 640, 480}, false}});
    EXPECT_TRUE(receives("open 1 break 2 850 0 640 480 B"));
    const auto lines = received();
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.starts_with("open"); }),
        3)
        << "without its screen it has no place";
}

TEST_F(RemoteBreak, NeedNoMemoryForATick) {
    face_->setCount("05:00");
    appear();
    ASSERT_TRUE(receives("1 show"));
    const std::array<std::string, 3> texts{"04:59", "04:58", "04:57"};
    const std::size_t before = allocations();
    for (const std::string& text : texts)
        face_->setCount(text);
    EXPECT_EQ(allocations(), before);
    EXPECT_TRUE(receives("1 set count 04:57"));
}

TEST_F(RemoteWindows, AreMadeReadyForEveryScreenAndThenUsed) {
    windows_->prepare();
    ASSERT_TRUE(receives("open 2 break 2 800 0 640 480 B"));
    make(desktop_.screens.all()[1]);
    face_->setPrompt("ready");
    ASSERT_TRUE(receives("2 set prompt ready"));
    windows_->prepare();
    appear();
    ASSERT_TRUE(receives("2 show"));
    const auto lines = received();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const auto& text) { return text.rfind("open ", 0) == 0; }),
              2);
}

TEST_F(RemoteWindows, GiveTheViewBackWhenNothingIsShown) {
    open(KELPA_FAKE_VIEW, 0.1);
    windows_->prepare();
    EXPECT_GT(windows_->viewPid(), 0);
    EXPECT_TRUE(runUntil([&] { return windows_->viewPid() == 0; }));
    EXPECT_TRUE(receives("ended"));

    make(desktop_.screens.all()[0]);
    appear();
    const int view = windows_->viewPid();
    ASSERT_TRUE(receives("3 show"));
    spin(loop_, 0.3);
    EXPECT_EQ(windows_->viewPid(), view) << "the view went while a window was shown";
    face_->setPrompt("sleep"); // so that it goes without an answer
    window_->close();
    EXPECT_TRUE(runUntil([&] { return windows_->viewPid() == 0; }));
    spin(loop_, 2.5); // in which a view that is there would have to answer
    EXPECT_TRUE(desktop_.events.empty()) << desktop_.events.front();
}

TEST_F(RemoteBreak, ComeBackAfterACrashAsTheyWere) {
    face_->setCount("03:00");
    appear();
    windows_->activate();
    ASSERT_TRUE(receives("1 show"));
    face_->setCount("02:59");
    face_->setPrompt("crash");
    ASSERT_TRUE(receives("started", 2));
    face_->setPrompt("well again");
    ASSERT_TRUE(receives("1 set prompt well again"));
    EXPECT_TRUE(receives("1 show", 2));
    EXPECT_TRUE(receives("activate", 2));
    EXPECT_EQ(desktop_.events.back(), "kelpa-view ended with code 7");
}

TEST_F(RemoteBreak, LeaveAViewAloneThatCrashesAgainAndAgain) {
    face_->setPrompt("crash");
    appear();
    ASSERT_TRUE(runUntil([&] { return desktop_.events.size() == 4; }));
    EXPECT_EQ(desktop_.events.back(), "kelpa-view ended with code 7 again and is left alone for now");
    EXPECT_EQ(windows_->viewPid(), 0);
    EXPECT_TRUE(window_->visible());
    bool done = false;
    window_->fadeTo(0, 0.01, [&] { done = true; });
    EXPECT_TRUE(runUntil([&] { return done; }));
    EXPECT_TRUE(receives("started", 4));
    EXPECT_FALSE(desktop_.events.size() > 4);
}

TEST_F(RemoteWindows, GoOnWithoutAnyView) {
    open("/nowhere/kelpa-view");
    make(desktop_.screens.all()[0]);
    windows_->prepare();
    appear();
    bool done = false;
    window_->fadeTo(0, 0.01, [&] { done = true; });
    EXPECT_TRUE(runUntil([&] { return done; }));
    window_->close();
    EXPECT_FALSE(window_->visible());
    ASSERT_EQ(desktop_.events.size(), 1U) << "one line for the log, however often it is tried";
    EXPECT_NE(desktop_.events[0].find("/nowhere/kelpa-view"), std::string::npos);
}

TEST_F(RemoteBreak, AreNotHeldUpByAViewThatDoesNotRead) {
    face_->setPrompt("sleep");
    appear();
    const int first = windows_->viewPid();
    ASSERT_TRUE(receives("1 set prompt sleep"));
    face_->setPrompt("ok");
    const std::string much(20000, 'm');
    for (int i = 0; i < 200; ++i)
        face_->setCount(much + std::to_string(i));
    EXPECT_TRUE(runUntil([&] { return windows_->viewPid() != 0 && windows_->viewPid() != first; }))
        << "it was not replaced";
    EXPECT_TRUE(receives("started", 2));
}

TEST_F(RemoteBreak, ComeBackAtOnceAndWithoutAFadeWhenTheViewHangs) {
    window_->setAlpha(0);
    window_->fadeTo(1, 1, nullptr);
    window_->orderFrontRegardless();
    windows_->activate();
    EXPECT_GT(windows_->secondsSinceInput(), 1e9) << "never";
    face_->setPrompt("use");
    ASSERT_TRUE(runUntil([&] { return windows_->secondsSinceInput() < 5; })) << "it must have started well";
    face_->setPrompt("stop");
    const int first = windows_->viewPid();
    ASSERT_TRUE(receives("1 set prompt stop"));
    face_->setPrompt("go on");
    ASSERT_TRUE(receives("started", 2));
    EXPECT_EQ(desktop_.events.back(), "kelpa-view has not answered for 2 s");
    EXPECT_NE(windows_->viewPid(), first);
    ASSERT_TRUE(receives("activate", 2));
    const std::vector<std::string> again{"open 1 break 1 0 0 800 600 A", "1 set prompt go on", "1 alpha 1",
                                         "1 show", "activate"};
    EXPECT_EQ(receivedSince("started"), again);
}

TEST_F(RemoteBreak, SurviveWhateverTheViewSays) {
    appear();
    face_->setPrompt("babble");
    EXPECT_TRUE(runUntil(
        [&] { return !desktop_.events.empty() && desktop_.events.back() == "kelpa-view: I am well"; }));
    EXPECT_EQ(client_.skips, 0);
}

TEST_F(RemoteBreak, ReportWhatAPersonDoesWhileTheyAreShown) {
    windows_->prepare();
    face_->setPrompt("press");
    ASSERT_TRUE(receives("1 set prompt press"));
    appear();
    face_->setPrompt("and press");
    EXPECT_TRUE(runUntil([&] { return client_.skips == 1; })) << "the press on the hidden window counts not";
    face_.reset();
    window_.reset();
    EXPECT_TRUE(receives("drop 1"));
}

TEST_F(RemoteBreak, FadeByTheClockAndEachFadeEndsOnce) {
    std::vector<int> ended;
    window_->fadeTo(1, 0.2, [&] { ended.push_back(1); });
    window_->fadeTo(0, 0.05, [&] { ended.push_back(2); });
    EXPECT_TRUE(ended.empty());
    EXPECT_TRUE(runUntil([&] { return ended.size() == 2; }));
    EXPECT_EQ(ended, (std::vector{2, 1}));
}

TEST_F(RemoteBreak, TurnAFadeAroundWithoutVanishing) {
    appear();
    window_->fadeTo(0, 2, nullptr);
    appear();
    ASSERT_TRUE(receives("1 show", 2));
    const auto lines = received();
    const auto last = std::find(lines.rbegin(), lines.rend(), "1 fade 0 2");
    ASSERT_NE(last, lines.rend());
    EXPECT_EQ(std::find(lines.rbegin(), last, "1 alpha 0"), last) << "it would blink";
    window_->setAlpha(0.5);
    EXPECT_TRUE(receives("1 alpha 0.5"));
}

TEST_F(RemoteBreak, MayBeUsedAfterTheirSystemIsGone) {
    appear();
    ASSERT_TRUE(receives("1 show"));
    windows_.reset();
    window_->setAlpha(1);
    window_->fadeTo(0, 0.01, [] {});
    window_->orderFrontRegardless();
    face_->setCount("00:01");
    window_->close();
    EXPECT_TRUE(receives("ended"));
}

} // namespace
} // namespace kelpa::test
