#include "FakeCompositor.h"
#include "FakeLogind.h"
#include "Support.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/events/DesktopActivity.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace kelpa::test {
namespace {

using Start = ActivitySource::Start;
/// A second of the program is a twentieth of a real one.
constexpr double speed = 20;
constexpr double realSecond = 1 / speed;

struct Windows final : OwnWindows {
    [[nodiscard]] bool coverEveryScreen() const override { return false; }
    [[nodiscard]] bool anyVisible() const override { return visible; }
    [[nodiscard]] double secondsSinceInput() const override { return sinceInput; }
    [[nodiscard]] int viewPid() const override { return 0; }
    bool visible = false;
    double sinceInput = std::numeric_limits<double>::infinity();
};

/// Counts the words of activity and keeps the others, a letter each: W, A or F.
struct Sink final : ActivitySink {
    void deskUsed() override { ++words; }
    void sourceWatches() override { heard += 'W'; }
    void sourceAbsent() override { heard += 'A'; }
    void sourceFailed(const std::string& reason) override {
        heard += 'F';
        why = reason;
    }
    int words = 0;
    std::string heard;
    std::string why;
};

class ActivityTest : public testing::Test {
  protected:
    /// How many words of activity come in so many seconds of the program.
    int wordsIn(double seconds) {
        const int before = sink.words;
        spin(loop, seconds * realSecond);
        return sink.words - before;
    }
    bool nextWord() {
        const int before = sink.words;
        return spinUntil(loop, [&] { return sink.words > before; });
    }
    void expectRest() {
        wordsIn(2);
        EXPECT_EQ(wordsIn(10), 0) << "nobody is there";
    }
    void expectSteadyWords() {
        const double began = secondsNow();
        const int words = wordsIn(10);
        EXPECT_GE(words, 3);
        EXPECT_LE(words, (secondsNow() - began) / realSecond + 1);
    }

    EventLoop loop{speed};
    Windows windows;
    Sink sink;
};

TEST_F(ActivityTest, SomebodyIsThereOnceASecondUntilTheDeskRests) {
    ActivitySpell spell(loop, windows);
    EXPECT_EQ(ActivitySpell::restMilliseconds(1), 800);
    EXPECT_EQ(ActivitySpell::restMilliseconds(10'000), 1);
    spell.start(sink);
    EXPECT_EQ(sink.words, 0) << "it is only supposed so far";
    expectSteadyWords();
    spell.rest();
    expectRest();
    spell.active();
    spell.stop();
    expectRest();
}

TEST_F(ActivityTest, EachUseOfARestingDeskIsHeardButNotEachOfMany) {
    ActivitySpell spell(loop, windows);
    spell.start(sink);
    spell.rest();
    expectRest();
    const int before = sink.words;
    const double began = secondsNow();
    for (int i = 0; i < 100; ++i) {
        spell.active();
        EXPECT_GT(sink.words, before) << "the first is told of at once";
        spell.rest();
    }
    EXPECT_LE(sink.words - before, 1 + (secondsNow() - began) / realSecond);
    // The last of them came after the word, so that there is one more, and no more after that.
    EXPECT_TRUE(nextWord());
    expectRest();
}

TEST_F(ActivityTest, WhatGoesIntoOurOwnWindowsIsNone) {
    ActivitySpell spell(loop, windows);
    spell.start(sink);
    windows.visible = true;
    windows.sinceInput = 0.1;
    EXPECT_EQ(wordsIn(20), 0);
    windows.sinceInput = 60;
    spell.rest();
    spin(loop, 0.3); // the view may still have been waited for
    expectRest();
    spell.active();
    EXPECT_TRUE(nextWord()) << "it went into another one";
}

TEST_F(ActivityTest, ACompositorIsAskedInTheBestWayItKnows) {
    for (const auto speaks : {FakeCompositor::Speaks::Both, FakeCompositor::Speaks::Kde}) {
        FakeCompositor compositor(speaks);
        const auto seat = compositor.addSeat();
        const auto source = makeWaylandActivity(loop, windows, speed);
        ASSERT_EQ(source->start(sink), Start::Watching);
        const bool both = speaks == FakeCompositor::Speaks::Both;
        EXPECT_EQ(source->name(),
                  both ? "the compositor (ext_idle_notifier_v1)" : "the compositor (org_kde_kwin_idle)");
        EXPECT_EQ(compositor.question(seat).protocol, both ? "ext" : "kde");
        EXPECT_EQ(compositor.question(seat).milliseconds, 40);
        expectSteadyWords();
        compositor.tell(seat, true);
        expectRest();
        compositor.tell(seat, false);
        EXPECT_TRUE(nextWord());
        expectSteadyWords();
    }
    EXPECT_EQ(sink.heard, "");
}

TEST_F(ActivityTest, ACompositorThatTellsOfNothingOrIsNotThereIsNoSource) {
    {
        const FakeCompositor compositor(FakeCompositor::Speaks::Nothing);
        const auto source = makeWaylandActivity(loop, windows, speed);
        EXPECT_EQ(source->start(sink), Start::Absent);
    }
    setenv("WAYLAND_DISPLAY", "/nonexistent/wayland", 1);
    const auto source = makeWaylandActivity(loop, windows, speed);
    EXPECT_EQ(source->start(sink), Start::Absent);
    EXPECT_EQ(wordsIn(5), 0);
}

TEST_F(ActivityTest, EverySeatCountsAlsoOneThatComesLater) {
    FakeCompositor compositor(FakeCompositor::Speaks::Both);
    const auto source = makeWaylandActivity(loop, windows, speed);
    ASSERT_EQ(source->start(sink), Start::Watching);
    const auto first = compositor.addSeat();
    const auto second = compositor.addSeat();
    ASSERT_TRUE(spinUntil(loop, [&] { return !compositor.question(second).protocol.empty(); }));
    compositor.tell(first, true);
    expectSteadyWords();
    compositor.tell(second, true);
    expectRest();
    compositor.tell(first, false);
    EXPECT_TRUE(nextWord());
    compositor.removeSeat(first);
    expectRest();
    EXPECT_TRUE(compositor.question(first).protocol.empty()) << "nobody listens to it any more";
}

TEST_F(ActivityTest, ACompositorThatGoesSaysNothingMore) {
    std::optional<FakeCompositor> compositor(FakeCompositor::Speaks::Both);
    compositor->addSeat();
    const auto source = makeWaylandActivity(loop, windows, speed);
    ASSERT_EQ(source->start(sink), Start::Watching);
    compositor.reset();
    EXPECT_TRUE(spinUntil(loop, [&] { return sink.heard == "F"; }));
    EXPECT_EQ(wordsIn(10), 0);
}

constexpr const char* mutter = "org.gnome.Mutter.IdleMonitor";
constexpr const char* mutterPath = "/org/gnome/Mutter/IdleMonitor/Core";

/// What GNOME's compositor has on the bus. A watch for use fires once, one for rest each time.
class Mutter : public Peer {
  public:
    explicit Mutter(EventLoop& loop) : Peer(loop) {
        sd_bus_add_object_vtable(bus(), nullptr, mutterPath, mutter, vtable, this);
        sd_bus_request_name(bus(), mutter, 0);
    }
    void rest() { fire(restWatch); }
    void use() { fire(std::exchange(useWatch, 0)); }

    std::uint64_t interval = 0;
    std::uint32_t restWatch = 0;
    std::uint32_t useWatch = 0;

  private:
    void fire(std::uint32_t watch) {
        if (watch != 0)
            sd_bus_emit_signal(bus(), mutterPath, mutter, "WatchFired", "u", watch);
    }
    static int add(sd_bus_message* call, void* self, sd_bus_error*) {
        auto& of = *static_cast<Mutter*>(self);
        const bool forUse = sd_bus_message_is_method_call(call, nullptr, "AddUserActiveWatch") > 0;
        if (!forUse)
            sd_bus_message_read(call, "t", &of.interval);
        return sd_bus_reply_method_return(call, "u", (forUse ? of.useWatch : of.restWatch) = ++of.last_);
    }
    static constexpr sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0), SD_BUS_METHOD("AddIdleWatch", "t", "u", add, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("AddUserActiveWatch", "", "u", add, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL("WatchFired", "u", 0), SD_BUS_VTABLE_END};
    std::uint32_t last_ = 70;
};

TEST_F(ActivityTest, GnomeTellsOverTheBus) {
    const PrivateBus daemon;
    OpenBus bus(loop);
    std::optional<Mutter> gnome(std::in_place, loop);
    const auto source = makeMutterActivity(loop, bus, windows, speed);
    ASSERT_EQ(source->start(sink), Start::Asking);
    ASSERT_TRUE(spinUntil(loop, [&] { return sink.heard == "W"; }));
    EXPECT_EQ(gnome->interval, 40);
    expectSteadyWords();
    for (int round = 0; round < 2; ++round) {
        gnome->rest();
        expectRest();
        EXPECT_NE(gnome->useWatch, 0);
        gnome->use();
        EXPECT_TRUE(nextWord());
    }
    gnome.reset();
    EXPECT_TRUE(spinUntil(loop, [&] { return sink.heard == "WF"; }));
    EXPECT_EQ(wordsIn(10), 0);
}

TEST_F(ActivityTest, WithoutGnomeThereIsNoSuchSource) {
    PrivateBus daemon;
    OpenBus bus(loop);
    {
        const auto source = makeMutterActivity(loop, bus, windows, speed);
        EXPECT_EQ(source->start(sink), Start::Asking);
        EXPECT_TRUE(spinUntil(loop, [&] { return sink.heard == "A"; }));
    }
    daemon.end();
    ASSERT_TRUE(spinUntil(loop, [&] { return !bus.open(); }));
    const auto source = makeMutterActivity(loop, bus, windows, speed);
    EXPECT_EQ(source->start(sink), Start::Absent) << "the bus is gone as well";
}

TEST_F(ActivityTest, LogindTellsWhatADesktopToldIt) {
    unsetenv("XDG_SESSION_ID");
    std::optional<PrivateBus> daemon(std::in_place, "DBUS_SYSTEM_BUS_ADDRESS");
    OpenBus bus(loop, Bus::Kind::System);
    FakeLogind logind(loop);
    const auto source = makeLogindActivity(loop, bus, windows);
    ASSERT_EQ(source->start(sink), Start::Asking);
    ASSERT_TRUE(spinUntil(loop, [&] { return sink.heard == "W"; }));
    expectSteadyWords();
    logind.setIdle(true);
    expectRest();
    logind.setIdle(false);
    EXPECT_TRUE(nextWord());
    daemon.reset();
    EXPECT_TRUE(spinUntil(loop, [&] { return sink.heard == "WF"; }));
    EXPECT_EQ(wordsIn(10), 0);
}

/// What goes into the log, a line each.
struct Report final : WindowReport {
    void info(const std::string& text) override { lines += text + "\n"; }
    void warning(const std::string& text) override { lines += "! " + text + "\n"; }
    std::string lines;
};

/// A source that says what the test has it say.
class Written final : public ActivitySource {
  public:
    Written(std::string name, Start start, ActivitySink*& sink)
        : name_(std::move(name)), start_(start), sink_(sink) {}
    [[nodiscard]] std::string name() const override { return name_; }
    Start start(ActivitySink& sink) override {
        sink_ = &sink;
        return start_;
    }

  private:
    std::string name_;
    Start start_;
    ActivitySink*& sink_;
};

TEST_F(ActivityTest, OneSourceAfterTheOtherIsTriedAndTheLogSaysWhichOneItIs) {
    Report report;
    ActivitySink *absent = nullptr, *asked = nullptr, *last = nullptr;
    std::vector<std::unique_ptr<ActivitySource>> sources;
    sources.push_back(std::make_unique<Written>("one", Start::Absent, absent));
    sources.push_back(std::make_unique<Written>("two", Start::Asking, asked));
    sources.push_back(std::make_unique<Written>("three", Start::Watching, last));
    const auto activity = makeDesktopActivity([] { return true; }, report, std::move(sources));
    int words = 0;
    bool lost = false;
    EXPECT_EQ(activity->watch([&] { ++words; }, [&] { lost = true; }), ActivityMonitor::Watch::None);
    EXPECT_EQ(last, nullptr) << "the second has not answered";
    asked->sourceAbsent();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(report.lines, "Activity is heard of from three.\n");
    EXPECT_EQ(words, 1);
    last->sourceFailed("it broke");
    EXPECT_TRUE(lost);
    EXPECT_EQ(report.lines,
              "Activity is heard of from three.\n"
              "! Activity cannot be heard of from three: it broke\n"
              "! Nothing on this desktop tells of mouse activity: work goes on when nobody is there.\n");
}

} // namespace
} // namespace kelpa::test
