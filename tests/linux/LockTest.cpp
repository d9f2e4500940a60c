#include "FakeLogind.h"
#include "Support.h"
#include "platform/linux/events/DesktopLock.h"

#include <gtest/gtest.h>

#include <optional>

namespace kelpa::test {
namespace {

/// What was told of, a letter each: L for a lock, U for an unlock.
struct Edges {
    std::string heard;
    LockEdges edges{[this] { heard += 'L'; }, [this] { heard += 'U'; }};
};

TEST(LockEdgesTest, TheFirstWordOfAnySourceCountsAndEqualOnesDoNot) {
    Edges of;
    of.edges.says("logind", true);
    of.edges.says("gnome", true);
    of.edges.says("gnome", true);
    EXPECT_EQ(of.heard, "L");
    of.edges.says("gnome", false);
    EXPECT_EQ(of.heard, "LU");
    of.edges.says("logind", false);
    of.edges.says("mate", false);
    EXPECT_EQ(of.heard, "LU");
    EXPECT_FALSE(of.edges.locked());
}

TEST(LockEdgesTest, TheFirstUnlockCountsAlthoughNoLockWasHeardAndNoSecondOneDoes) {
    Edges of;
    of.edges.gone("mate");
    EXPECT_EQ(of.heard, "");
    of.edges.says("gnome", false);
    of.edges.says("mate", false);
    of.edges.unlockRequested();
    EXPECT_EQ(of.heard, "U");
}

TEST(LockEdgesTest, ARequestToLockCountsOnlyByTheWordOfWhoeverLocks) {
    Edges of;
    of.edges.lockRequested();
    EXPECT_EQ(of.heard, "");
    EXPECT_FALSE(of.edges.locked());
    of.edges.says("gnome", true);
    of.edges.lockRequested();
    EXPECT_EQ(of.heard, "L");
    of.edges.says("gnome", false);
    of.edges.lockRequested();
    EXPECT_EQ(of.heard, "LU") << "its word counts no more";
}

TEST(LockEdgesTest, ARequestToUnlockCountsAtOnceAndALockerThatDidNotObeyIsBelievedAgain) {
    Edges of;
    of.edges.says("xfce", true);
    of.edges.unlockRequested();
    EXPECT_EQ(of.heard, "LU");
    of.edges.lockRequested();
    EXPECT_EQ(of.heard, "LUL");
    of.edges.says("xfce", false);
    EXPECT_EQ(of.heard, "LULU");
}

TEST(LockEdgesTest, AScreenIsNotLockedForEverByASourceThatIsGone) {
    Edges of;
    of.edges.gone("mate");
    of.edges.says("logind", true);
    of.edges.says("mate", true);
    of.edges.gone("kde");
    of.edges.gone("mate");
    EXPECT_EQ(of.heard, "L");
    of.edges.gone("logind");
    EXPECT_EQ(of.heard, "LU");
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

    void observe() {
        buses.emplace(loop);
        lock.emplace(loop, buses->session, buses->system);
        lock->observe([this] { heard += 'L'; }, [this] { heard += 'U'; });
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
    struct Buses {
        explicit Buses(EventLoop& loop) : session(loop, Bus::Kind::Session), system(loop, Bus::Kind::System) {
            session.start();
            system.start();
        }
        Bus session, system;
    };
    EventLoop loop;
    std::optional<Buses> buses;
    std::optional<DesktopLock> lock;
    std::string heard;
};

TEST_F(LockTest, EveryScreenSaverIsHeardWhateverItsNameAndPath) {
    observe();
    after("");
    for (const char* interface :
         {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.mate.ScreenSaver",
          "org.cinnamon.ScreenSaver", "org.xfce.ScreenSaver"}) {
        Saver saver(loop);
        saver.emit(interface, "/somewhere", true);
        EXPECT_EQ(after("L"), "L") << interface;
        EXPECT_TRUE(lock->locked());
        saver.emit(interface, "/", false);
        EXPECT_EQ(after("U"), "U") << interface;
    }
    Saver saver(loop);
    saver.emit("org.example.ScreenSaver", "/", true);
    EXPECT_EQ(after(""), "");
}

TEST_F(LockTest, AScreenSaverThatEndsWhileItLocksLeavesNoLock) {
    observe();
    after("");
    {
        Saver saver(loop);
        saver.emit("org.mate.ScreenSaver", "/", true);
        EXPECT_EQ(after("L"), "L");
    }
    EXPECT_EQ(after("U"), "U");
}

/// It may be gone before its end can be listened for.
TEST_F(LockTest, AScreenSaverThatSaysLockedAndLeavesAtOnceLeavesNoLock) {
    observe();
    after("");
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
    after("");
    logind.request("Lock");
    EXPECT_EQ(after(""), "") << "nobody has locked";
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
    after("");
    logind.setHint(true);
    EXPECT_EQ(after("L"), "L");
    EXPECT_EQ(logind.questions, 0);
}

TEST_F(LockTest, ASessionThatIsNoMoreIsLookedForAgain) {
    setenv("XDG_SESSION_ID", "77", 1);
    FakeLogind logind(loop);
    observe();
    after("");
    logind.setHint(true);
    EXPECT_EQ(after("L"), "L");
}

TEST_F(LockTest, AHintThatADesktopNeverSetsDoesNotUnlockWhatAScreenSaverLocked) {
    FakeLogind logind(loop);
    observe();
    after("");
    Saver saver(loop);
    saver.emit("org.gnome.ScreenSaver", "/", true);
    EXPECT_EQ(after("L"), "L");
    logind.setHint(false);
    EXPECT_EQ(after(""), "");
}

TEST_F(LockTest, AScreenThatIsLockedAlreadyIsFoundOut) {
    FakeLogind logind(loop);
    Saver saver(loop, "org.cinnamon.ScreenSaver");
    saver.active = true;
    observe();
    EXPECT_EQ(after("L"), "L");
    saver.emit("org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver", false);
    EXPECT_EQ(after("U"), "U");
}

TEST_F(LockTest, ALogindThatStartsLaterIsFound) {
    observe();
    after("");
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
    observe();
    EXPECT_EQ(after(""), "");
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
    after("");
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
