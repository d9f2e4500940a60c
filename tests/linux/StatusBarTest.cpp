#include "Support.h"
#include "platform/linux/tray/LinuxStatusBar.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using Log = std::vector<std::string>;

struct NoClicks : MenuClicks {
    void didClick(int) override {}
};

struct KeepingSink : StatusItemSink {
    Log log;
    void show(const StatusItemModel& model, MenuClicks&) override {
        std::string text = "show " + model.image + " '" + model.title + "'" + model.hint;
        for (const MenuLine& line : model.lines)
            text += " " + std::to_string(line.id) + ":" + line.title;
        log.push_back(text);
    }
    void hide() override { log.push_back("hide"); }
    void lineInserted(std::size_t index, const MenuLine& line) override {
        log.push_back("insert " + std::to_string(index) + " " + line.title);
    }
    void lineRemoved(int lineId) override { log.push_back("remove " + std::to_string(lineId)); }
    void lineChanged(const MenuLine& line) override { log.push_back("change " + line.title); }
    void titleChanged(const std::string& title) override { log.push_back("title " + title); }
    void hintChanged(const std::string& hint) override { log.push_back("hint " + hint); }
};

MenuLine line(int id, const std::string& title) {
    MenuLine made;
    made.id = id;
    made.title = title;
    return made;
}

struct StatusBarTest : testing::Test {
    EventLoop loop;
    NoClicks clicks;
    KeepingSink sink;
    LinuxStatusBar bar;
};

TEST_F(StatusBarTest, aPlaceHearsEverythingAtOnceAndThenOnlyChanges) {
    bar.addSink(sink);
    bar.lineInserted(0, line(1, "Quit"));
    bar.lineInserted(0, line(2, "Stop"));
    bar.setTitle("25:00");
    EXPECT_EQ(sink.log, Log{});
    bar.createItem("kelpa", clicks);
    bar.setTitle("25:00");
    bar.setTitle("24:59");
    bar.lineChanged(line(2, "Stop"));
    bar.lineChanged(line(2, "Work"));
    bar.lineChanged(line(9, "Nowhere"));
    bar.lineInserted(1, line(3, "Water"));
    bar.lineRemoved(3);
    bar.lineRemoved(3);
    EXPECT_EQ(sink.log, (Log{"show kelpa '25:00' 2:Stop 1:Quit", "title 24:59", "change Work",
                             "insert 1 Water", "remove 3"}));
}

TEST_F(StatusBarTest, aPlaceThatComesLateIsToldOfTheStateAndOneThatLeftOfNothing) {
    bar.lineInserted(0, line(1, "Quit"));
    bar.createItem("kelpa", clicks);
    bar.setTitle("24:59");
    bar.addSink(sink);
    bar.addSink(sink);
    bar.removeSink(sink);
    bar.removeSink(sink);
    bar.setTitle("24:58");
    bar.setHint("Busy.");
    bar.addSink(sink);
    bar.setHint("Busy.");
    bar.setHint("");
    EXPECT_EQ(sink.log,
              (Log{"show kelpa '24:59' 1:Quit", "hide", "show kelpa '24:58'Busy. 1:Quit", "hint "}));
}

TEST_F(StatusBarTest, theFallbackWaitsForAHostAndLeavesToOne) {
    TrayFallback fallback(loop, bar, sink);
    bar.createItem("kelpa", clicks);
    fallback.setHostPresent(false);
    spin(loop, TrayFallback::patience / 2);
    fallback.setHostPresent(false); // does not make the wait longer
    EXPECT_EQ(sink.log, Log{});
    spin(loop, TrayFallback::patience * 3 / 4);
    EXPECT_EQ(sink.log, (Log{"show kelpa ''"}));
    fallback.setHostPresent(true);
    EXPECT_EQ(sink.log, (Log{"show kelpa ''", "hide"}));
    fallback.setHostPresent(false);
    fallback.setHostPresent(true); // a host that restarts
    spin(loop, TrayFallback::patience + 0.2);
    EXPECT_EQ(sink.log.size(), 2u);
}

} // namespace
} // namespace kelpa::test
