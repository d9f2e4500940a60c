#include "PrivateBus.h"
#include "Support.h"
#include "app/AppState.h"
#include "platform/linux/bus/BusMessage.h"
#include "platform/linux/control/ControlClient.h"
#include "platform/linux/control/ControlInterface.h"
#include "platform/linux/control/ControlObject.h"
#include "tests/core/Play.h"

#include <gtest/gtest.h>
#include <memory>

namespace kelpa::test {
namespace {

constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

std::string errorOf(const Message& answer) {
    if (!answer)
        return "no answer";
    const sd_bus_error* error = sd_bus_message_get_error(answer.get());
    return error == nullptr ? "" : error->name;
}

/// A script: asks, and keeps what it is told of changes and when.
class Script : public Peer {
  public:
    explicit Script(EventLoop& loop) : Peer(loop) {
        sd_bus_match_signal(bus(), nullptr, nullptr, control::path, propertiesInterface, "PropertiesChanged",
                            heard, this);
    }
    std::string does(const char* method) {
        return errorOf(call(control::service, control::path, control::interface, method, ""));
    }
    std::string does(const char* method, const char* text) {
        return errorOf(call(control::service, control::path, control::interface, method, "s", text));
    }
    BusValues reads() {
        BusValues values;
        const auto answer =
            call(control::service, control::path, propertiesInterface, "GetAll", "s", control::interface);
        readValues(answer.get(), values);
        return values;
    }
    std::vector<BusValues> changes;
    std::vector<double> times;

  private:
    static int heard(sd_bus_message* signal, void* self, sd_bus_error*) {
        const char* interface = nullptr;
        BusValues values;
        sd_bus_message_read(signal, "s", &interface);
        readValues(signal, values);
        static_cast<Script*>(self)->changes.push_back(values);
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
    const BusValues expected = {{"State", std::string("working")},
                                {"Time", std::string("0101:05")},
                                {"Seconds", std::int64_t{3665}},
                                {"BreakKind", std::string("none")},
                                {"HeldBy", std::string("none")},
                                {"Paused", false},
                                {"WaterEnabled", false},
                                {"WaterFinished", std::int64_t{0}},
                                {"WaterTarget", std::int64_t{1500}}};
    EXPECT_EQ(script.reads(), expected);
    EXPECT_NE(errorOf(script.call(control::service, control::path, propertiesInterface, "Set", "ssv",
                                  control::interface, "State", "s", "break")),
              "");
    play("+3665\n");
    EXPECT_EQ(script.reads()["BreakKind"], BusValue(std::string("long")));
}

TEST_F(ControlTest, obeysOrRefusesInPlainWords) {
    Script script(loop);
    EXPECT_EQ(script.does("Pause"), "");
    EXPECT_EQ(script.reads()["Paused"], BusValue(true));
    EXPECT_EQ(script.does("Toggle"), "");
    EXPECT_EQ(script.does("Pause"), "");
    EXPECT_EQ(script.does("Resume"), "");
    EXPECT_EQ(script.reads()["State"], BusValue(std::string("working")));
    EXPECT_EQ(script.does("Skip"), control::refused);
    EXPECT_EQ(script.does("ShowWater"), control::refused);
    EXPECT_EQ(script.does("ShowSettings"), "");
    const auto postpones = [&](const char* minutes) {
        return errorOf(
            script.call(control::service, control::path, control::interface, "Postpone", "s", minutes));
    };
    EXPECT_EQ(postpones("15"), control::refused) << "the hour is not over";
    EXPECT_EQ(script.does("Postpone"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(script.does("PauseUntil", "tomorrow"), "");
    EXPECT_EQ(script.does("PauseFor", "45m"), "");
    EXPECT_EQ(script.does("PauseFor", "soon"), control::refused);
    EXPECT_EQ(script.does("PauseFor"), SD_BUS_ERROR_INVALID_ARGS);
    play("+2699\n");
    EXPECT_EQ(script.reads()["State"], BusValue(std::string("paused")));
    play("+1\n");
    EXPECT_EQ(script.reads()["State"], BusValue(std::string("working")));
    EXPECT_EQ(script.does("Bogus"), SD_BUS_ERROR_UNKNOWN_METHOD);
    play("+3720\n");
    for (const char* method : {"Pause", "Resume", "Toggle", "Skip", "StartBreak"})
        EXPECT_EQ(script.does(method), control::refused) << method;
    const auto answer = script.call(control::service, control::path, control::interface, "Skip", "");
    EXPECT_STREQ(sd_bus_message_get_error(answer.get())->message, "This break cannot be skipped");
    EXPECT_EQ(script.reads()["State"], BusValue(std::string("break")));
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
    // Only what differs is told.
    EXPECT_EQ(script.changes.back().size(), 2U);
    EXPECT_TRUE(script.changes.back().contains("Time") && script.changes.back().contains("Seconds"));
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
    second->does("Watch");
    first.reset();
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

/// A pause must not wait for a tick that does not come.
TEST_F(ControlTest, whatIsNoTickIsToldWithinASecond) {
    Script script(loop);
    script.does("Watch");
    ASSERT_TRUE(hears(script, 1));
    script.changes.clear();
    spin(loop, 0.2);
    remote.pause();
    ASSERT_TRUE(spinUntil(
        loop, [&] { return !script.changes.empty(); }, 1.5));
    EXPECT_EQ(script.changes.front()["State"], BusValue(std::string("paused")));
    script.changes.clear();
    play("pref finished 400\n");
    ASSERT_TRUE(spinUntil(
        loop, [&] { return !script.changes.empty(); }, 1.5));
    EXPECT_EQ(script.changes.front(), (BusValues{{"WaterFinished", std::int64_t{400}}}));
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
    EXPECT_EQ(script.reads()["State"], BusValue(std::string("working")));
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
