#include "platform/linux/instance/Instance.h"
#include "PrivateBus.h"
#include "platform/linux/control/ControlInterface.h"

#include <gtest/gtest.h>
#include <optional>

namespace kelpa::test {
namespace {

using State = InstanceLock::State;

/// A running program, as far as other starts see it.
struct Asked final : InstanceClient {
    int shown = 0, histories = 0, gone = 0, doubts = 0;
    void show(StartWish what) override { ++(what == StartWish::History ? histories : shown); }
    void replaced() override { ++gone; }
    void doubted(const std::string&) override { ++doubts; }
};

struct LockTest : testing::Test {
    TempFolder folder;
    EventLoop loop;
    Asked asked;
};

TEST_F(LockTest, letsOneInAndTheOthersAskIt) {
    InstanceLock first(folder.path(), "lock"), second(folder.path(), "lock"),
        elsewhere(folder.path(), "other");
    ASSERT_EQ(first.take(), State::Held);
    first.serve(loop, asked);
    for (int start = 1; start <= 3; ++start) {
        ASSERT_EQ(second.take(), State::HeldByAnother);
        EXPECT_TRUE(second.askHolder(loop, StartWish::Preferences, 5));
        EXPECT_EQ(asked.shown, start);
    }
    EXPECT_TRUE(second.askHolder(loop, StartWish::History, 5));
    EXPECT_EQ(asked.shown, 3);
    EXPECT_EQ(asked.histories, 1);
    EXPECT_EQ(elsewhere.take(), State::Held);
    EXPECT_EQ(asked.gone, 0);
}

TEST_F(LockTest, comesFreeWhileTheHolderIsAsked) {
    auto first = std::make_unique<InstanceLock>(folder.path(), "lock");
    InstanceLock second(folder.path(), "lock");
    first->take();
    second.take();
    const auto leaving = loop.afterReal(0.3, [&] { first.reset(); });
    EXPECT_FALSE(second.askHolder(loop, StartWish::Preferences, 10));
    EXPECT_EQ(second.state(), State::Held);
}

TEST_F(LockTest, isTakenFromAHolderThatDoesNotAnswer) {
    InstanceLock stale(folder.path(), "lock"), second(folder.path(), "lock"), third(folder.path(), "lock");
    stale.take();
    second.take();
    third.take();
    EXPECT_FALSE(second.askHolder(loop, StartWish::Preferences, 0.3));
    ASSERT_TRUE(second.takeOver());
    EXPECT_EQ(second.state(), State::Held);
    EXPECT_FALSE(third.takeOver()) << "it asked the one before";
    Asked fresh;
    second.serve(loop, fresh);
    EXPECT_TRUE(third.askHolder(loop, StartWish::Preferences, 5));
    EXPECT_EQ(fresh.shown, 1);
    // The stale one comes to itself.
    stale.serve(loop, asked);
    ASSERT_TRUE(spinUntil(loop, [&] { return asked.gone == 1; }));
    EXPECT_EQ(fresh.gone, 0);
}

TEST_F(LockTest, isUnavailableWhereNothingCanBeWritten) {
    InstanceLock lock(folder.file("missing"), "lock");
    EXPECT_EQ(lock.take(), State::Unavailable);
    lock.serve(loop, asked);
}

TEST(LockName, isTheDisplays) {
    const auto nameOn = [](const char* display, const char* wayland) {
        setenv("DISPLAY", display, 1);
        setenv("WAYLAND_DISPLAY", wayland, 1);
        return lockName();
    };
    EXPECT_EQ(nameOn(":0", ""), "app.orvane.Kelpa-:0");
    EXPECT_EQ(nameOn(":0.0", "wayland-0"), "app.orvane.Kelpa-:0");
    EXPECT_EQ(nameOn("far.example:10.1", ""), "app.orvane.Kelpa-far.example:10");
    EXPECT_EQ(nameOn("", "wayland-1"), "app.orvane.Kelpa-wayland-1");
    EXPECT_EQ(nameOn("", "/run/there/wayland-1"), "app.orvane.Kelpa-_run_there_wayland-1");
    EXPECT_LT(nameOn("", std::string(300, 'x').c_str()).size(), 70U);
    unsetenv("XDG_RUNTIME_DIR");
    const auto folder = lockFolder();
    ASSERT_TRUE(folder);
    EXPECT_EQ(std::filesystem::status(*folder).permissions(), std::filesystem::perms::owner_all);
}

/// A start of the program, as far as it finds out about others.
struct Start {
    explicit Start(EventLoop& loop, StartWish wish = StartWish::Preferences)
        : bus(loop, Bus::Kind::Session), instance(loop, bus, wish) {}
    Bus bus;
    Instance instance;
};

struct InstanceTest : testing::Test {
    TempFolder runtime;
    EventLoop loop;
    Asked asked;
    InstanceTest() {
        setenv("XDG_RUNTIME_DIR", runtime.path().c_str(), 1);
        setenv("DISPLAY", ":7", 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    }
    /// The object that the program has on the bus.
    bool fails = false;
    BusSlot object;
    void export_(Bus& bus) {
        static const sd_bus_vtable vtable[] = {
            SD_BUS_VTABLE_START(0), SD_BUS_METHOD("ShowSettings", "", "", answer, 0),
            SD_BUS_METHOD("ShowHistory", "", "", answer, 0), SD_BUS_VTABLE_END};
        object = bus.serve(control::path, control::interface, vtable, this);
    }
    static int answer(sd_bus_message* call, void* object, sd_bus_error*) {
        auto& self = *static_cast<InstanceTest*>(object);
        const bool history = sd_bus_message_is_method_call(call, nullptr, "ShowHistory") > 0;
        self.asked.show(history ? StartWish::History : StartWish::Preferences);
        return self.fails ? -EIO : sd_bus_reply_method_return(call, nullptr);
    }
};

TEST_F(InstanceTest, isOneOnTheBus) {
    PrivateBus daemon;
    Start first(loop), second(loop);
    ASSERT_EQ(first.instance.claim(), Instance::Role::First);
    EXPECT_EQ(first.instance.doubt(), "");
    first.instance.serve(asked);
    export_(first.bus);
    EXPECT_EQ(second.instance.claim(), Instance::Role::Second);
    EXPECT_EQ(asked.shown, 1);
    // Another display of the same bus.
    for (const auto wish : {StartWish::Preferences, StartWish::History}) {
        setenv("DISPLAY", wish == StartWish::History ? ":9" : ":8", 1);
        Start other(loop, wish);
        EXPECT_EQ(other.instance.claim(), Instance::Role::Second);
        EXPECT_EQ(asked.shown, 2);
    }
    EXPECT_EQ(asked.histories, 1);
    EXPECT_EQ(asked.gone, 0);
}

TEST_F(InstanceTest, isTakenFromAnOwnerOfTheNameThatOnlyFails) {
    PrivateBus daemon;
    fails = true;
    Start first(loop);
    ASSERT_EQ(first.instance.claim(), Instance::Role::First);
    first.instance.serve(asked);
    export_(first.bus);
    setenv("DISPLAY", ":8", 1);
    Start second(loop);
    EXPECT_EQ(second.instance.claim(), Instance::Role::First);
    EXPECT_EQ(second.instance.doubt(), "");
    EXPECT_TRUE(spinUntil(loop, [&] { return asked.gone == 1; }));
}

TEST_F(InstanceTest, isTakenFromOneThatHangsAfterOneWait) {
    PrivateBus daemon;
    EventLoop stopped;
    Start stale(stopped);
    ASSERT_EQ(stale.instance.claim(), Instance::Role::First);
    Start second(loop);
    const double began = secondsNow();
    EXPECT_EQ(second.instance.claim(), Instance::Role::First);
    EXPECT_EQ(second.instance.doubt(), "");
    EXPECT_LT(secondsNow() - began, Instance::patience + 3) << "the name's owner is who held the lock";
}

TEST_F(InstanceTest, claimsItsNameAgainFromABusThatComesBack) {
    const std::string address = "unix:path=" + runtime.file("bus");
    std::optional<PrivateBus> daemon(std::in_place, "DBUS_SESSION_BUS_ADDRESS", address);
    Start first(loop);
    ASSERT_EQ(first.instance.claim(), Instance::Role::First);
    first.instance.serve(asked);
    const auto bringBack = [&] {
        daemon->end();
        ASSERT_TRUE(spinUntil(loop, [&] { return !first.bus.open(); }));
        daemon.emplace("DBUS_SESSION_BUS_ADDRESS", address);
    };
    bringBack();
    Peer other(loop);
    const auto ownerIsFirst = [&] {
        return other.ask("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetNameOwner", "s",
                         control::service) == first.bus.name();
    };
    EXPECT_TRUE(spinUntil(loop, ownerIsFirst, 10));
    EXPECT_EQ(asked.doubts, 0);
    // Somebody else may come to it first.
    bringBack();
    Peer quick(loop);
    sd_bus_request_name(quick.bus(), control::service, 0);
    EXPECT_TRUE(spinUntil(
        loop, [&] { return asked.doubts == 1; }, 15));
    EXPECT_EQ(asked.gone, 0) << "both go on";
}

/// Who is told to end while it asks takes nothing from one that has had no time to answer.
TEST_F(InstanceTest, takesNothingOverWhenItIsToldToEnd) {
    PrivateBus daemon;
    Start slow(loop);
    ASSERT_EQ(slow.instance.claim(), Instance::Role::First);
    slow.instance.serve(asked);
    export_(slow.bus);
    for (const char* display : {":7", ":8"}) {
        setenv("DISPLAY", display, 1);
        EventLoop other;
        Start second(other);
        const auto end = other.afterReal(0.3, [&] { other.terminate(); });
        const double began = secondsNow();
        EXPECT_EQ(second.instance.claim(), Instance::Role::Ended) << display;
        EXPECT_LT(secondsNow() - began, 1.5);
    }
    setenv("DISPLAY", ":7", 1);
    Start third(loop);
    EXPECT_EQ(third.instance.claim(), Instance::Role::Second);
    EXPECT_GE(asked.shown, 1);
    spin(loop, 0.1); // in which it would hear that the name is lost
    EXPECT_EQ(asked.gone, 0);
}

} // namespace
} // namespace kelpa::test
