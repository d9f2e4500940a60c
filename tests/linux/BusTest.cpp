#include "platform/linux/bus/Bus.h"
#include "PrivateBus.h"
#include "Support.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace kelpa::test {
namespace {

/// Takes connections under the address of a bus and says nothing.
class SilentBus {
  public:
    explicit SilentBus(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        unlink(path.c_str());
        if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            listen(socket_, 5) != 0)
            std::abort();
        setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1);
    }
    ~SilentBus() { close(socket_); }
    SilentBus(const SilentBus&) = delete;
    SilentBus& operator=(const SilentBus&) = delete;

  private:
    int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

/// What a client is told, a letter each: O for opened, L for lost.
struct Told final : BusClient {
    explicit Told(const Bus& of) : bus(of) {}
    void busOpened() override { heard += bus.open() && bus.handle() != nullptr ? 'O' : '?'; }
    void busLost() override { heard += bus.open() || bus.handle() != nullptr ? '?' : 'L'; }
    const Bus& bus;
    void heardSignal(sd_bus_message*) {}
    std::string heard;
};

struct BusTest : testing::Test {
    TempFolder folder;
    std::string address = "unix:path=" + folder.file("bus");
    EventLoop loop;
    Bus bus{loop, Bus::Kind::Session};
    Told first{bus}, second{bus};

    BusTest() { setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1); }
    bool opens() {
        return spinUntil(
            loop, [this] { return bus.open(); }, 15);
    }
    bool closes() {
        return spinUntil(loop, [this] { return !bus.open(); });
    }
};

TEST_F(BusTest, comesAndGoesAndTellsAllWhoJoined) {
    auto joined = bus.join(first);
    bus.start();
    EXPECT_FALSE(bus.failure().empty()) << "there is none yet";
    std::optional<PrivateBus> daemon(std::in_place, "DBUS_SESSION_BUS_ADDRESS", address);
    ASSERT_TRUE(opens());
    EXPECT_EQ(bus.failure(), "");
    EXPECT_EQ(bus.name().front(), ':');
    auto late = bus.join(second);
    daemon->end();
    ASSERT_TRUE(closes());
    EXPECT_FALSE(bus.failure().empty());
    EXPECT_EQ(first.heard + " " + second.heard, "OL OL");
    EXPECT_FALSE(bus.match<&Told::heardSignal>("type='signal'", first));
    late.cancel();
    daemon.emplace("DBUS_SESSION_BUS_ADDRESS", address);
    ASSERT_TRUE(opens());
    EXPECT_EQ(first.heard + " " + second.heard, "OLO OL");
}

/// Whoever is told that the bus is gone may leave, and take along who has not been told yet.
TEST_F(BusTest, clientsMayLeaveWhenTheyAreTold) {
    struct Leaving final : BusClient {
        Subscription self, other;
        void busOpened() override {}
        void busLost() override {
            self.cancel();
            other.cancel();
        }
    } leaving;
    PrivateBus daemon("DBUS_SESSION_BUS_ADDRESS", address);
    bus.start();
    leaving.self = bus.join(leaving);
    leaving.other = bus.join(first);
    ASSERT_TRUE(opens());
    daemon.end();
    ASSERT_TRUE(closes());
    EXPECT_EQ(first.heard, "O");
}

TEST_F(BusTest, givesUpOnOneThatNeverAnswersAndFindsTheOneThatFollows) {
    std::optional<SilentBus> silent(std::in_place, folder.file("bus"));
    const auto joined = bus.join(first);
    const double began = secondsNow();
    bus.start();
    EXPECT_EQ(bus.handle(), nullptr);
    EXPECT_FALSE(bus.match<&Told::heardSignal>("type='signal'", first));
    EXPECT_LT(secondsNow() - began, 0.5) << "nothing waits";
    ASSERT_TRUE(spinUntil(
        loop, [this] { return !bus.failure().empty(); }, 15));
    silent.reset();
    PrivateBus daemon("DBUS_SESSION_BUS_ADDRESS", address);
    ASSERT_TRUE(opens());
    EXPECT_EQ(first.heard, "O");
}

TEST_F(BusTest, tellsOfTheOwnersOfANameAndOfOneWhoWasNeverThere) {
    PrivateBus daemon("DBUS_SESSION_BUS_ADDRESS", address);
    bus.start();
    ASSERT_TRUE(opens());
    std::string heard;
    const NameOwner owner(bus, "org.example.Name", [&](bool there) { heard += there ? '+' : '-'; });
    EXPECT_TRUE(spinUntil(loop, [&] { return heard == "-"; }));
    {
        Peer peer(loop);
        sd_bus_request_name(peer.bus(), "org.example.Name", 0);
        sd_bus_request_name(peer.bus(), "org.example.Other", 0);
        EXPECT_TRUE(spinUntil(loop, [&] { return heard == "-+"; }));
        std::string later;
        const NameOwner known(bus, "org.example.Name", [&](bool there) { later += there ? '+' : '-'; });
        spin(loop, 0.2);
        EXPECT_EQ(later, "") << "that somebody has it is no news";
    }
    EXPECT_TRUE(spinUntil(loop, [&] { return heard == "-+-"; }));
    // One that ends when it is told.
    std::optional<NameOwner> brief;
    brief.emplace(bus, "org.example.Nobody", [&brief](bool) { brief.reset(); });
    EXPECT_TRUE(spinUntil(loop, [&] { return !brief; }));
}

TEST_F(BusTest, isNotThereInASessionWithoutOne) {
    bus.start();
    EXPECT_FALSE(bus.failure().empty());
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    unsetenv("XDG_RUNTIME_DIR");
    Bus none(loop, Bus::Kind::Session);
    none.start();
    EXPECT_FALSE(none.failure().empty());
    EXPECT_FALSE(none.open());
}

} // namespace
} // namespace kelpa::test
