#include "PrivateBus.h"
#include "Support.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/busy/CommandOutput.h"
#include "platform/linux/busy/DesktopBusyness.h"
#include "platform/linux/busy/SoundRecording.h"

#include <gtest/gtest.h>

#include <optional>

namespace kelpa::test {
namespace {

using Sources = std::set<std::string>;

TEST(SoundStreams, aProgramThatRecordsCountsAndNeitherStillOnesNorModulesNorMetersDo) {
    EXPECT_EQ(
        recordedSources("Source Output #0\n\tDriver: protocol-native.c\n\tOwner Module: 0\n\tClient: 0\n"
                        "\tSource: 1\n\tSample Specification: s16le 2ch 44100Hz\n\tCorked: no\n"
                        "\tResample method: n/a\n\tProperties:\n\t\tmedia.name = \"Source: 9\"\n\n"
                        "Source Output #7\n\tClient: 3\n\tSource: 4\n\tCorked: yes\n\n"
                        "Source Output #8\n\tClient: n/a\n\tSource: 5\n\tCorked: no\n\n"
                        "Source Output #9\n\tClient: 3\n\tSource: 6\n\tCorked: no\n"
                        "\tResample method: peaks\n\n"
                        "Source Output #10\n\tClient: 3\n\tSource: 17\n\tCorked: no\n"),
        (Sources{"1", "17"}));
    EXPECT_EQ(recordedSources("Source Output #55\n\tDriver: PipeWire\n\tOwner Module: n/a\n\tClient: 54\n"
                              "\tSource: 51\n\tCorked: no\n\tResample method: PipeWire\n\tProperties:\n"
                              "\t\tmedia.name = \"resample.peaks = \"\n\n"
                              "Source Output #56\n\tClient: 55\n\tSource: 52\n\tCorked: no\n"
                              "\tResample method: PipeWire\n\tProperties:\n\t\tresample.peaks = \"true\"\n"),
              Sources{"51"});
    EXPECT_EQ(
        realSources("Source #0\n\tName: out.monitor\n\tDescription: Source #5\n\tMonitor of Sink: out\n\n"
                    "Source #1\n\tName: mic\n\tMonitor of Sink: n/a\n\n"
                    "Source #17\n\tMonitor of Sink: n/a"),
        (Sources{"1", "17"}));
    for (const char* garbage : {"", "\n\n\n", "Connection failure: Connection refused\n", "Source Output #",
                                "Source: 1\nCorked: no", "Source Output #1\n\tSource:\n\tSource Output #2"})
        EXPECT_EQ(recordedSources(garbage), Sources{}) << garbage;
}

/// Asks one source, and keeps what it answers.
struct Asked {
    Asked(EventLoop& loop, const BusySource& source)
        : loop_(loop), question_(source.ask([this](bool holds) { answers.push_back(holds); })) {}
    std::vector<bool> within(double seconds) {
        spinUntil(
            loop_, [this] { return !answers.empty(); }, seconds);
        spin(loop_, 0.1);
        return answers;
    }
    void drop() { question_.cancel(); }
    std::vector<bool> answers;

  private:
    EventLoop& loop_;
    Subscription question_;
};

using Answers = std::vector<bool>;

/// A folder of programs that stands first on the PATH.
struct CommandTest : testing::Test {
    EventLoop loop;
    TempFolder folder;
    BusySource sound = soundRecording(loop);
    const std::string path = std::getenv("PATH");

    CommandTest() { setenv("PATH", folder.path().c_str(), 1); }
    ~CommandTest() override { setenv("PATH", path.c_str(), 1); }
    void install(const std::string& script) {
        const std::string file = folder.file("pactl");
        writeFile(file, "#!/bin/sh\nPATH='" + path + "'\n" + script);
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    /// The process that the stand-in told of.
    bool running() const {
        std::ifstream told(folder.file("pid"));
        int pid = 0;
        return told >> pid && kill(pid, 0) == 0;
    }
};

constexpr const char* lists =
    "[ \"$LC_ALL\" = C ] || exit 1\n"
    "case $2 in\n"
    "source-outputs) printf 'Source Output #0\\n\\tClient: 1\\n\\tSource: 3\\n"
    "\\tCorked: no\\n';;\n"
    "sources) printf 'Source #3\\n\\tMonitor of Sink: %s\\n' \"$MONITOR\";;\nesac\n";

TEST_F(CommandTest, theSoundServerIsAskedForStreamsAndForWhatTheyComeFrom) {
    install(lists);
    setenv("MONITOR", "n/a", 1);
    EXPECT_EQ(Asked(loop, sound).within(5), Answers{true});
    setenv("MONITOR", "speakers", 1);
    EXPECT_EQ(Asked(loop, sound).within(5), Answers{false});
    EXPECT_EQ(sound.unavailable(), std::nullopt);
}

TEST_F(CommandTest, aToolThatIsMissingFailsOrTalksForEverRecordsNothing) {
    EXPECT_NE(sound.unavailable(), std::nullopt);
    EXPECT_EQ(Asked(loop, sound).within(5), Answers{false});
    install("echo Connection refused >&2; exit 1\n");
    EXPECT_EQ(Asked(loop, sound).within(5), Answers{false});
    install("while :; do echo 'Source Output #0'; echo ' Source: 1'; done\n");
    EXPECT_EQ(Asked(loop, sound).within(20), Answers{false});
}

TEST_F(CommandTest, oneThatHangsIsKilledWithTheQuestionAndLeavesNothingBehind) {
    install("echo $$ >'" + folder.file("pid") + "'; exec sleep 600\n");
    Asked asked(loop, sound);
    ASSERT_TRUE(spinUntil(loop, [this] { return running(); }));
    EXPECT_EQ(asked.answers, Answers{});
    asked.drop();
    EXPECT_TRUE(spinUntil(loop, [this] { return !running(); })) << "it runs, or nobody reaped it";
    EXPECT_EQ(asked.answers, Answers{});
}

/// A machine of which only what is looked at exists.
struct CameraTest : testing::Test {
    EventLoop loop;
    TempFolder root;
    BusySource camera = cameraUse(loop, root.path());

    void add(const std::string& file) {
        std::filesystem::create_directories(std::filesystem::path(root.file(file)).parent_path());
        writeFile(root.file(file), "");
    }
    void hold(int process, int number, const std::string& target) {
        const std::string files = "proc/" + std::to_string(process) + "/fd";
        std::filesystem::create_directories(root.file(files));
        std::filesystem::create_symlink(target, root.file(files + "/" + std::to_string(number)));
    }
};

TEST_F(CameraTest, aProcessThatHoldsAVideoDeviceUsesIt) {
    add("proc/self/status");
    for (int process = 1; process < 100; ++process)
        hold(process, 3, "/dev/null");
    hold(50, 7, "socket:[1234]");
    EXPECT_EQ(Asked(loop, camera).within(5), Answers{false}) << "there is no camera";
    add("dev/video0");
    EXPECT_EQ(Asked(loop, camera).within(5), Answers{false});
    hold(77, 12, "/dev/video0");
    EXPECT_EQ(Asked(loop, camera).within(5), Answers{true});
    Asked dropped(loop, camera);
    dropped.drop();
    EXPECT_EQ(dropped.within(0.2), Answers{});
}

TEST_F(CameraTest, aMachineThatShowsNoProcessesUsesNone) {
    add("dev/video0");
    EXPECT_EQ(Asked(loop, camera).within(5), Answers{false});
}

/// Whoever may keep a session awake, on both buses.
class Inhibitors {
  public:
    explicit Inhibitors(EventLoop& loop) : session_(loop), system_(loop, sd_bus_open_system) {
        serve(system_, "org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
              logind);
        serve(session_, "org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager",
              gnome);
        serve(session_, "org.kde.Solid.PowerManagement.PolicyAgent",
              "/org/kde/Solid/PowerManagement/PolicyAgent", "org.kde.Solid.PowerManagement.PolicyAgent", kde);
    }
    std::string blocked;
    unsigned gnomeFlags = 0, kdePolicies = 0;

  private:
    void serve(Peer& peer, const char* name, const char* path, const char* interface,
               const sd_bus_vtable* table) {
        sd_bus_add_object_vtable(peer.bus(), nullptr, path, interface, table, this);
        sd_bus_request_name(peer.bus(), name, 0);
    }
    static int list(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self,
                    sd_bus_error*) {
        return sd_bus_message_append(reply, "s", static_cast<Inhibitors*>(self)->blocked.c_str());
    }
    template <unsigned Inhibitors::*Kept>
    static int has(sd_bus_message* call, void* self, sd_bus_error*) {
        std::uint32_t asked = 0;
        sd_bus_message_read(call, "u", &asked);
        const bool any = (static_cast<Inhibitors*>(self)->*Kept & asked) != 0;
        return sd_bus_reply_method_return(call, "b", any ? 1 : 0);
    }
    static constexpr sd_bus_vtable logind[] = {
        SD_BUS_VTABLE_START(0), SD_BUS_PROPERTY("BlockInhibited", "s", list, 0, 0), SD_BUS_VTABLE_END};
    static constexpr sd_bus_vtable gnome[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("IsInhibited", "u", "b", has<&Inhibitors::gnomeFlags>, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END};
    static constexpr sd_bus_vtable kde[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("HasInhibition", "u", "b", has<&Inhibitors::kdePolicies>, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END};
    Peer session_, system_;
};

struct AwakeTest : testing::Test {
    PrivateBus sessionDaemon{"DBUS_SESSION_BUS_ADDRESS"}, systemDaemon{"DBUS_SYSTEM_BUS_ADDRESS"};
    EventLoop loop;
    OpenBus session{loop}, system{loop, Bus::Kind::System};
    BusySource awake = keptAwake(session, system);
};

TEST_F(AwakeTest, anyoneWhoKeepsItFromFallingIdleCounts) {
    EXPECT_EQ(Asked(loop, awake).within(5), Answers{false}) << "there is nobody";
    Inhibitors others(loop);
    others.blocked = "sleep:handle-lid-switch:idlefish";
    others.gnomeFlags = 1 | 2 | 4;
    others.kdePolicies = 1 | 2;
    EXPECT_EQ(Asked(loop, awake).within(5), Answers{false})
        << "sleep and log-out are kept away, idleness is not";
    others.blocked = "sleep:idle";
    EXPECT_EQ(Asked(loop, awake).within(5), Answers{true});
    others.blocked = "";
    others.gnomeFlags = 8;
    EXPECT_EQ(Asked(loop, awake).within(5), Answers{true});
    others.gnomeFlags = 0;
    others.kdePolicies = 4;
    EXPECT_EQ(Asked(loop, awake).within(5), Answers{true});
    EXPECT_EQ(awake.unavailable(), std::nullopt);
}

TEST_F(AwakeTest, withoutABusNobodyCanBeAsked) {
    Bus noSession(loop, Bus::Kind::Session), noSystem(loop, Bus::Kind::System);
    BusySource alone = keptAwake(noSession, noSystem);
    EXPECT_EQ(Asked(loop, alone).within(1), Answers{false});
    EXPECT_NE(alone.unavailable(), std::nullopt);
}

/// Answers when the test says so.
struct ScriptedSource {
    ScriptedSource(std::string& keptLog, char itsName) : log(keptLog), name(itsName) {}
    Subscription ask(BusySource::Answer asked) {
        log += name;
        answer = std::move(asked);
        if (atOnce)
            answer(*atOnce);
        return Subscription([this] {
            log += '-';
            log += name;
            answer = nullptr;
        });
    }
    BusySource source() {
        return {[this](BusySource::Answer asked) { return ask(std::move(asked)); },
                [this] { return std::string(1, name); }};
    }
    std::string& log;
    char name;
    BusySource::Answer answer;
    std::optional<bool> atOnce;
};

struct BusyTest : testing::Test {
    EventLoop loop;
    std::string log;
    ScriptedSource sound{log, 's'}, awake{log, 'a'};
    std::unique_ptr<BusyProbe> busy =
        makeDesktopBusyness(loop, {{BusyReason::Sound, sound.source()}, {BusyReason::Awake, awake.source()}});
    std::vector<std::optional<BusyReason>> answers;

    Subscription ask(const std::set<BusyReason>& reasons) {
        return busy->ask(reasons, [this](std::optional<BusyReason> reason) { answers.push_back(reason); });
    }
    std::vector<std::optional<BusyReason>> told() {
        spin(loop, 0.05);
        return std::exchange(answers, {});
    }
};

TEST_F(BusyTest, theFirstThatHoldsIsTheAnswerAndTheOthersAreLetGo) {
    using Reasons = std::vector<std::optional<BusyReason>>;
    auto question = ask({BusyReason::Sound, BusyReason::Awake, BusyReason::Camera});
    sound.answer(false);
    EXPECT_EQ(told(), Reasons{});
    awake.answer(true);
    EXPECT_TRUE(answers.empty()) << "never inside of what was heard";
    EXPECT_EQ(told(), Reasons{BusyReason::Awake});
    EXPECT_EQ(log, "sa-s-a");
    sound.atOnce = awake.atOnce = false;
    question = ask({BusyReason::Sound, BusyReason::Awake});
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(told(), Reasons{std::nullopt});
    awake.atOnce = true;
    question = ask({BusyReason::Awake});
    question.cancel();
    EXPECT_EQ(told(), Reasons{}) << "nobody wants to know any more";
    question = ask({BusyReason::Camera});
    EXPECT_EQ(told(), Reasons{std::nullopt}) << "there is nobody to be asked";
}

} // namespace
} // namespace kelpa::test
