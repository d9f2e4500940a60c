// The preferences window and the about panel as the program sees them, with a stand-in for the view.

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/Json.h"
#include "platform/linux/windows/RemoteAboutPanel.h"
#include "platform/linux/windows/RemotePreferencesWindow.h"
#include "tests/linux-view/RemoteWindows.h"

namespace {

using namespace kelpa;

/// Writes down what it is told, one line each, and answers the way it is asked to.
class Told final : public PreferencesClient {
  public:
    void cameToFront() override { lines.emplace_back("front"); }
    void closed() override { lines.emplace_back("closed"); }
    void switched(const std::string& id, bool on) override { note("switched", id, on ? "on" : "off"); }
    void typed(const std::string& id, const std::string& text) override { note("typed", id, text); }
    void entered(const std::string& id, const std::string& text) override { note("entered", id, text); }
    void stepped(const std::string& id, int direction) override {
        note("stepped", id, std::to_string(direction));
    }
    void chosen(const std::string& id, std::int64_t value) override {
        note("chosen", id, std::to_string(value));
    }
    void timeEntered(const std::string& id, int hour, int minute) override { time("time", id, hour, minute); }
    void timePointAdded(const std::string& id, int hour, int minute) override {
        time("add", id, hour, minute);
    }
    void timePointRemoved(const std::string& id, int hour, int minute) override {
        time("remove", id, hour, minute);
    }
    void promptAdded(const std::string& id, const std::string& text) override { note("added", id, text); }
    void promptEdited(const std::string& id, const std::string& old, const std::string& text) override {
        note("edited", id, old + " -> " + text);
    }
    void promptDeleted(const std::string& id, const std::string& text) override { note("deleted", id, text); }
    void promptsReset(const std::string& id) override { note("reset", id, ""); }

    std::vector<std::string> lines;

  private:
    void note(const std::string& what, const std::string& id, const std::string& value) {
        lines.push_back(what + " " + id + (value.empty() ? "" : " " + value));
    }
    void time(const std::string& what, const std::string& id, int hour, int minute) {
        note(what, id, std::to_string(hour) + ":" + std::to_string(minute));
    }
};

class Preferences : public test::RemoteWindows {
  protected:
    void layOut() {
        open();
        window_ = std::make_unique<RemotePreferencesWindow>(*windows_);
        PreferencesLayout layout;
        layout.title = "Settings";
        window_->setLayout(layout, told_);
        window_->setText("work", "25");
        window_->setSwitch("time", true);
        window_->setVisible("points", false);
    }
    /// Has a person do something: the stand-in does what it is told in a hint.
    bool doing(const std::string& deed) {
        const auto before = told_.lines.size();
        window_->setHint("deed", "do " + deed);
        const bool told = runUntil([&] { return told_.lines.size() > before; });
        window_->setHint("deed", "");
        return told;
    }

    Told told_;
    std::unique_ptr<RemotePreferencesWindow> window_;
};

TEST_F(Preferences, KeepWhatWasTypedWhenAnotherViewTakesOver) {
    layOut();
    window_->show();
    ASSERT_TRUE(doing("typed|work|2"));
    window_->setHint("deed", "crash");
    ASSERT_TRUE(receives("started", 2));
    EXPECT_TRUE(receives("set 1 text:work 2"));
}

TEST_F(Preferences, AreNothingToTheViewUntilTheyAreShown) {
    layOut();
    make(desktop_.screens()[0]);
    appear();
    window_->setText("work", "26");
    face_->setCount("01:00");
    ASSERT_TRUE(receives("set 2 count 01:00"));
    for (const std::string& line : received())
        EXPECT_EQ(line.find("text:work"), std::string::npos) << line;
    window_->show();
    ASSERT_TRUE(receives("show 1"));
    const auto told = receivedSince("set 2 count 01:00");
    ASSERT_GE(told.size(), 5U);
    EXPECT_EQ(told[0], "open 1 preferences Settings 0 0 0 0 A");
    EXPECT_TRUE(told[1].starts_with("set 1 layout {"));
    EXPECT_EQ(told[2], "set 1 text:work 26");
    EXPECT_EQ(told[3], "set 1 on:time 1");
    EXPECT_EQ(told[4], "set 1 visible:points 0");
}

TEST_F(Preferences, SayAgainWhatWasTypedOverAndNothingElse) {
    layOut();
    window_->show();
    ASSERT_TRUE(receives("show 1"));
    window_->setSwitch("time", true);
    window_->setText("work", "25");
    window_->setText("work", "25");
    window_->setCopyright("2027");
    window_->setCopyright("2027");
    window_->setTimeOfDay("start", 8, 5);
    ASSERT_TRUE(receives("set 1 time:start 8:5"));
    EXPECT_EQ(receivedSince("show 1"),
              (std::vector<std::string>{"set 1 text:work 25", "set 1 text:work 25", "set 1 copyright 2027",
                                        "set 1 time:start 8:5"}));
}

TEST_F(Preferences, ReportWhatAPersonDoes) {
    layOut();
    window_->show();
    ASSERT_TRUE(receives("show 1"));
    for (const char* deed :
         {"cameToFront", "switched|time|0", "typed|work|2", "entered|work|26", "stepped|work|-1",
          "stepped|work|1", "chosen|mode|1", "timeEntered|start|23|59", "timePointAdded|points|7|0",
          "timePointRemoved|points|8|30", "promptAdded|prompts|new", "promptEdited|prompts|old one|new one",
          "promptDeleted|prompts|old", "promptsReset|prompts"})
        EXPECT_TRUE(doing(deed)) << deed;
    EXPECT_EQ(told_.lines, (std::vector<std::string>{
                               "front", "switched time off", "typed work 2", "entered work 26",
                               "stepped work -1", "stepped work 1", "chosen mode 1", "time start 23:59",
                               "add points 7:0", "remove points 8:30", "added prompts new",
                               "edited prompts old one -> new one", "deleted prompts old", "reset prompts"}));
    EXPECT_TRUE(receives("set 1 on:time 1", 2)) << "a switch that was not taken shows that";
}

TEST_F(Preferences, LeaveOutWhatMakesNoSense) {
    layOut();
    window_->show();
    ASSERT_TRUE(receives("show 1"));
    for (const char* deed : {"chosen|mode|many", "timeEntered|start|24|0", "timePointAdded|points|7",
                             "dance|work", "timePointRemoved|points|-1|3"})
        window_->setHint("deed", std::string("do ") + deed);
    EXPECT_TRUE(doing("cameToFront"));
    EXPECT_EQ(told_.lines, std::vector<std::string>{"front"});
}

TEST_F(Preferences, ShowOfEndlessTextsTheBeginningAndKeepTheRest) {
    const std::string endless(2'000'000, 'p');
    const std::string other = endless + "q";
    const auto cut = [](const std::string& more) {
        return std::string(wire::view::longestText - 3, 'p') + more;
    };
    layOut();
    window_->show();
    window_->setText("prompt", endless);
    window_->setPrompts("prompts", {endless, other, "short"});
    ASSERT_TRUE(receives("set 1 text:prompt " + cut("…")));
    ASSERT_TRUE(receives("set 1 entries:prompts [{\"text\":\"" + cut("…") + "\"},{\"text\":\"" + cut("……") +
                         "\"},{\"text\":\"short\"}]"));
    for (const std::string& deed :
         std::vector<std::string>{"promptEdited|prompts|short|shorter", "promptDeleted|prompts|" + cut("……"),
                                  "promptEdited|prompts|" + cut("…") + "|new", "typed|prompt|" + cut("…"),
                                  "entered|prompt|" + cut("…") + "!"})
        EXPECT_TRUE(doing(deed)) << deed.substr(0, 30);
    EXPECT_EQ(told_.lines,
              (std::vector<std::string>{"edited prompts short -> shorter", "deleted prompts " + other,
                                        "edited prompts " + endless + " -> new", "typed prompt " + endless,
                                        "entered prompt " + cut("…") + "!"}));
    EXPECT_EQ(std::count(told_.lines.begin(), told_.lines.end(), "front"), 0);
    const auto lines = received();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "started"), 1) << "the view was cut off";
}

TEST_F(Preferences, ShowOfEndlessTimesOfDayTheFirst) {
    layOut();
    window_->show();
    window_->setTimePoints("points",
                           std::vector<TimePoint>(100'000, {8, 5, "08:05", "Remove this time 08:05"}));
    ASSERT_TRUE(receives("show 1"));
    ASSERT_TRUE(doing("cameToFront"));
    const auto lines = received();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "started"), 1) << "the view was cut off";
    const auto sent = std::find_if(lines.begin(), lines.end(),
                                   [](const auto& line) { return line.starts_with("set 1 entries:points"); });
    ASSERT_NE(sent, lines.end());
    std::size_t tiles = 0;
    for (std::size_t at = sent->find("\"value\""); at != std::string::npos;
         at = sent->find("\"value\"", at + 1))
        ++tiles;
    EXPECT_EQ(tiles, 288U);
}

TEST_F(Preferences, ComeBackWhereTheyWereClosed) {
    layOut();
    window_->show();
    ASSERT_TRUE(receives("show 1"));
    ASSERT_TRUE(doing("closed|10 20 700 500"));
    EXPECT_EQ(told_.lines, std::vector<std::string>{"closed"});
    EXPECT_TRUE(receives("drop 1"));
    window_->setText("work", "40");
    window_->show();
    ASSERT_TRUE(receives("show 1", 2));
    const auto told = receivedSince("drop 1");
    EXPECT_EQ(std::count(told.begin(), told.end(), "set 1 bounds 10 20 700 500"), 1);
    EXPECT_EQ(std::count(told.begin(), told.end(), "set 1 text:work 40"), 1);
}

TEST_F(Preferences, OutliveTheView) {
    layOut();
    window_->show();
    ASSERT_TRUE(receives("show 1"));
    window_->setText("work", "31");
    window_->setProblem("other", "crash");
    window_->setProblem("other", "");
    ASSERT_TRUE(receives("started", 2)) << "no other view was started";
    ASSERT_TRUE(receives("show 1", 2));
    const auto told = receivedSince("started");
    EXPECT_EQ(std::count(told.begin(), told.end(), "set 1 text:work 31"), 1);
}

TEST_F(Preferences, LeaveTheKeyboardToTheWindowManager) {
    layOut();
    window_->show();
    windows_->activate();
    ASSERT_TRUE(receives("activate"));
    EXPECT_TRUE(desktop_.events.empty())
        << "what had the keyboard was kept, and would be given back much later";
    make(desktop_.screens()[0]);
    appear();
    windows_->activate();
    EXPECT_EQ(desktop_.events, std::vector<std::string>{"remember"});
}

TEST_F(Preferences, AboutPanelSaysWhatItIsGivenAndCloses) {
    open();
    RemoteAboutPanel panel(*windows_);
    panel.show({"icon", "Kelpa", "v1(2)", "Copyright", "Notes", "https://kelpa.example"});
    ASSERT_TRUE(receives("show 1"));
    const auto told = receivedSince("started");
    EXPECT_EQ(told[0], "open 1 about Kelpa 0 0 0 0 A");
    EXPECT_EQ(told[1], "set 1 about " + aboutJson({"icon", "", "", "Kelpa", "v1(2)", "Copyright", "Notes",
                                                   "https://kelpa.example"}));
    panel.show({"icon", "do closed|1 2 3 4", "v1(2)", "Copyright", "Notes", ""});
    EXPECT_TRUE(receives("drop 1"));
}

} // namespace
