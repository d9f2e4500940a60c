#include "FakeLogind.h"
#include "platform/linux/events/DesktopLock.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

namespace kelpa::test {
namespace {

/// Says one thing after the other: "gnome+" is that gnome has locked, "gnome-" that it has not, "gnome." that
/// it is gone, "lock" and "unlock" are requests. Gives what was told of, L for a lock and U for an unlock.
std::string toldOf(const std::string& story) {
    std::string heard;
    LockEdges edges([&] { heard += 'L'; }, [&] { heard += 'U'; });
    for (const std::string& word : wordsOf(story)) {
        const std::string source = word.substr(0, word.size() - 1);
        if (word == "lock")
            edges.lockRequested();
        else if (word == "unlock")
            edges.unlockRequested();
        else if (word.ends_with('.'))
            edges.gone(source);
        else
            edges.says(source, word.ends_with('+'));
    }
    EXPECT_EQ(edges.locked(), heard.ends_with('L')) << story;
    return heard;
}

TEST(LockEdgesTest, EachEdgeIsToldOfOnceByTheFirstWhoSaysIt) {
    const std::pair<const char*, const char*> stories[] = {
        {"logind+ gnome+ gnome+", "L"},
        {"logind+ gnome+ gnome-", "LU"},
        {"logind+ gnome+ gnome- logind- mate-", "LU"},
        {"gnome- mate- unlock", "U"}, // although no lock was heard
        // A request to lock counts only by the word of whoever locks, and while it holds.
        {"lock", ""},
        {"gnome+ lock", "L"},
        {"gnome+ gnome- lock", "LU"},
        // One to unlock counts at once, and a locker that does not obey is believed again.
        {"xfce+ unlock", "LU"},
        {"xfce+ unlock lock", "LUL"},
        {"xfce+ unlock lock xfce-", "LULU"},
        // A screen is not locked for ever by a source that is gone.
        {"mate.", ""},
        {"mate. logind+ mate+ kde. mate.", "L"},
        {"logind+ mate+ mate. logind.", "LU"}};
    for (const auto& [story, heard] : stories)
        EXPECT_EQ(toldOf(story), heard) << story;
}

/// A screen saver: it emits a signal, and answers a question where it has the name.
class Saver : public Peer {
  public:
    explicit Saver(EventLoop& loop, const char* name = nullptr) : Peer(loop) {
        if (name == nullptr)
            return;
        std::string path = std::string("/") + name;
        std::replace(path.begin(), path.end(), '.', '/');
        sd_bus_add_object_vtable(bus(), nullptr, path.c_str(), name, vtable, this);
        sd_bus_request_name(bus(), name, 0);
    }
    void emit(const char* interface, const char* path, bool value) {
        active = value;
        sd_bus_emit_signal(bus(), path, interface, "ActiveChanged", "b", value ? 1 : 0);
    }
    bool active = false;

  private:
    static int getActive(sd_bus_message* call, void* self, sd_bus_error*) {
        return sd_bus_reply_method_return(call, "b", static_cast<Saver*>(self)->active ? 1 : 0);
    }
    static constexpr sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0), SD_BUS_METHOD("GetActive", "", "b", getActive, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END};
};

class LockTest : public testing::Test {
  protected:
    LockTest() { unsetenv("XDG_SESSION_ID"); }

    /// Gives what was heard when everything that can be found out has been.
    std::string observe(const std::string& expected = "") {
        sessionBus.start();
        systemBus.start();
        lock.observe([this] { heard += 'L'; }, [this] { heard += 'U'; });
        return after(expected);
    }
    /// Serves the loop until as much as that was heard, and then for as long as more could come.
    std::string after(const std::string& expected) {
        spinUntil(loop, [&] { return heard.size() >= expected.size(); });
        spin(loop, 0.1);
        return std::exchange(heard, {});
    }

    std::string systemAddress = "unix:path=" + testing::TempDir() + "system-bus-" + std::to_string(getpid());
    std::optional<PrivateBus> system{std::in_place, "DBUS_SYSTEM_BUS_ADDRESS", systemAddress};
    std::string sessionAddress =
        "unix:path=" + testing::TempDir() + "session-bus-" + std::to_string(getpid());
    std::optional<PrivateBus> session{std::in_place, "DBUS_SESSION_BUS_ADDRESS", sessionAddress};
    EventLoop loop;
    Bus sessionBus{loop, Bus::Kind::Session}, systemBus{loop, Bus::Kind::System};
    DesktopLock lock{loop, sessionBus, systemBus};
    std::string heard;
};

TEST_F(LockTest, EveryScreenSaverIsHeardWhateverItsNameAndPath) {
    observe();
    for (const char* interface :
         {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.mate.ScreenSaver",
          "org.cinnamon.ScreenSaver", "org.xfce.ScreenSaver"}) {
        Saver saver(loop);
        saver.emit(interface, "/somewhere", true);
        EXPECT_EQ(after("L"), "L") << interface;
        EXPECT_TRUE(lock.locked());
        saver.emit(interface, "/", false);
        EXPECT_EQ(after("U"), "U") << interface;
    }
    Saver saver(loop);
    saver.emit("org.example.ScreenSaver", "/", true);
    EXPECT_EQ(after(""), "");
}

/// It may be gone before its end can be listened for.
TEST_F(LockTest, AScreenSaverThatSaysLockedAndLeavesAtOnceLeavesNoLock) {
    observe();
    for (int time = 0; time < 20; ++time) {
        {
            Saver hasty(loop);
            hasty.emit("org.mate.ScreenSaver", "/", true);
        }
        ASSERT_EQ(after("LU"), "LU");
    }
}

TEST_F(LockTest, TheHintAndTheRequestsOfOurOwnSessionCountOnce) {
    FakeLogind logind(loop);
    Saver saver(loop);
    observe();
    logind.request("Lock");
    EXPECT_EQ(after(""), "") << "nobody has locked";
    saver.emit("org.gnome.ScreenSaver", "/", true);
    EXPECT_EQ(after("L"), "L");
    logind.setHint(false);
    EXPECT_EQ(after(""), "") << "as a desktop has it that never sets it";
    saver.emit("org.gnome.ScreenSaver", "/", false);
    EXPECT_EQ(after("U"), "U");
    logind.setHint(true);
    saver.emit("org.freedesktop.ScreenSaver", "/ScreenSaver", true);
    EXPECT_EQ(after("L"), "L");
    logind.request("Unlock");
    EXPECT_EQ(after("U"), "U");
    logind.setHint(false);
    saver.emit("org.freedesktop.ScreenSaver", "/ScreenSaver", false);
    EXPECT_EQ(after(""), "");
    logind.setHint(true, FakeLogind::other);
    logind.request("Unlock", FakeLogind::other);
    EXPECT_EQ(after(""), "");
}

TEST_F(LockTest, TheSessionIsTheOneThatStartedUs) {
    setenv("XDG_SESSION_ID", "c2", 1);
    FakeLogind logind(loop);
    observe();
    logind.setHint(true);
    EXPECT_EQ(after("L"), "L");
    EXPECT_EQ(logind.questions, 0);
}

TEST_F(LockTest, ASessionThatIsNoMoreIsLookedForAgain) {
    setenv("XDG_SESSION_ID", "77", 1);
    FakeLogind logind(loop);
    observe();
    logind.setHint(true);
    EXPECT_EQ(after("L"), "L");
}

TEST_F(LockTest, AScreenThatIsLockedAlreadyIsFoundOut) {
    FakeLogind logind(loop);
    const Saver idle(loop, "org.mate.ScreenSaver"); // which is no news
    Saver saver(loop, "org.cinnamon.ScreenSaver");
    saver.active = true;
    EXPECT_EQ(observe("L"), "L");
    saver.emit("org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver", false);
    EXPECT_EQ(after("U"), "U");
}

TEST_F(LockTest, ALogindThatStartsLaterIsFound) {
    observe();
    std::optional<FakeLogind> logind(std::in_place, loop);
    logind->ownHint = true;
    EXPECT_EQ(after("L"), "L");
    // Started again, it knows what it knew; meanwhile nothing is unlocked.
    logind.reset();
    EXPECT_EQ(after(""), "");
    logind.emplace(loop);
    logind->ownHint = true;
    EXPECT_EQ(after(""), "");
    logind->setHint(false);
    EXPECT_EQ(after("U"), "U");
}

TEST_F(LockTest, MissingBusesHarmNothingAndAreFoundWhenTheyCome) {
    system->end();
    session->end();
    EXPECT_EQ(observe(), "");
    system.emplace("DBUS_SYSTEM_BUS_ADDRESS", systemAddress);
    session.emplace("DBUS_SESSION_BUS_ADDRESS", sessionAddress);
    FakeLogind logind(loop);
    logind.ownHint = true;
    EXPECT_EQ(after("L"), "L");
    Saver saver(loop);
    EXPECT_TRUE(spinUntil(loop, [&] {
        saver.emit("org.mate.ScreenSaver", "/", false);
        return heard == "U";
    }));
}

TEST_F(LockTest, BusesThatGoTakeTheirWordBackAndAreHeardAgain) {
    observe();
    for (const bool again : {false, true}) {
        if (again)
            system.emplace("DBUS_SYSTEM_BUS_ADDRESS", systemAddress);
        FakeLogind logind(loop);
        logind.ownHint = true;
        EXPECT_EQ(after("L"), "L");
        system->end();
        EXPECT_EQ(after("U"), "U");
    }
    {
        Saver saver(loop);
        saver.emit("org.mate.ScreenSaver", "/", true);
        EXPECT_EQ(after("L"), "L");
    }
    EXPECT_EQ(after("U"), "U");
    {
        Saver saver(loop);
        saver.emit("org.mate.ScreenSaver", "/", true);
        EXPECT_EQ(after("L"), "L");
        session->end();
        EXPECT_EQ(after("U"), "U");
    }
    session.emplace("DBUS_SESSION_BUS_ADDRESS", sessionAddress);
    Saver saver(loop);
    EXPECT_TRUE(spinUntil(loop, [&] {
        saver.emit("org.mate.ScreenSaver", "/", true);
        return heard == "L";
    }));
}

} // namespace
} // namespace kelpa::test
