#include "PrivateBus.h"
#include "platform/linux/control/ControlClient.h"
#include "platform/linux/control/ControlInterface.h"
#include "platform/linux/control/ControlObject.h"
#include "tests/core/Play.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// A script: asks, and keeps what it is told of changes and when.
class Script : public Peer {
  public:
    explicit Script(EventLoop& loop) : Peer(loop) {
        sd_bus_match_signal(bus(), nullptr, nullptr, control::path, propertiesInterface, "PropertiesChanged",
                            heard, this);
    }
    std::string does(const char* method, const char* types = "", auto... values) {
        return ask(control::service, control::path, control::interface, method, types, values...);
    }
    std::string reads(const char* name) {
        return ask(control::service, control::path, propertiesInterface, "Get", "ss", control::interface,
                   name);
    }
    std::vector<std::string> changes;
    std::vector<double> times;

  private:
    static int heard(sd_bus_message* signal, void* self, sd_bus_error*) {
        static_cast<Script*>(self)->changes.push_back(readText(signal));
        static_cast<Script*>(self)->times.push_back(secondsNow());
        return 0;
    }
};

/// A program whose time passes when the test says so, on a real bus.
struct ControlTest : OnABus {
    Play play;
    RemoteControl remote{play.desk.services, play.time};
    std::unique_ptr<BusClient> object;

    ControlTest() {
        play(test::mouseMayRest + "store pref.work.time int 62\nstore force_long_break bool true\n"
                                  "store pref.short.break.times int 1\nlaunch\n");
        sd_bus_request_name(bus.handle(), control::service, 0);
        object = serveControl(loop, bus, remote);
    }
    /// Ticks until the script has heard so many changes.
    bool hears(const Script& script, std::size_t changes, double seconds = 10) {
        double next = secondsNow();
        return spinUntil(
            loop,
            [&] {
                if (secondsNow() >= next) {
                    play("+1\n");
                    next += 0.1;
                }
                return script.changes.size() >= changes;
            },
            seconds);
    }
};

TEST_F(ControlTest, tellsHowThingsAre) {
    Script script(loop);
    play("+55\n");
    const auto all = [&](const char* member, auto... values) {
        return script.ask(control::service, control::path, propertiesInterface, member, values...);
    };
    EXPECT_EQ(all("GetAll", "s", control::interface),
              "[State=working Time=0101:05 Seconds=3665 BreakKind=none HeldBy=none Paused=no WaterEnabled=no "
              "WaterFinished=0 WaterTarget=1500]");
    EXPECT_NE(all("Set", "ssv", control::interface, "State", "s", "break"), "");
    play("+3665\n");
    EXPECT_EQ(script.reads("BreakKind"), "long");
}

TEST_F(ControlTest, obeysOrRefusesInPlainWords) {
    Script script(loop);
    EXPECT_EQ(script.does("Pause"), "");
    EXPECT_EQ(script.reads("Paused"), "yes");
    EXPECT_EQ(script.does("Resume"), "");
    EXPECT_EQ(script.reads("State"), "working");
    EXPECT_EQ(script.does("PauseFor", "s", "soon"), control::refused);
    EXPECT_EQ(script.does("PauseFor"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(script.does("Bogus"), SD_BUS_ERROR_UNKNOWN_METHOD);
    const auto answer =
        script.call(control::service, control::path, control::interface, "Postpone", "s", "15");
    EXPECT_STREQ(sd_bus_message_get_error(answer.get())->message,
                 "The break that comes next is a long one and cannot be put off");
    EXPECT_EQ(script.does("Quit"), "") << "it is answered before it is obeyed";
    EXPECT_TRUE(play.time.stopped());
}

TEST_F(ControlTest, announcesChangesOnlyToThoseWhoWatchAndOnceASecond) {
    Script script(loop);
    EXPECT_FALSE(hears(script, 1, 1.5)) << "nobody watches";
    ASSERT_EQ(script.does("Watch"), "");
    ASSERT_EQ(script.does("Watch"), "");
    const double began = secondsNow();
    ASSERT_TRUE(hears(script, 3));
    EXPECT_GE(script.times.front(), began + 0.9);
    for (std::size_t i = 1; i < script.times.size(); ++i)
        EXPECT_GE(script.times[i] - script.times[i - 1], 0.95);
    const std::string last = script.changes.back();
    EXPECT_TRUE(last.starts_with("app.orvane.Kelpa1 [Time=")) << last;
    EXPECT_EQ(std::count(last.begin(), last.end(), '='), 2) << "only what differs is told: " << last;
    script.changes.clear();
    remote.pause(); // after which no tick comes
    ASSERT_TRUE(spinUntil(
        loop, [&] { return !script.changes.empty(); }, 1.5));
    EXPECT_NE(script.changes.front().find("State=paused"), std::string::npos);
    remote.resume();
    ASSERT_EQ(script.does("Unwatch"), "");
    script.changes.clear();
    EXPECT_FALSE(hears(script, 1, 1.5));
    EXPECT_EQ(script.does("Unwatch"), "") << "nothing to take back is no error";
}

TEST_F(ControlTest, theAnnouncementsFollowTheLastClientOut) {
    Script listener(loop);
    auto first = std::make_unique<Script>(loop);
    auto second = std::make_unique<Script>(loop);
    first->does("Watch");
    remote.pause();
    second->does("Watch");
    ASSERT_TRUE(spinUntil(
        loop, [&] { return !listener.changes.empty(); }, 1.5))
        << "one who came later took the news from the one before";
    remote.resume();
    first.reset();
    listener.changes.clear();
    ASSERT_TRUE(hears(listener, 1)) << "one is left";
    second.reset();
    spin(loop, 0.3);
    listener.changes.clear();
    EXPECT_FALSE(hears(listener, 1, 1.5));
    Script third(loop);
    third.does("Watch");
    EXPECT_TRUE(hears(third, 1));
}

TEST_F(ControlTest, aWatcherThatLeavesAtOnceLeavesNothingBehind) {
    Script listener(loop);
    {
        Peer hasty(loop);
        sd_bus_message* call = nullptr;
        sd_bus_message_new_method_call(hasty.bus(), &call, control::service, control::path,
                                       control::interface, "Watch");
        sd_bus_message_set_expect_reply(call, 0);
        sd_bus_send(hasty.bus(), call, nullptr);
        sd_bus_message_unref(call);
    }
    spin(loop, 0.3);
    EXPECT_FALSE(hears(listener, 1, 1.5));
}

TEST_F(ControlTest, comesBackWithTheBusAndKnowsOfNoWatcherOfTheOldOne) {
    {
        Script script(loop);
        script.does("Watch");
        busGoes();
    }
    play("+5\n");
    ASSERT_TRUE(busComes());
    sd_bus_request_name(bus.handle(), control::service, 0);
    Script script(loop);
    EXPECT_EQ(script.reads("State"), "working");
    EXPECT_FALSE(hears(script, 1, 1.5));
    script.does("Watch");
    EXPECT_TRUE(hears(script, 1));
}

TEST(StatusLine, isForPeopleOrForPrograms) {
    BusValues values = {{"State", std::string("break")},
                        {"Time", std::string("0102:05")},
                        {"Seconds", std::int64_t{3725}},
                        {"BreakKind", std::string("long")},
                        {"HeldBy", std::string("none")},
                        {"Paused", true},
                        {"WaterEnabled", true},
                        {"WaterFinished", std::int64_t{600}},
                        {"WaterTarget", std::int64_t{1500}}};
    EXPECT_EQ(statusLine(values, false), "break 0102:05 long water 600/1500");
    EXPECT_EQ(
        statusLine(values, true),
        R"({"state": "break", "time": "0102:05", "seconds": 3725, "break": "long", "held": "none", "paused": true, )"
        R"("water": {"enabled": true, "finished": 600, "target": 1500}})");
    values["HeldBy"] = std::string("camera");
    values["WaterEnabled"] = false;
    EXPECT_EQ(statusLine(values, false), "break 0102:05 long held camera");
    values["Time"] = std::string("\"\\\n");
    EXPECT_NE(statusLine(values, true)->find(R"("time": "\"\\\u000a")"), std::string::npos);
    values["Seconds"] = std::string("soon");
    EXPECT_EQ(statusLine(values, true), std::nullopt);
    values.erase("Seconds");
    EXPECT_EQ(statusLine(values, false), std::nullopt);
}

} // namespace
} // namespace kelpa::test
