// What the program calls a property or an action, and what the pages of the view call it: each side has its
// names in one place, and here they are compared.

#include "platform/linux/windows/RemoteDialogs.h"
#include "tests/linux-view/RemoteWindows.h"

#include <nlohmann/json.hpp>
#include <regex>
#include <set>

namespace kelpa::test {
namespace {

using Names = std::set<std::string>;

class WaterClient final : public WaterPanelClient {
  public:
    void amountTapped(std::int64_t millilitres) override { heard.insert(millilitres == 200 ? "amount" : ""); }
    void skipPressed() override { heard.insert("skip"); }
    void donePressed() override { heard.insert("done"); }
    void closePressed() override { heard.insert("close"); }
    Names heard;
};

class UpdateClient final : public UpdateWindowClient {
  public:
    void act(UpdateAction /*action*/) override { ++heard; }
    int heard = 0;
};

class Pages : public RemoteWindows {
  protected:
    /// All first groups of an expression in the lines of a page.
    static Names inPage(const std::string& page, const std::string& expression) {
        std::ifstream file(KELPA_SOURCE_DIR "/platform/linux/view/qml/" + page);
        EXPECT_TRUE(file) << page;
        Names names;
        const std::regex pattern(expression);
        for (std::string line; std::getline(file, line);)
            for (std::sregex_iterator found(line.begin(), line.end(), pattern), end; found != end; ++found)
                names.insert((*found)[1]);
        return names;
    }
    /// What the program may set of a page: all that its root declares but what the view sets itself.
    static Names declared(const std::string& page) {
        Names names = inPage(page, "^    property \\w+ (\\w+)");
        names.erase("reveal");
        return names;
    }
    static Names actions(const std::string& page) {
        return inPage(page, "\\b(?:action|answer)\\(\"(\\w+)\"");
    }
    /// What was set of the first window.
    Names told() {
        EXPECT_TRUE(receives("1 show"));
        Names names;
        const std::regex pattern("^1 set (\\w+)");
        std::smatch found;
        for (const std::string& line : received())
            if (std::regex_search(line, found, pattern))
                names.insert(found[1]);
        return names;
    }
    /// The names in the JSON that a property of the first window was told to be.
    Names parts(const std::string& property) {
        const std::string beginning = "1 set " + property + " ";
        Names names;
        for (const std::string& line : received())
            if (line.starts_with(beginning)) {
                const auto told = nlohmann::json::parse(line.substr(beginning.size()));
                for (const auto& [name, value] : told.items())
                    names.insert(name);
            }
        return names;
    }
};

TEST_F(Pages, OfABreakAreToldWhatTheyDeclareAndHeard) {
    make(desktop_.screens.all()[0]);
    face_->setTexts({"new", "water", "hint", "skip", "forward"});
    face_->setPrompt("rest");
    face_->setCount("05:00");
    face_->setSkipOffered(true);
    appear();
    EXPECT_EQ(told(), declared("BreakScreen.qml"));
    EXPECT_EQ(parts("texts"), inPage("BreakScreen.qml", R"(\.texts\.(\w+))"));
    EXPECT_EQ(actions("BreakScreen.qml"), (Names{"notice", "skip"}));
    face_->setPrompt("do notice");
    EXPECT_TRUE(runUntil([&] { return client_.notices == 1; }));
    EXPECT_EQ(client_.skips, 0);
    face_->setPrompt("do skip");
    EXPECT_TRUE(runUntil([&] { return client_.skips == 1; }));
}

TEST_F(Pages, OfTheWaterPanelAreToldWhatTheyDeclareAndHeard) {
    window_ = windows_->makeWindow({"Water", {0, 0, 280, 330}, 3, WindowStyle::Panel, 1});
    WaterClient client;
    const auto panel = window_->hostWaterPanel(client);
    panel->setTexts({"finished", "percent", "remain", "well done", "skip", "done", "close", "cup"},
                    {{200, "200 ml"}, {300, "300 ml"}});
    panel->setProgress({"1", "2", "3", 0.5});
    panel->setCounting({"tip", "00:10"});
    panel->setSelectedAmount(200);
    panel->offerAnswers();
    appear();
    EXPECT_EQ(told(), declared("WaterPanel.qml"));
    EXPECT_EQ(parts("texts"), inPage("WaterPanel.qml", R"(\.texts\.(\w+))"));
    EXPECT_EQ(parts("progress"), inPage("WaterPanel.qml", R"(\.progress\.(\w+))"));
    EXPECT_TRUE(
        receives(R"(1 set amounts [{"text":"200 ml","value":"200"},{"text":"300 ml","value":"300"}])"));
    EXPECT_EQ(actions("WaterPanel.qml"), (Names{"amount", "close", "done", "skip"}));
    for (const std::string& action : actions("WaterPanel.qml")) {
        panel->setCounting({"do " + action + "|200", ""});
        EXPECT_TRUE(runUntil([&] { return client.heard.contains(action); })) << action;
    }
}

TEST_F(Pages, OfDialogsAreToldWhatTheyDeclareAndHeard) {
    RemoteUpdateWindow update(*windows_);
    UpdateClient client;
    update.setClient(&client);
    const auto show = [&update](const std::string& headline) {
        update.setPage(
            {headline, "text", "notes", "https://kelpa.example", {{UpdateAction::Later, "Later"}}});
    };
    show("headline");
    update.present(UpdateWindow::Attention::None);
    EXPECT_EQ(told(), declared("Update.qml"));
    EXPECT_TRUE(receives(R"(1 set buttons [{"text":"Later","value":"later"}])"));
    show("do later");
    EXPECT_TRUE(runUntil([&] { return client.heard == 1; }));
    EXPECT_EQ(declared("About.qml"), Names{"about"});
}

} // namespace
} // namespace kelpa::test
