#include "PrivateBus.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/StatusNotifierItem.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using Names = std::vector<std::string>;

constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* menuInterface = "com.canonical.dbusmenu";
constexpr const char* menuPath = "/MenuBar";
constexpr const char* watcherInterface = "org.kde.StatusNotifierWatcher";

/// What a desktop's panel does: takes items, reads them and listens to their signals.
class Panel : public Peer {
  public:
    explicit Panel(EventLoop& loop, bool hasHost = true) : Peer(loop), hasHost_(hasHost) {
        sd_bus_add_object_vtable(bus(), nullptr, "/StatusNotifierWatcher", watcherInterface, vtable, this);
        sd_bus_match_signal(bus(), nullptr, nullptr, nullptr, itemInterface, nullptr, heard, this);
        sd_bus_match_signal(bus(), nullptr, nullptr, nullptr, menuInterface, nullptr, heard, this);
        sd_bus_request_name(bus(), watcherInterface, 0);
    }
    Names items;
    Names signals; ///< member and contents of each

    void setHost(bool present) {
        hasHost_ = present;
        sd_bus_emit_signal(bus(), "/StatusNotifierWatcher", watcherInterface,
                           present ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered",
                           nullptr);
    }
    [[nodiscard]] long count(const std::string& signal) const {
        return std::count_if(signals.begin(), signals.end(),
                             [&](const std::string& heard) { return heard.starts_with(signal); });
    }

  private:
    static int take(sd_bus_message* call, void* self, sd_bus_error*) {
        const char* service = nullptr;
        sd_bus_message_read(call, "s", &service);
        static_cast<Panel*>(self)->items.emplace_back(service);
        return sd_bus_reply_method_return(call, nullptr);
    }
    static int host(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self,
                    sd_bus_error*) {
        return sd_bus_message_append(reply, "b", static_cast<Panel*>(self)->hasHost_ ? 1 : 0);
    }
    static int heard(sd_bus_message* signal, void* self, sd_bus_error*) {
        static_cast<Panel*>(self)->signals.push_back(sd_bus_message_get_member(signal) +
                                                     (" " + readText(signal)));
        return 0;
    }
    inline static const sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", take, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", host, 0, 0), SD_BUS_VTABLE_END};
    bool hasHost_;
};

struct KeptClicks : MenuClicks {
    std::vector<int> ids;
    void didClick(int lineId) override { ids.push_back(lineId); }
};

MenuLine line(int id, const std::string& title, const std::string& image = "", const std::string& key = "") {
    return {id, false, true, title, image, key, 0, ""};
}

struct StatusItemTest : OnABus {
    TempFolder data;
    KeptClicks clicks;
    LinuxStatusBar bar;
    Names shown;                ///< by clicks that hosts left to the program
    bool menuCanBeShown = true; ///< other than by a host
    ItemActivation activation{loop,
                              {[this] {
                                   if (menuCanBeShown)
                                       shown.push_back("menu");
                                   return menuCanBeShown;
                               },
                               [this] { shown.push_back("no menu"); },
                               [this] { shown.push_back("settings"); }}};
    std::vector<bool> hosts;
    std::unique_ptr<StatusItemSink> item =
        makeStatusNotifierItem(loop, bus, ItemIdentity{"app.orvane.Kelpa", "Kelpa", data.path()}, activation,
                               [this](bool present) { hosts.push_back(present); });
    std::string service = "org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1";

    void SetUp() override {
        std::filesystem::create_directories(data.file("symbols"));
        std::filesystem::create_directories(data.file("pixmaps"));
        writeFile(data.file("symbols/stop.circle.png"), "a picture");
        writeFile(data.file("pixmaps/kelpa-16.argb"), std::string(16 * 16 * 4, 'p'));
        writeFile(data.file("pixmaps/kelpa-22.argb"), "damaged");
        bar.addSink(*item);
        bar.lineInserted(0, {1, false, false, "Version", "", "", 0, ""});
        bar.lineInserted(1, {2, true, true, "", "", "", 0, ""});
        bar.lineInserted(2, line(3, "Stop_it", "stop.circle", "p"));
        bar.lineInserted(3, line(4, "Settings...", "../symbols/stop.circle", ","));
        bar.setTitle("25:00");
        bar.createItem("kelpa", clicks);
    }
    void TearDown() override { bar.removeSink(*item); }
    bool registered(const Panel& panel, std::size_t times = 1) {
        return spinUntil(loop, [&] { return panel.items.size() >= times; });
    }
    bool hostBecomes(bool present) {
        return spinUntil(loop, [&] { return !hosts.empty() && hosts.back() == present; });
    }
    std::string property(Panel& panel, const char* name) {
        return panel.ask(service, itemPath, propertiesInterface, "Get", "ss", itemInterface, name);
    }
    std::string menu(Panel& panel, const char* member, const char* types, auto... arguments) {
        return panel.ask(service, menuPath, menuInterface, member, types, arguments...);
    }
    std::string event(Panel& panel, int id, const char* what) {
        return menu(panel, "Event", "isvu", id, what, "i", 0, 0);
    }
    void click(Panel& panel, const char* how = "Activate") {
        EXPECT_EQ(panel.ask(service, itemPath, itemInterface, how, "ii", 0, 0), "");
    }
    void waitUntilClickCounts() { spin(loop, ItemActivation::patience + 0.1); }
};

/// With a panel that was there first.
struct ShownItemTest : StatusItemTest {
    Panel panel{loop};

    void SetUp() override {
        StatusItemTest::SetUp();
        ASSERT_TRUE(registered(panel));
    }
};

TEST_F(ShownItemTest, saysWhatHostsAsk) {
    // By the connection's own name, so that no panel has to find out first who has the other one.
    EXPECT_EQ(panel.items, (Names{bus.name()}));
    const std::map<std::string, std::string> expected = {
        {"Category", "ApplicationStatus"},
        {"Id", "app.orvane.Kelpa"},
        {"Title", "Kelpa"},
        {"Status", "Active"},
        {"ItemIsMenu", "yes"},
        {"IconThemePath", data.file("icons")},
        {"IconName", "app.orvane.Kelpa-symbolic"},
        {"IconPixmap", "[(16 16 " + std::string(16 * 16 * 4, 'p') + ")]"}, // the one that is whole
        {"XAyatanaLabel", "25:00"},
        {"XAyatanaLabelGuide", "00:00"},
        {"IconAccessibleDesc", "Kelpa"},
        {"Menu", menuPath}};
    const auto all = panel.call(service, itemPath, propertiesInterface, "GetAll", "s", itemInterface);
    auto told = readProperties(all.get());
    for (const auto& [name, value] : expected)
        EXPECT_EQ(told[name], value) << name;
}

TEST_F(ShownItemTest, aClickThatIsLeftToTheProgramShowsTheMenuOrElseTheSettings) {
    click(panel);
    click(panel); // the other half of a double click
    waitUntilClickCounts();
    EXPECT_EQ(shown, Names{"menu"});
    menuCanBeShown = false;
    for (const char* how : {"Activate", "ContextMenu"}) {
        shown.clear();
        click(panel, how);
        waitUntilClickCounts();
        EXPECT_EQ(shown, Names{"settings"}) << how;
    }
}

TEST_F(ShownItemTest, aHostThatOpensTheMenuItselfAndTellsOfTheClickAsWellIsLeftAlone) {
    click(panel);
    EXPECT_EQ(event(panel, 0, "opened"), "");
    waitUntilClickCounts();
    EXPECT_EQ(shown, Names{"no menu"}) << "told of after the click";
    event(panel, 0, "closed");
    spin(loop, ItemActivation::clickLasts);
    shown.clear();
    panel.call(service, menuPath, menuInterface, "AboutToShow", "i", 0);
    click(panel);
    waitUntilClickCounts();
    EXPECT_EQ(shown, Names{"no menu"}) << "told of before the click";
    event(panel, 0, "closed");
    click(panel); // which closed it
    waitUntilClickCounts();
    EXPECT_EQ(shown, Names{"no menu"});
    spin(loop, ItemActivation::clickLasts);
    click(panel);
    waitUntilClickCounts();
    EXPECT_EQ(shown, (Names{"no menu", "menu"})) << "it is a click like the first one again";
    activation.menuClosed();
    click(panel);
    waitUntilClickCounts();
    EXPECT_EQ(shown.size(), 2U) << "a click on the item closed the menu";
}

TEST_F(StatusItemTest, registersWithAPanelThatComesAndTellsWhetherItHasAHost) {
    ASSERT_TRUE(hostBecomes(false));
    {
        Panel panel(loop, false);
        ASSERT_TRUE(registered(panel));
        for (const bool present : {true, false, true}) {
            panel.setHost(present);
            ASSERT_TRUE(hostBecomes(present));
        }
        EXPECT_EQ(panel.items.size(), 1u);
    }
    ASSERT_TRUE(hostBecomes(false));
    Panel back(loop);
    ASSERT_TRUE(registered(back));
    ASSERT_TRUE(hostBecomes(true));
    EXPECT_EQ(hosts, (std::vector<bool>{false, true, false, true, false, true}));
}

TEST_F(ShownItemTest, aChangedTextCostsOneSignal) {
    bar.addSink(*item); // which is there
    for (const char* title : {"24:59", "24:59", "24:58", "24:58", "24:57"})
        bar.setTitle(title);
    ASSERT_TRUE(spinUntil(loop, [&] { return panel.count("XAyatanaNewLabel 24:57") == 1; }));
    EXPECT_EQ(panel.signals, (Names{"XAyatanaNewLabel 24:59 00:00", "XAyatanaNewLabel 24:58 00:00",
                                    "XAyatanaNewLabel 24:57 00:00"}));
    EXPECT_EQ(property(panel, "XAyatanaLabel"), "24:57");
}

/// What cannot be sent would pile up for as long as the bus stands still.
TEST_F(ShownItemTest, aBusThatStandsStillIsOwedTheNewestTextAndNoOlderOne) {
    daemon->signal(SIGSTOP);
    for (int i = 1; i <= 20'000; ++i) {
        bar.setTitle(std::to_string(i));
        bar.lineChanged(line(3, std::to_string(i)));
    }
    bar.lineRemoved(4);
    std::uint64_t unsent = 0;
    sd_bus_get_n_queued_write(bus.handle(), &unsent);
    EXPECT_LE(unsent, 20U);
    daemon->signal(SIGCONT);
    ASSERT_TRUE(spinUntil(
        loop, [&] { return panel.count("LayoutUpdated") == 1; }, 30));
    EXPECT_EQ(panel.count("XAyatanaNewLabel 20000"), 1);
    EXPECT_NE(menu(panel, "GetLayout", "iias", 0, -1, 0).find("label=20000"), std::string::npos);
    bar.setTitle("00:01");
    EXPECT_TRUE(spinUntil(loop, [&] { return panel.count("XAyatanaNewLabel 00:01") == 1; }));
}

TEST_F(ShownItemTest, theToolTipTellsEverythingInItsTitleAndIsAnnouncedWhenAPartComesOrGoes) {
    const auto expectTip = [&](const std::string& title, long announced) {
        EXPECT_EQ(property(panel, "ToolTip"), "( [] " + title + " )");
        EXPECT_EQ(panel.count("NewToolTip"), announced) << title;
    };
    expectTip("Kelpa 25:00", 0);
    bar.setHint("Paused.");
    bar.setHint("Paused.");
    expectTip("Kelpa 25:00 – Paused.", 1);
    bar.setTitle("");
    expectTip("Kelpa – Paused.", 2);
    bar.setHint("");
    expectTip("Kelpa", 3);
    bar.setTitle("05:00");
    expectTip("Kelpa 05:00", 4);
}

TEST_F(ShownItemTest, plasmaIsToldOfTheIconAgainOnceItHasOtherColours) {
    for (int i = 0; i < 3; ++i)
        sd_bus_emit_signal(panel.bus(), "/KGlobalSettings", "org.kde.KGlobalSettings", "notifyChange", "ii",
                           i, 0);
    spin(loop, secondsOfRecolouring / 2);
    EXPECT_EQ(panel.count("NewIcon"), 0) << "its panel has the old ones still";
    ASSERT_TRUE(spinUntil(loop, [&] { return panel.count("NewIcon") == 1; }));
    spin(loop, secondsOfRecolouring + 0.3);
    EXPECT_EQ(panel.count("NewIcon"), 1);
}

TEST_F(ShownItemTest, theMenuIsReadAsItIs) {
    const std::string lines =
        "[(1 [label=Version enabled=no visible=yes disposition=normal] []) (2 [type=separator] []) "
        "(3 [label=Stop__it enabled=yes visible=yes disposition=normal icon-data=a picture "
        "shortcut=[[Control p]]] []) "
        "(4 [label=Settings... enabled=yes visible=yes disposition=normal shortcut=[[Control comma]]] [])]";
    std::string linesForQt = lines;
    linesForQt.replace(lines.find("comma"), 5, ",");
    const std::string root = "1 (0 [children-display=submenu] ";
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 0, -1, 0), root + lines + ")");
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 0, 1, 0), root + linesForQt + ")");
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 0, 0, 0), root + "[])");
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 2, -1, 0), "1 (2 [type=separator] [])");
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 3, -1, 1, "label"), "1 (3 [label=Stop__it] [])");
    EXPECT_EQ(menu(panel, "GetGroupProperties", "aias", 2, 3, 99, 1, "label"), "[(3 [label=Stop__it])]");
    EXPECT_EQ(menu(panel, "GetProperty", "is", 3, "label"), "Stop__it");
    EXPECT_EQ(panel.ask(service, menuPath, propertiesInterface, "GetAll", "s", menuInterface),
              "[Version=3 TextDirection=ltr Status=normal IconThemePath=[]]");
}

TEST_F(ShownItemTest, menuChangesAreAnnounced) {
    bar.lineChanged(line(3, "- Work -"));
    bar.lineChanged(line(3, "- Work -"));
    bar.lineChanged(line(9, "Nowhere"));
    bar.lineInserted(3, line(5, "Water"));
    bar.lineRemoved(4);
    bar.lineRemoved(4);
    const std::string layout = menu(panel, "GetLayout", "iias", 0, -1, 1, "label");
    EXPECT_EQ(
        panel.signals,
        (Names{"ItemsPropertiesUpdated [(3 [label=- Work - enabled=yes visible=yes disposition=normal])] "
               "[(3 [icon-data shortcut])]",
               "LayoutUpdated 2 0", "LayoutUpdated 3 0"}));
    EXPECT_EQ(layout,
              "3 (0 [] [(1 [label=Version] []) (2 [] []) (3 [label=- Work -] []) (5 [label=Water] [])])");
}

TEST_F(ShownItemTest, clicksReachTheCoreUnlessTheLineCannotBeChosen) {
    for (const int dead : {0, 1, 2})
        EXPECT_EQ(event(panel, dead, "clicked"), "");
    EXPECT_EQ(event(panel, 3, "clicked"), "");
    EXPECT_EQ(event(panel, 3, "hovered"), "");
    EXPECT_EQ(menu(panel, "EventGroup", "a(isvu)", 2, 4, "clicked", "i", 0, 0, 77, "clicked", "i", 0, 0),
              "[77]");
    ASSERT_TRUE(spinUntil(loop, [&] { return clicks.ids.size() == 2; }));
    EXPECT_EQ(clicks.ids, (std::vector<int>{3, 4}));
}

TEST_F(ShownItemTest, oddQuestionsGetErrors) {
    const std::string invalid = SD_BUS_ERROR_INVALID_ARGS;
    EXPECT_EQ(event(panel, 99, "clicked"), invalid);
    EXPECT_EQ(menu(panel, "EventGroup", "a(isvu)", 1, 99, "clicked", "i", 0, 0), invalid);
    EXPECT_EQ(menu(panel, "EventGroup", "a(isvu)", 0), "[]");
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 99, -1, 0), invalid);
    EXPECT_EQ(menu(panel, "GetLayout", "s", "nonsense"), invalid);
    EXPECT_EQ(menu(panel, "GetProperty", "is", 3, "bogus"), invalid);
    EXPECT_EQ(menu(panel, "GetProperty", "is", 99, "label"), invalid);
    EXPECT_EQ(menu(panel, "AboutToShow", "i", 99), invalid);
    EXPECT_EQ(menu(panel, "AboutToShow", "i", 0), "no");
    EXPECT_EQ(menu(panel, "AboutToShowGroup", "ai", 2, 0, 99), "[] [99]");
}

TEST_F(ShownItemTest, theFallbackWaitsForAHostAndLeavesToOne) {
    bar.removeSink(*item);
    bar.setTitle("10:00");
    EXPECT_NE(property(panel, "Id"), "app.orvane.Kelpa") << "it was taken away";
    TrayFallback fallback(loop, bar, *item); // which stands for another way to show it
    fallback.setHostPresent(false);
    fallback.setHostPresent(true); // a host that restarts
    spin(loop, TrayFallback::patience + 0.2);
    EXPECT_EQ(panel.items.size(), 1U);
    const double began = secondsNow();
    const auto isShown = [&] {
        fallback.setHostPresent(false);
        return panel.items.size() == 2;
    };
    ASSERT_TRUE(spinUntil(loop, isShown)) << "being told again made the wait longer";
    EXPECT_GE(secondsNow() - began, TrayFallback::patience);
    EXPECT_EQ(property(panel, "XAyatanaLabel"), "10:00");
    fallback.setHostPresent(true);
    EXPECT_NE(property(panel, "Id"), "app.orvane.Kelpa");
}

TEST_F(StatusItemTest, comesBackWithTheBusAsItIsThen) {
    {
        Panel panel(loop);
        ASSERT_TRUE(registered(panel));
        ASSERT_TRUE(hostBecomes(true));
    }
    daemon->end();
    ASSERT_TRUE(hostBecomes(false));
    int ticks = 0;
    const auto ticker = loop.makeTicker(0.01);
    auto ticking = ticker->connect([&] {
        bar.setTitle(std::to_string(++ticks));
        bar.lineChanged(line(3, std::to_string(ticks)));
        bar.lineRemoved(4);
    });
    EXPECT_TRUE(spinUntil(loop, [&] { return ticks == 5; }));
    ticking.cancel();
    bar.removeSink(*item);
    bar.addSink(*item);
    daemon.emplace("DBUS_SESSION_BUS_ADDRESS", address);
    Panel panel(loop);
    ASSERT_TRUE(registered(panel));
    ASSERT_TRUE(hostBecomes(true));
    EXPECT_EQ(panel.items, (Names{bus.name()}));
    EXPECT_EQ(property(panel, "XAyatanaLabel"), "5");
    EXPECT_EQ(menu(panel, "GetLayout", "iias", 0, -1, 1, "label").substr(1),
              " (0 [] [(1 [label=Version] []) (2 [] []) (3 [label=5] [])])");
    bar.setTitle("6");
    EXPECT_TRUE(spinUntil(loop, [&] { return panel.count("XAyatanaNewLabel 6") == 1; }));
    bar.removeSink(*item);
    daemon->end();
    ASSERT_TRUE(hostBecomes(false));
    ASSERT_TRUE(busComes());
    Panel last(loop);
    spin(loop, 0.2);
    EXPECT_EQ(last.items.size(), 0U) << "it is hidden";
}

} // namespace
} // namespace kelpa::test
