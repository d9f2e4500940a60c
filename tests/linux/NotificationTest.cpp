#include "PrivateBus.h"
#include "Support.h"
#include "platform/linux/notify/DesktopNotifications.h"
#include "platform/linux/tray/TrayNotice.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// A desktop's service for notifications, which numbers them from 41 on.
class Service : public Peer {
  public:
    explicit Service(EventLoop& loop) : Peer(loop) {
        sd_bus_add_object_vtable(bus(), nullptr, path, name, vtable, this);
        sd_bus_request_name(bus(), name, 0);
    }
    void tell(const char* member, const char* types, auto... arguments) {
        sd_bus_emit_signal(bus(), path, name, member, types, arguments...);
    }
    void press(unsigned number, const char* action) { tell("ActionInvoked", "us", number, action); }
    /// Answers what waits for it.
    void answer() {
        for (const Message& call : waiting_)
            reply(call.get(), nullptr);
        waiting_.clear();
    }

    std::vector<std::string> shown; ///< all that was told of each
    std::vector<unsigned> closed;
    bool slow = false; ///< answers only when the test says so
    std::string failure;

  private:
    static constexpr const char* name = "org.freedesktop.Notifications";
    static constexpr const char* path = "/org/freedesktop/Notifications";

    int reply(sd_bus_message* call, sd_bus_error* error) {
        if (!failure.empty())
            return sd_bus_error_set(error, failure.c_str(), "It would rather not");
        return sd_bus_reply_method_return(call, "u", 41 + answered_++);
    }
    static int notify(sd_bus_message* call, void* object, sd_bus_error* error) {
        auto& self = *static_cast<Service*>(object);
        self.shown.push_back(readText(call));
        if (!self.slow)
            return self.reply(call, error);
        self.waiting_.emplace_back(sd_bus_message_ref(call));
        return 1;
    }
    static int close(sd_bus_message* call, void* object, sd_bus_error*) {
        unsigned number = 0;
        sd_bus_message_read(call, "u", &number);
        static_cast<Service*>(object)->closed.push_back(number);
        return sd_bus_reply_method_return(call, nullptr);
    }

    unsigned answered_ = 0;
    std::vector<Message> waiting_;
    inline static const sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Notify", "susssasa{sv}i", "u", notify, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("CloseNotification", "u", "", close, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END};
};

struct DesktopNotificationsTest : OnABus {
    std::vector<std::string> failures, pressed;
    std::unique_ptr<Notifications> notifications =
        makeDesktopNotifications(bus, {"Kelpa", "app.orvane.Kelpa", "/icon.svg"},
                                 [this](const std::string& why) { failures.push_back(why); });

    void show(const std::string& title) {
        notifications->show({title, "soon", {{"start", "Start now"}, {"more", "5 more minutes"}}, 30},
                            [this, title](const std::string& id) { pressed.push_back(title + " " + id); });
    }
    bool comes(const auto& condition) { return spinUntil(loop, condition); }
    /// Everything that was sent has been taken in.
    void settle() { spin(loop, 0.2); }
    /// Shows one, and waits until the service has told its number.
    void showOn(Service& service, const std::string& title) {
        const auto before = service.shown.size();
        show(title);
        EXPECT_TRUE(comes([&] { return service.shown.size() > before; }));
        settle();
    }
};

TEST_F(DesktopNotificationsTest, tellOfThePressesOnOursAlone) {
    Service service(loop);
    showOn(service, "A");
    EXPECT_EQ(service.shown.front(), "Kelpa 0 /icon.svg A soon [start Start now more 5 more minutes] "
                                     "[desktop-entry=app.orvane.Kelpa] 30000");
    Service other(loop); // which has the same numbers, but not the name
    service.press(7, "start");
    other.press(41, "start");
    service.press(0, "start");
    service.tell("ActionInvoked", "s", "garbage");
    service.tell("NotificationClosed", "uu", 7, 2);
    settle();
    EXPECT_EQ(pressed, std::vector<std::string>());
    service.press(41, "more");
    ASSERT_TRUE(comes([&] { return pressed == std::vector<std::string>{"A more"}; }));
    notifications->withdraw();
    notifications->withdraw();
    ASSERT_TRUE(comes([&] { return !service.closed.empty(); }));
    service.press(41, "start");
    settle();
    EXPECT_EQ(pressed.size(), 1U) << "it was withdrawn";
    EXPECT_EQ(service.closed, std::vector<unsigned>{41});
}

TEST_F(DesktopNotificationsTest, mayBeWithdrawnAndReplacedInsideAPress) {
    Service service(loop);
    notifications->show({"A", "", {{"start", "Start"}}, 0}, [this](const std::string&) { show("B"); });
    ASSERT_TRUE(comes([&] { return service.shown.size() == 1; }));
    settle();
    service.press(41, "start");
    service.press(41, "start");
    ASSERT_TRUE(comes([&] { return service.shown.size() == 2; }));
    settle();
    EXPECT_EQ(service.closed, std::vector<unsigned>{41});
    service.press(42, "start");
    ASSERT_TRUE(comes([&] { return pressed == std::vector<std::string>{"B start"}; }));
}

TEST_F(DesktopNotificationsTest, thatComeLateAreTakenAwayWhenTheyCome) {
    Service service(loop);
    service.slow = true;
    show("A");
    ASSERT_TRUE(comes([&] { return service.shown.size() == 1; }));
    notifications->withdraw();
    show("B");
    ASSERT_TRUE(comes([&] { return service.shown.size() == 2; }));
    EXPECT_EQ(service.closed, std::vector<unsigned>()) << "nobody knows a number yet";
    service.answer();
    ASSERT_TRUE(comes([&] { return service.closed == std::vector<unsigned>{41}; }));
    service.press(41, "start");
    service.press(42, "start");
    ASSERT_TRUE(comes([&] { return pressed == std::vector<std::string>{"B start"}; }));
}

TEST_F(DesktopNotificationsTest, areForgottenOnceAPersonHasClosedThem) {
    Service service(loop);
    showOn(service, "A");
    service.tell("NotificationClosed", "uu", 41, 2);
    service.press(41, "start");
    settle();
    EXPECT_EQ(pressed, std::vector<std::string>()) << "the number may be another's now";
    notifications->withdraw();
    settle();
    EXPECT_EQ(service.closed, std::vector<unsigned>());
}

TEST_F(DesktopNotificationsTest, ofAServiceThatIsGoneAreNotAskedOfTheNextOne) {
    std::optional<Service> service(loop);
    showOn(*service, "A");
    service.reset();
    Service next(loop); // which gives the same number to another program's
    next.press(41, "start");
    settle();
    EXPECT_EQ(pressed, std::vector<std::string>());
    notifications->withdraw();
    showOn(next, "B");
    EXPECT_EQ(next.closed, std::vector<unsigned>());
    next.press(41, "start");
    ASSERT_TRUE(comes([&] { return pressed == std::vector<std::string>{"B start"}; }));
}

TEST_F(DesktopNotificationsTest, nobodyShowsAreALineInTheLog) {
    show("A");
    ASSERT_TRUE(comes([&] { return failures.size() == 1; })) << "no service";
    {
        Service service(loop);
        service.failure = "org.example.Failure";
        show("B");
        ASSERT_TRUE(comes([&] { return failures.size() == 2; }));
        EXPECT_EQ(failures.back(), "The notification is not shown: It would rather not");
    }
    ASSERT_TRUE(busGoes());
    show("C");
    EXPECT_EQ(failures.back(), "The notification is not shown: no session bus takes it");
    notifications->withdraw();
    ASSERT_TRUE(busComes());
    Service service(loop);
    show("D");
    ASSERT_TRUE(comes([&] { return service.shown.size() == 1; })) << "with the bus they come back";
    EXPECT_EQ(failures.size(), 3U);
}

struct TrayNoticeTest : DesktopNotificationsTest {
    bool oldTray = false, locked = false;
    int logged = 0, opened = 0;
    TrayNotice notice{
        loop,
        bus,
        *notifications,
        {[this] { return oldTray; }, [this] { return locked; }, [this] { ++logged; }, [this] { ++opened; }},
        0.3};
};

TEST_F(TrayNoticeTest, tellsOnceAndTheClickOpensThePreferences) {
    Service desktop(loop);
    notice.setHostPresent(false);
    spin(loop, 0.1);
    EXPECT_EQ(logged, 0) << "a panel may be slow";
    ASSERT_TRUE(comes([&] { return desktop.shown.size() == 1; }));
    EXPECT_TRUE(desktop.shown.front().ends_with("[default Settings] [desktop-entry=app.orvane.Kelpa] -1"))
        << desktop.shown.front();
    settle();
    desktop.press(41, "other");
    desktop.press(41, "default");
    EXPECT_TRUE(comes([&] { return opened > 0; }));
    notice.setHostPresent(true);
    notice.setHostPresent(false);
    spin(loop, 0.6);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(desktop.shown.size(), 1U);
    EXPECT_EQ(logged, 1);
}

TEST_F(TrayNoticeTest, isSilentOfAPanelThatIsSlowOrHasAReasonToBeGone) {
    const auto staysSilent = [&](double gone, const char* why) {
        notice.setHostPresent(false);
        spin(loop, gone);
        notice.setHostPresent(true);
        spin(loop, 0.5);
        EXPECT_EQ(logged, 0) << why;
    };
    staysSilent(0.1, "it is back in time");
    oldTray = true;
    staysSilent(0.5, "another tray shows the item");
    oldTray = false;
    locked = true;
    staysSilent(0.5, "the screen is locked");
    locked = false;
    notice.setHostPresent(false);
    EXPECT_TRUE(comes([&] { return logged == 1; }));
}

/// A bus takes the panel with it, and both may come back.
TEST_F(TrayNoticeTest, saysNothingOfADesktopWhileThereIsNoBus) {
    ASSERT_TRUE(busGoes());
    notice.setHostPresent(false);
    spin(loop, 0.6);
    EXPECT_EQ(logged, 0);
    ASSERT_TRUE(busComes());
    spin(loop, 0.1);
    EXPECT_EQ(logged, 0) << "the panel is given its time again";
    EXPECT_TRUE(comes([&] { return logged == 1; }));
}

} // namespace
} // namespace kelpa::test
