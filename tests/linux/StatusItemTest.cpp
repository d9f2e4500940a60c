#include "PrivateBus.h"
#include "Support.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/StatusNotifierItem.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <optional>

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
    Names signals; ///< member and texts of each
    std::vector<Message> messages;

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
        std::string told = sd_bus_message_get_member(signal);
        const char *first = nullptr, *second = nullptr;
        if (sd_bus_message_has_signature(signal, "ss") &&
            sd_bus_message_read(signal, "ss", &first, &second) > 0)
            told += std::string(" ") + first + " " + second;
        static_cast<Panel*>(self)->signals.push_back(told);
        static_cast<Panel*>(self)->messages.emplace_back(sd_bus_message_ref(signal));
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

/// A line as a host reads it, every value as text.
struct ReadLine {
    int id = 0;
    std::map<std::string, std::string> properties;
    std::vector<ReadLine> children;
};

ReadLine readLine(sd_bus_message* m) {
    ReadLine line;
    sd_bus_message_enter_container(m, 'r', "ia{sv}av");
    sd_bus_message_read_basic(m, 'i', &line.id);
    line.properties = readProperties(m);
    sd_bus_message_enter_container(m, 'a', "v");
    while (sd_bus_message_enter_container(m, 'v', "(ia{sv}av)") > 0) {
        line.children.push_back(readLine(m));
        sd_bus_message_exit_container(m);
    }
    sd_bus_message_exit_container(m);
    sd_bus_message_exit_container(m);
    return line;
}

MenuLine line(int id, const std::string& title, const std::string& image = "", const std::string& key = "") {
    return {id, false, true, title, image, key, 0, ""};
}

std::string errorOf(const Message& answer) {
    const sd_bus_error* error = answer ? sd_bus_message_get_error(answer.get()) : nullptr;
    return error != nullptr ? error->name : answer ? "none" : "silence";
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
    std::unique_ptr<StatusItemSink> item;
    std::vector<bool> hosts;
    std::string service = "org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1";

    void SetUp() override {
        std::filesystem::create_directories(data.file("symbols"));
        std::filesystem::create_directories(data.file("pixmaps"));
        writeFile(data.file("symbols/stop.circle.png"), "a picture");
        writeFile(data.file("pixmaps/kelpa-16.argb"), std::string(16 * 16 * 4, 'p'));
        writeFile(data.file("pixmaps/kelpa-22.argb"), "damaged");
        bar.lineInserted(0, line(1, "Version"));
        bar.lineInserted(1, {2, true, true, "", "", "", 0, ""});
        bar.lineInserted(2, line(3, "Stop_it", "stop.circle", "p"));
        bar.lineInserted(3, line(4, "Settings...", "../symbols/stop.circle", ","));
        MenuLine version = line(1, "Version");
        version.enabled = false;
        bar.lineChanged(version);
        bar.createItem("kelpa", clicks);
        bar.setTitle("25:00");
        item = makeStatusNotifierItem(loop, bus, ItemIdentity{"app.orvane.Kelpa", "Kelpa", data.path()},
                                      activation, [this](bool present) { hosts.push_back(present); });
        bar.addSink(*item);
    }
    void TearDown() override {
        if (item)
            bar.removeSink(*item);
    }
    bool registered(const Panel& panel, std::size_t times = 1) {
        return spinUntil(loop, [&] { return panel.items.size() >= times; });
    }
    bool hostBecomes(bool present) {
        return spinUntil(loop, [&] { return !hosts.empty() && hosts.back() == present; });
    }
    std::string property(Panel& panel, const char* name) {
        const auto answer = panel.call(service, itemPath, "org.freedesktop.DBus.Properties", "Get", "ss",
                                       itemInterface, name);
        return errorOf(answer) == "none" ? readValue(answer.get()) : errorOf(answer);
    }
    /// The title of the tooltip, of which some hosts show nothing else.
    std::string toolTip(Panel& panel) {
        const auto answer = panel.call(service, itemPath, "org.freedesktop.DBus.Properties", "Get", "ss",
                                       itemInterface, "ToolTip");
        const char *icon = nullptr, *title = nullptr, *text = nullptr;
        sd_bus_message_enter_container(answer.get(), 'v', "(sa(iiay)ss)");
        sd_bus_message_enter_container(answer.get(), 'r', "sa(iiay)ss");
        sd_bus_message_read(answer.get(), "s", &icon);
        sd_bus_message_skip(answer.get(), "a(iiay)");
        sd_bus_message_read(answer.get(), "ss", &title, &text);
        EXPECT_STREQ(text, "") << "a host that shows it as well would say something twice";
        return title;
    }
    std::pair<unsigned, ReadLine> layout(Panel& panel, int parent = 0, int depth = -1) {
        const auto answer =
            panel.call(service, menuPath, menuInterface, "GetLayout", "iias", parent, depth, 0);
        unsigned revision = 0;
        sd_bus_message_read(answer.get(), "u", &revision);
        return {revision, readLine(answer.get())};
    }
    void click(Panel& panel, const char* how = "Activate") {
        EXPECT_EQ(errorOf(panel.call(service, itemPath, itemInterface, how, "ii", 0, 0)), "none");
    }
    /// Until a click that nobody has answered would have been.
    void waitForClick() { spin(loop, ItemActivation::patience + 0.1); }
    std::string event(Panel& panel, int id, const char* what) {
        return errorOf(panel.call(service, menuPath, menuInterface, "Event", "isvu", id, what, "i", 0, 0));
    }
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
    const std::map<std::string, std::string> expected = {{"Category", "ApplicationStatus"},
                                                         {"Id", "app.orvane.Kelpa"},
                                                         {"Title", "Kelpa"},
                                                         {"Status", "Active"},
                                                         {"ItemIsMenu", "yes"},
                                                         {"IconThemePath", data.file("icons")},
                                                         {"IconName", "app.orvane.Kelpa-symbolic"},
                                                         {"XAyatanaLabel", "25:00"},
                                                         {"XAyatanaLabelGuide", "00:00"},
                                                         {"IconAccessibleDesc", "Kelpa"},
                                                         {"Menu", "(o)"},
                                                         {"ToolTip", "((sa(iiay)ss))"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(property(panel, name.c_str()), value) << name;
    const auto all =
        panel.call(service, itemPath, "org.freedesktop.DBus.Properties", "GetAll", "s", itemInterface);
    EXPECT_GE(readProperties(all.get()).size(), expected.size());
    EXPECT_NE(property(panel, "Bogus"), "");
}

TEST_F(ShownItemTest, aClickThatIsLeftToTheProgramShowsTheMenuOrElseTheSettings) {
    click(panel);
    click(panel); // the other half of a double click
    waitForClick();
    EXPECT_EQ(shown, Names{"menu"});
    menuCanBeShown = false;
    for (const char* how : {"Activate", "ContextMenu"}) {
        shown.clear();
        click(panel, how);
        waitForClick();
        EXPECT_EQ(shown, Names{"settings"}) << how;
    }
}

TEST_F(ShownItemTest, aHostThatOpensTheMenuItselfAndTellsOfTheClickAsWellIsLeftAlone) {
    click(panel);
    EXPECT_EQ(event(panel, 0, "opened"), "none");
    waitForClick();
    EXPECT_EQ(shown, Names{"no menu"}) << "told of after the click";
    event(panel, 0, "closed");
    spin(loop, ItemActivation::clickLasts);
    shown.clear();
    panel.call(service, menuPath, menuInterface, "AboutToShow", "i", 0);
    click(panel);
    waitForClick();
    EXPECT_EQ(shown, Names{"no menu"}) << "told of before the click";
    event(panel, 0, "closed");
    click(panel); // which closed it
    waitForClick();
    EXPECT_EQ(shown, Names{"no menu"});
    spin(loop, ItemActivation::clickLasts);
    click(panel);
    waitForClick();
    EXPECT_EQ(shown, (Names{"no menu", "menu"})) << "it is a click like the first one again";
    activation.menuClosed();
    click(panel);
    waitForClick();
    EXPECT_EQ(shown.size(), 2U) << "a click on the item closed the menu";
}

TEST_F(ShownItemTest, givesThePicturesThatAreWhole) {
    const auto answer = panel.call(service, itemPath, "org.freedesktop.DBus.Properties", "Get", "ss",
                                   itemInterface, "IconPixmap");
    sd_bus_message* m = answer.get();
    int width = 0, height = 0, pictures = 0;
    const void* bytes = nullptr;
    std::size_t size = 0;
    sd_bus_message_enter_container(m, 'v', "a(iiay)");
    sd_bus_message_enter_container(m, 'a', "(iiay)");
    while (sd_bus_message_enter_container(m, 'r', "iiay") > 0) {
        sd_bus_message_read(m, "ii", &width, &height);
        sd_bus_message_read_array(m, 'y', &bytes, &size);
        sd_bus_message_exit_container(m);
        ++pictures;
    }
    EXPECT_EQ(pictures, 1);
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
    EXPECT_EQ(size, 16u * 16 * 4);
}

TEST_F(StatusItemTest, registersWithAPanelThatComesLaterAndWithOneThatComesBack) {
    ASSERT_TRUE(hostBecomes(false));
    {
        Panel panel(loop);
        ASSERT_TRUE(registered(panel));
        ASSERT_TRUE(hostBecomes(true));
    }
    ASSERT_TRUE(hostBecomes(false));
    Panel back(loop);
    ASSERT_TRUE(registered(back));
    ASSERT_TRUE(hostBecomes(true));
    EXPECT_EQ(hosts, (std::vector<bool>{false, true, false, true}));
    EXPECT_EQ(property(back, "XAyatanaLabel"), "25:00");
}

TEST_F(StatusItemTest, tellsAWatcherWithoutAHostFromOneWithOne) {
    Panel panel(loop, false);
    ASSERT_TRUE(registered(panel));
    ASSERT_TRUE(hostBecomes(false));
    panel.setHost(true);
    ASSERT_TRUE(hostBecomes(true));
    panel.setHost(false);
    ASSERT_TRUE(hostBecomes(false));
    EXPECT_EQ(panel.items.size(), 1u);
}

TEST_F(ShownItemTest, aChangedTextCostsOneSignal) {
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
        loop, [&] { return !panel.signals.empty() && panel.signals.back() == "LayoutUpdated"; }, 30));
    EXPECT_EQ(panel.count("XAyatanaNewLabel 20000"), 1);
    const auto root = layout(panel).second;
    ASSERT_EQ(root.children.size(), 3U);
    EXPECT_EQ(root.children[2].properties.at("label"), "20000");
    bar.setTitle("00:01");
    EXPECT_TRUE(spinUntil(loop, [&] { return panel.count("XAyatanaNewLabel 00:01") == 1; }));
}

TEST_F(ShownItemTest, theToolTipIsAnnouncedWhenTheTextComesAndGoes) {
    bar.setTitle("");
    bar.setTitle("05:00");
    ASSERT_TRUE(spinUntil(loop, [&] { return panel.count("NewToolTip") == 2; }));
    EXPECT_EQ(panel.count("XAyatanaNewLabel"), 2);
}

TEST_F(ShownItemTest, theToolTipsTitleTellsEverythingAndAHintIsAnnouncedAtOnce) {
    EXPECT_EQ(toolTip(panel), "Kelpa 25:00");
    bar.setHint("Paused.");
    ASSERT_TRUE(spinUntil(loop, [&] { return panel.count("NewToolTip") == 1; }));
    EXPECT_EQ(toolTip(panel), "Kelpa 25:00 – Paused.");
    bar.setTitle("");
    EXPECT_EQ(toolTip(panel), "Kelpa – Paused.");
    bar.setHint("");
    EXPECT_EQ(toolTip(panel), "Kelpa");
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
    const auto [revision, root] = layout(panel);
    EXPECT_EQ(root.properties.at("children-display"), "submenu");
    ASSERT_EQ(root.children.size(), 4u);
    using Properties = std::map<std::string, std::string>;
    const Properties common = {{"visible", "yes"}, {"disposition", "normal"}};
    const auto with = [&](Properties own) {
        own.insert(common.begin(), common.end());
        return own;
    };
    EXPECT_EQ(root.children[0].properties, with({{"label", "Version"}, {"enabled", "no"}}));
    EXPECT_EQ(root.children[1].properties, (Properties{{"type", "separator"}}));
    EXPECT_EQ(root.children[2].properties, with({{"label", "Stop__it"},
                                                 {"enabled", "yes"},
                                                 {"icon-data", "a picture"},
                                                 {"shortcut", "Control+p"}}));
    EXPECT_EQ(root.children[3].properties,
              with({{"label", "Settings..."}, {"enabled", "yes"}, {"shortcut", "Control+comma"}}));
    const auto oneLevel = layout(panel, 0, 1).second;
    EXPECT_EQ(oneLevel.children.at(3).properties.at("shortcut"), "Control+,") << "as Qt's hosts name keys";
    EXPECT_EQ(oneLevel.children.at(2).properties.at("shortcut"), "Control+p");
    EXPECT_EQ(layout(panel, 0, 0).second.children.size(), 0u);
    EXPECT_EQ(layout(panel, 3, -1).second.id, 3);
    EXPECT_GT(revision, 0u);
    const auto fixed =
        panel.call(service, menuPath, "org.freedesktop.DBus.Properties", "GetAll", "s", menuInterface);
    EXPECT_EQ(
        readProperties(fixed.get()),
        (Properties{
            {"Version", "(u)"}, {"TextDirection", "ltr"}, {"Status", "normal"}, {"IconThemePath", "(as)"}}));
}

TEST_F(ShownItemTest, menuChangesAreAnnounced) {
    const unsigned before = layout(panel).first;
    bar.lineChanged(line(3, "- Work -"));
    ASSERT_TRUE(spinUntil(loop, [&] { return panel.signals.size() == 1; }));
    EXPECT_EQ(panel.signals.front(), "ItemsPropertiesUpdated");
    sd_bus_message* m = panel.messages.front().get();
    int id = 0;
    sd_bus_message_enter_container(m, 'a', "(ia{sv})");
    sd_bus_message_enter_container(m, 'r', "ia{sv}");
    sd_bus_message_read_basic(m, 'i', &id);
    EXPECT_EQ(id, 3);
    EXPECT_EQ(readProperties(m).at("label"), "- Work -");
    sd_bus_message_exit_container(m);
    sd_bus_message_exit_container(m);
    const char *first = nullptr, *second = nullptr;
    EXPECT_GT(sd_bus_message_read(m, "a(ias)", 1, &id, 2, &first, &second), 0)
        << "the picture and the key went";

    bar.lineInserted(3, line(5, "Water"));
    bar.lineRemoved(4);
    ASSERT_TRUE(spinUntil(loop, [&] { return panel.count("LayoutUpdated") == 2; }));
    const auto [after, root] = layout(panel);
    EXPECT_EQ(after, before + 2);
    ASSERT_EQ(root.children.size(), 4u);
    EXPECT_EQ(root.children[3].properties.at("label"), "Water");
}

TEST_F(ShownItemTest, clicksReachTheCoreUnlessTheLineCannotBeChosen) {
    EXPECT_EQ(event(panel, 3, "clicked"), "none");
    EXPECT_EQ(event(panel, 3, "hovered"), "none");
    EXPECT_EQ(event(panel, 0, "opened"), "none");
    for (const int dead : {0, 1, 2})
        EXPECT_EQ(event(panel, dead, "clicked"), "none");
    EXPECT_EQ(event(panel, 99, "clicked"), SD_BUS_ERROR_INVALID_ARGS);
    const auto group = panel.call(service, menuPath, menuInterface, "EventGroup", "a(isvu)", 2, 4, "clicked",
                                  "i", 0, 0, 77, "clicked", "i", 0, 0);
    int unknown = 0;
    EXPECT_GT(sd_bus_message_read(group.get(), "ai", 1, &unknown), 0);
    EXPECT_EQ(unknown, 77);
    ASSERT_TRUE(spinUntil(loop, [&] { return clicks.ids.size() == 2; }));
    EXPECT_EQ(clicks.ids, (std::vector<int>{3, 4}));
}

TEST_F(ShownItemTest, oddQuestionsGetErrors) {
    const auto menu = [&](const char* member, const char* types, auto... arguments) {
        return errorOf(panel.call(service, menuPath, menuInterface, member, types, arguments...));
    };
    const std::string invalid = SD_BUS_ERROR_INVALID_ARGS;
    EXPECT_EQ(menu("GetLayout", "iias", 99, -1, 0), invalid);
    EXPECT_EQ(menu("GetLayout", "s", "nonsense"), invalid);
    EXPECT_EQ(menu("GetLayout", ""), invalid);
    EXPECT_EQ(menu("Event", "i", 3), invalid);
    EXPECT_EQ(menu("GetProperty", "is", 3, "bogus"), invalid);
    EXPECT_EQ(menu("GetProperty", "is", 99, "label"), invalid);
    EXPECT_EQ(menu("GetProperty", "is", 3, "label"), "none");
    EXPECT_EQ(menu("AboutToShow", "i", 99), invalid);
    EXPECT_EQ(menu("AboutToShow", "i", 0), "none");
    EXPECT_EQ(menu("AboutToShowGroup", "ai", 2, 0, 99), "none");
    EXPECT_EQ(menu("EventGroup", "a(isvu)", 1, 99, "clicked", "i", 0, 0), invalid);
    EXPECT_EQ(menu("EventGroup", "a(isvu)", 0), "none");
    EXPECT_NE(menu("Bogus", ""), "none");
    const auto group =
        panel.call(service, menuPath, menuInterface, "GetGroupProperties", "aias", 2, 3, 99, 1, "label");
    sd_bus_message_enter_container(group.get(), 'a', "(ia{sv})");
    sd_bus_message_enter_container(group.get(), 'r', "ia{sv}");
    int id = 0;
    sd_bus_message_read_basic(group.get(), 'i', &id);
    EXPECT_EQ(id, 3);
    EXPECT_EQ(readProperties(group.get()), (std::map<std::string, std::string>{{"label", "Stop__it"}}));
    EXPECT_TRUE(clicks.ids.empty());
}

TEST_F(ShownItemTest, theItemCanBeTakenAwayAndShownAgain) {
    bar.removeSink(*item);
    bar.setTitle("10:00");
    EXPECT_NE(property(panel, "Id"), "app.orvane.Kelpa");
    bar.addSink(*item);
    ASSERT_TRUE(registered(panel, 2));
    EXPECT_EQ(property(panel, "XAyatanaLabel"), "10:00");
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
    EXPECT_EQ(layout(panel).second.children.size(), 3U);
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
