// The preferences window and the about panel as the program sees them, with a stand-in for the view.

#include "base/Text.h"
#include "panes/Pane.h"
#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/RemoteDialogs.h"
#include "platform/linux/windows/RemotePreferencesWindow.h"
#include "tests/linux-view/RemoteWindows.h"

namespace kelpa::test {
namespace {

using Field = PreferencesField;

std::string text(const PreferencesValue& value) {
    if (const auto* on = std::get_if<bool>(&value))
        return *on ? "on" : "off";
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return std::to_string(*number);
    if (const auto* edit = std::get_if<PreferencesEdit>(&value))
        return edit->old + " -> " + edit->text;
    return std::get<std::string>(value);
}

/// Writes down what a person does, one line each, and answers nothing.
class Told final : public PreferencesClient {
  public:
    void cameToFront() override { lines.emplace_back("front"); }
    void closed() override { lines.emplace_back("closed"); }
    void did(const std::string& id, PreferencesAct act, const PreferencesValue& value) override {
        shown->did(id, act, value);
        const std::string name(nameOf(wire::view::acts, act));
        lines.push_back(name + " " + id + " " + text(value));
    }
    void showAgain() override { shown->showAgain(); }

    std::unique_ptr<ShownPreferences> shown;
    std::vector<std::string> lines;
};

class Preferences : public RemoteWindows {
  protected:
    Preferences() {
        window_ = std::make_unique<RemotePreferencesWindow>(*windows_);
        PreferencesLayout layout;
        layout.title = "Settings";
        window_->setLayout(layout, told_);
        told_.shown = std::make_unique<ShownPreferences>(*window_);
        show("work", Field::Value, "25");
        show("time", Field::Value, true);
        show("points", Field::Visible, false);
    }
    void show(const char* id, PreferencesField field, const PreferencesValue& value) {
        told_.shown->show(id, field, value);
    }
    /// Has a person do something: the stand-in does what it is told in a hint.
    bool doing(const std::string& deed) {
        const auto before = told_.lines.size();
        show("deed", Field::Hint, "do " + deed);
        const bool told = runUntil([&] { return told_.lines.size() > before; });
        show("deed", Field::Hint, "");
        return told;
    }

    Told told_;
    std::unique_ptr<RemotePreferencesWindow> window_;
};

TEST_F(Preferences, OutliveTheViewWithWhatWasTyped) {
    window_->show();
    ASSERT_TRUE(doing("did|work|typed|text|2"));
    show("deed", Field::Hint, "crash");
    show("deed", Field::Hint, "");
    ASSERT_TRUE(receives("started", 2)) << "no other view was started";
    ASSERT_TRUE(receives("1 show", 2));
    const auto told = receivedSince("started");
    EXPECT_EQ(std::count(told.begin(), told.end(), "1 tell work value text 2"), 1);
    EXPECT_EQ(std::count(told.begin(), told.end(), "1 tell time value bool 1"), 1);
}

TEST_F(Preferences, AreNothingToTheViewUntilTheyAreShown) {
    make(desktop_.screens.all()[0]);
    appear();
    show("work", Field::Value, "26");
    face_->setCount("01:00");
    ASSERT_TRUE(receives("2 set count 01:00"));
    for (const std::string& line : received())
        EXPECT_EQ(line.find("work value"), std::string::npos) << line;
    window_->show();
    ASSERT_TRUE(receives("1 show"));
    const auto told = receivedSince("2 set count 01:00");
    ASSERT_GE(told.size(), 5U);
    EXPECT_EQ(told[0], "open 1 preferences Settings 0 0 0 0 A");
    EXPECT_TRUE(told[1].starts_with("1 set layout {"));
    EXPECT_EQ(told[2], "1 tell points visible bool 0");
    EXPECT_EQ(told[3], "1 tell time value bool 1");
    EXPECT_EQ(told[4], "1 tell work value text 26");
}

TEST_F(Preferences, ReportWhatAPersonDoes) {
    window_->show();
    ASSERT_TRUE(receives("1 show"));
    for (const char* deed :
         {"cameToFront", "did|time|entered|bool|0", "did|work|typed|text|2", "did|work|entered|text|26",
          "did|work|stepped|number|-1", "did|mode|entered|number|9007199254740993",
          "did|points|added|number|420", "did|points|removed|number|510", "did|prompts|added|text|new",
          "did|prompts|edited|edit|old one|new one", "did|prompts|removed|text|old",
          "did|prompts|reset|text|"})
        EXPECT_TRUE(doing(deed)) << deed;
    EXPECT_EQ(told_.lines, (std::vector<std::string>{
                               "front", "entered time off", "typed work 2", "entered work 26",
                               "stepped work -1", "entered mode 9007199254740993", "added points 420",
                               "removed points 510", "added prompts new", "edited prompts old one -> new one",
                               "removed prompts old", "reset prompts "}));
}

TEST_F(Preferences, LeaveOutWhatMakesNoSense) {
    window_->show();
    ASSERT_TRUE(receives("1 show"));
    for (const char* deed : {"did|mode|entered|number|many", "did|work|dance|text|1",
                             "did|work|entered|colour|1", "did|work|entered", "did", "dance|work"})
        show("deed", Field::Hint, std::string("do ") + deed);
    EXPECT_TRUE(doing("cameToFront"));
    EXPECT_EQ(told_.lines, std::vector<std::string>{"front"});
}

TEST_F(Preferences, ShowOfEndlessTextsTheBeginningAndKeepTheRest) {
    const std::string endless(2'000'000, 'p');
    const std::string other = endless + "q";
    const auto cut = [](const std::string& more) {
        return std::string(wire::view::longestText - 3, 'p') + more;
    };
    window_->show();
    show("prompt", Field::Value, endless);
    show("prompts", Field::Entries,
         std::vector<PreferencesEntry>{{0, endless, ""}, {0, other, ""}, {0, "short", ""}});
    const auto line = [](const std::string& shown) {
        return R"({"removal":"","text":")" + shown + R"(","value":0})";
    };
    ASSERT_TRUE(receives("1 tell prompt value text " + cut("…")));
    ASSERT_TRUE(receives("1 tell prompts entries list [" + line(cut("…")) + "," + line(cut("……")) + "," +
                         line("short") + "]"));
    show("prompt", Field::Problem, "none");
    for (const std::string& deed : std::vector<std::string>{
             "did|prompts|edited|edit|short|shorter", "did|prompts|removed|text|" + cut("……"),
             "did|prompts|edited|edit|" + cut("…") + "|new", "did|prompt|typed|text|" + cut("…"),
             "did|prompt|entered|text|" + cut("…") + "!"})
        EXPECT_TRUE(doing(deed)) << deed.substr(0, 30);
    EXPECT_EQ(told_.lines,
              (std::vector<std::string>{"edited prompts short -> shorter", "removed prompts " + other,
                                        "edited prompts " + endless + " -> new", "typed prompt " + endless,
                                        "entered prompt " + cut("…") + "!"}));
    const auto lines = received();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "started"), 1) << "the view was cut off";
}

TEST_F(Preferences, ShowOfEndlessTimesOfDayTheFirst) {
    window_->show();
    show("points", Field::Entries,
         std::vector<PreferencesEntry>(100'000, {485, "08:05", "Remove this time 08:05"}));
    ASSERT_TRUE(receives("1 show"));
    ASSERT_TRUE(doing("cameToFront"));
    const auto lines = received();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "started"), 1) << "the view was cut off";
    const auto sent = std::find_if(lines.begin(), lines.end(), [](const auto& line) {
        return line.starts_with("1 tell points entries list");
    });
    ASSERT_NE(sent, lines.end());
    std::size_t tiles = 0;
    for (std::size_t at = sent->find("\"value\""); at != std::string::npos;
         at = sent->find("\"value\"", at + 1))
        ++tiles;
    EXPECT_EQ(tiles, 288U);
}

TEST_F(Preferences, ComeBackWhereTheyWereClosed) {
    window_->show();
    ASSERT_TRUE(receives("1 show"));
    ASSERT_TRUE(doing("closed|10|20|700|500"));
    EXPECT_EQ(told_.lines, std::vector<std::string>{"closed"});
    EXPECT_TRUE(receives("drop 1"));
    show("work", Field::Value, "40");
    window_->show();
    ASSERT_TRUE(receives("1 show", 2));
    const auto told = receivedSince("drop 1");
    EXPECT_EQ(std::count(told.begin(), told.end(), "open 1 preferences Settings 10 20 700 500 A"), 1);
    EXPECT_EQ(std::count(told.begin(), told.end(), "1 tell work value text 40"), 1);
}

TEST_F(Preferences, LeaveTheKeyboardToTheWindowManager) {
    window_->show();
    windows_->activate();
    ASSERT_TRUE(receives("activate"));
    EXPECT_TRUE(desktop_.events.empty())
        << "what had the keyboard was kept, and would be given back much later";
    make(desktop_.screens.all()[0]);
    appear();
    windows_->activate();
    EXPECT_EQ(desktop_.events, std::vector<std::string>{"remember"});
}

TEST_F(RemoteWindows, LetGoOfAnAboutPanelThatWasClosed) {
    RemoteAboutPanel panel(*windows_);
    panel.show({"", "", "", "do closed|1|2|3|4", "", "", "", ""});
    EXPECT_TRUE(receives("drop 1"));
}

} // namespace
} // namespace kelpa::test
