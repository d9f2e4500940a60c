// What the program asks of the desktop beside its windows: to be started at log-in, to open a mail.
#include "PrivateBus.h"
#include "platform/linux/services/Launcher.h"
#include "platform/linux/services/LinuxLoginItem.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace kelpa;
using namespace kelpa::test;
namespace fs = std::filesystem;

namespace {

void writeText(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    writeFile(path, text);
}

void executable(const fs::path& path, const std::string& text) {
    writeText(path, text);
    fs::permissions(path, fs::perms::owner_all);
}

class LoginItemTest : public testing::Test {
  protected:
    LoginItemTest() { executable(program, "#!/bin/sh\necho started > \"$(dirname \"$0\")/mark\"\n"); }

    void setEnabled(bool enabled) {
        const auto item = makeLinuxLoginItem(
            {user, {system}}, {"app.orvane.Kelpa", "Kelpa", program.string()}, [] { return nullptr; },
            [this](const std::string& line) { log.push_back(line); });
        item->setEnabled(enabled);
    }
    [[nodiscard]] static bool hidden(const fs::path& entry) {
        const auto read = readDesktopEntry(contentOf(entry));
        return !read || read->hidden;
    }
    [[nodiscard]] std::vector<std::string> userEntries() const {
        std::vector<std::string> names;
        if (fs::exists(user))
            for (const auto& entry : fs::directory_iterator(user))
                names.push_back(entry.path().filename());
        return names;
    }

    TempFolder folder;
    fs::path program = fs::path(folder.path()) / "odd $HOME `x` \"q\" back\\slash 名 'a';&" / "kelpa";
    fs::path user = fs::path(folder.path()) / "config" / "autostart";
    fs::path system = fs::path(folder.path()) / "xdg" / "autostart";
    fs::path own = user / "app.orvane.Kelpa.desktop";
    std::vector<std::string> log;
};

TEST_F(LoginItemTest, TheEntryStartsExactlyThisProgramWhateverItsPathLooksLike) {
    setEnabled(true);
    ASSERT_EQ(userEntries(), std::vector<std::string>{"app.orvane.Kelpa.desktop"});
    // The desktop's own library reads it and runs it.
    const std::string script = "from gi.repository import Gio; "
                               "Gio.DesktopAppInfo.new_from_filename('" +
                               own.string() + "').launch([], None)";
    ASSERT_EQ(std::system(("/usr/bin/python3 -c \"import gi; " + script + "\"").c_str()), 0);
    EventLoop loop;
    EXPECT_TRUE(spinUntil(loop, [this] { return fs::exists(program.parent_path() / "mark"); }));
    setEnabled(false);
    EXPECT_TRUE(userEntries().empty());
    EXPECT_TRUE(log.empty());
}

TEST(DesktopEntryTest, ArgumentsComeBackAsTheyWere) {
    for (const std::string argument :
         {"/opt/100%f off/kelpa", "/a\\b/kelpa", "/tab\there", "plain", "$x`y\"z"}) {
        const auto entry = readDesktopEntry("[Desktop Entry]\nExec = " + entryValue(execArgument(argument)) +
                                            " --speed 1\n");
        EXPECT_EQ(entry->program, argument);
    }
    EXPECT_FALSE(readDesktopEntry("Exec=kelpa\n"));
    EXPECT_EQ(readDesktopEntry("[A]\nExec=x\n[Desktop Entry]\n#Exec=y\n[Desktop Action B]\nExec=z")->program,
              "");
}

TEST_F(LoginItemTest, WhatAPackageStartsIsNotStartedTwiceAndCanBeSwitchedOff) {
    const std::string packaged = "[Desktop Entry]\nType=Application\nName=Kelpa\nExec=kelpa\n";
    writeText(system / "app.orvane.Kelpa.desktop", packaged);
    setEnabled(true);
    EXPECT_TRUE(userEntries().empty());
    setEnabled(false);
    EXPECT_TRUE(hidden(own));
    setEnabled(true);
    EXPECT_TRUE(userEntries().empty());
    EXPECT_EQ(contentOf(system / "app.orvane.Kelpa.desktop"), packaged);
}

TEST_F(LoginItemTest, AnEntryThatTheUserMadeIsKeptAndOnlyHidden) {
    const std::string mine = "# mine\n[Desktop Entry]\nType=Application\nName=Breaks\nExec=" +
                             entryValue(execArgument(program.string())) + " --speed 2\nX-Note=keep\n";
    writeText(user / "breaks.desktop", mine);
    setEnabled(true);
    EXPECT_EQ(userEntries(), std::vector<std::string>{"breaks.desktop"});
    setEnabled(false);
    EXPECT_TRUE(hidden(user / "breaks.desktop"));
    EXPECT_NE(contentOf(user / "breaks.desktop").find("X-Note=keep"), std::string::npos);
    setEnabled(true);
    EXPECT_EQ(contentOf(user / "breaks.desktop"), mine);
    EXPECT_EQ(userEntries(), std::vector<std::string>{"breaks.desktop"});
}

TEST_F(LoginItemTest, AnotherProgramsEntryIsNoneOfOurs) {
    const std::string other = "[Desktop Entry]\nType=Application\nName=Other\nExec=/bin/true\n";
    writeText(user / "other.desktop", other);
    setEnabled(true);
    EXPECT_TRUE(fs::exists(own));
    setEnabled(false);
    EXPECT_EQ(contentOf(user / "other.desktop"), other);
    EXPECT_FALSE(fs::exists(own));
}

TEST_F(LoginItemTest, AFailureIsOneLineInTheSystemLog) {
    writeText(user, "a file where the folder should be");
    setEnabled(true);
    EXPECT_EQ(log, std::vector<std::string>{"SMAppService error: "});
}

/// The mail program of this test notes the address that it is opened with.
class MailTest : public testing::Test {
  protected:
    MailTest() {
        executable(mailer, "#!/usr/bin/python3\nimport sys, urllib.parse\nopen('" + noted.string() +
                               "', 'w').write(urllib.parse.unquote(sys.argv[1]))\n");
        setenv("MAILER", mailer.c_str(), 1);
        unsetenv("DISPLAY");
        unsetenv("XDG_CURRENT_DESKTOP");
        writeText(log, "lines");
    }
    [[nodiscard]] std::string opened() {
        EXPECT_TRUE(spinUntil(loop, [this] { return fs::exists(noted) && fs::file_size(noted) > 0; }));
        return contentOf(noted);
    }
    TempFolder folder;
    fs::path mailer = fs::path(folder.path()) / "mailer";
    fs::path noted = fs::path(folder.path()) / "noted";
    fs::path log = fs::path(folder.path()) / "日志 with 100% & more.log";
    EventLoop loop;
};

TEST_F(MailTest, EverythingReachesTheUsersMailProgram) {
    LinuxMail mail(loop, [] { return nullptr; });
    mail.compose({"Kelpa 反馈", "feedback@kelpa.example", "请写: \"x\" & $HOME\n\n\nApp version: v1\n", log});
    const std::string url = opened();
    EXPECT_NE(url.find("mailto:feedback@kelpa.example"), std::string::npos) << url;
    EXPECT_NE(url.find("subject=Kelpa 反馈"), std::string::npos) << url;
    EXPECT_NE(url.find("请写: \"x\" & $HOME"), std::string::npos) << url;
    EXPECT_NE(url.find("App version: v1"), std::string::npos) << url;
    EXPECT_NE(url.find("attach=" + log.string()), std::string::npos) << url;
}

TEST_F(MailTest, WithoutAnythingInstalledNothingHappens) {
    setenv("PATH", folder.path().c_str(), 1);
    LinuxMail mail(loop, [] { return nullptr; });
    mail.compose({"s", "r@kelpa.example", "b", {}});
    spin(loop, 0.05);
    EXPECT_FALSE(fs::exists(noted));
}

/// A desktop's portal that notes what it is asked and answers with a response code.
class FakePortal {
  public:
    explicit FakePortal(sd_bus* bus) {
        static const sd_bus_vtable both[] = {
            SD_BUS_VTABLE_START(0), SD_BUS_METHOD("RequestBackground", "sa{sv}", "o", asked, 0),
            SD_BUS_METHOD("ComposeEmail", "sa{sv}", "o", asked, 0), SD_BUS_VTABLE_END};
        for (const char* interface : {"org.freedesktop.portal.Background", "org.freedesktop.portal.Email"})
            sd_bus_add_object_vtable(bus, nullptr, "/org/freedesktop/portal/desktop", interface, both, this);
        sd_bus_request_name(bus, "org.freedesktop.portal.Desktop", 0);
    }
    std::uint32_t code = 0;
    std::string request; ///< the last one's interface and name
    std::map<std::string, std::string> options;
    int calls = 0;

  private:
    static int asked(sd_bus_message* message, void* self, sd_bus_error*) {
        auto& portal = *static_cast<FakePortal*>(self);
        ++portal.calls;
        portal.request =
            sd_bus_message_get_interface(message) + (" " + std::string(sd_bus_message_get_member(message)));
        sd_bus_message_skip(message, "s");
        portal.options = readProperties(message);
        const std::string sender = sd_bus_message_get_sender(message);
        std::string name = sender.substr(1);
        std::replace(name.begin(), name.end(), '.', '_');
        const std::string handle =
            "/org/freedesktop/portal/desktop/request/" + name + "/" + portal.options["handle_token"];
        sd_bus_reply_method_return(message, "o", handle.c_str());
        return sd_bus_emit_signal(sd_bus_message_get_bus(message), handle.c_str(),
                                  "org.freedesktop.portal.Request", "Response", "ua{sv}", portal.code, 0);
    }
};

struct PortalTest : OnABus {
    Portal portal{bus};
    std::vector<std::string> refusals;
    void ask() {
        portal.requestBackground(true, {"kelpa"}, [&](const std::string& said) { refusals.push_back(said); });
    }
};

TEST_F(PortalTest, ASandboxAsksTheDesktop) {
    Peer desktop(loop);
    FakePortal fake(desktop.bus());
    TempFolder folder;
    std::vector<std::string> log;
    const auto item = makeLinuxLoginItem(
        {folder.path(), {}}, {"app.orvane.Kelpa", "Kelpa", "/app/bin/kelpa"}, [this] { return &portal; },
        [&log](const std::string& line) { log.push_back(line); });
    item->setEnabled(true);
    ASSERT_TRUE(spinUntil(loop, [&] { return fake.calls == 1; }));
    EXPECT_EQ(fake.request, "org.freedesktop.portal.Background RequestBackground");
    EXPECT_EQ(fake.options["autostart"], "yes");
    EXPECT_TRUE(fs::is_empty(folder.path()));

    writeText(fs::path(folder.path()) / "today.log", "lines of today");
    LinuxMail mail(loop, [this] { return &portal; });
    mail.compose({"Kelpa 反馈", "feedback@kelpa.example", "body", folder.path() + "/today.log"});
    ASSERT_TRUE(spinUntil(loop, [&] { return fake.calls == 2; }));
    EXPECT_EQ(fake.request, "org.freedesktop.portal.Email ComposeEmail");
    EXPECT_EQ(fake.options["subject"], "Kelpa 反馈");
    EXPECT_EQ(fake.options["address"], "feedback@kelpa.example");
    EXPECT_EQ(fake.options["attachment_fds"], "[lines of today]");

    spin(loop, 0.05);
    EXPECT_TRUE(log.empty());
    fake.code = 2;
    item->setEnabled(false);
    EXPECT_TRUE(spinUntil(loop, [&] { return !log.empty(); }));
    EXPECT_EQ(log, std::vector<std::string>{"SMAppService error: "});
}

TEST_F(PortalTest, ADesktopWithoutPortalRefuses) {
    ask();
    EXPECT_TRUE(spinUntil(loop, [&] { return !refusals.empty(); }));
}

/// Not so the program's own helpers.
TEST(LauncherTest, ProgramsOfTheDesktopOutliveThisOne) {
    EventLoop loop;
    Launcher launcher(loop);
    const std::string asks = "import ctypes, sys; got = ctypes.c_int(-1); "
                             "ctypes.CDLL(None).prctl(2, ctypes.byref(got)); sys.exit(got.value)";
    std::optional<bool> noSignalWhenWeDie;
    ASSERT_TRUE(launcher.run({"/usr/bin/python3", "-c", asks}, [&](bool well) { noSignalWhenWeDie = well; }));
    ASSERT_TRUE(spinUntil(loop, [&] { return noSignalWhenWeDie.has_value(); }));
    EXPECT_TRUE(*noSignalWhenWeDie);
}

TEST_F(PortalTest, ABusThatGoesAwayRefusesWhatIsAskedAndWhatWasAsked) {
    // It has the name and never answers.
    Peer silent(loop);
    sd_bus_request_name(silent.bus(), "org.freedesktop.portal.Desktop", 0);
    sd_bus_detach_event(silent.bus());
    ask();
    ask();
    daemon->end();
    EXPECT_TRUE(spinUntil(loop, [&] { return refusals.size() == 2; }));
    spinUntil(loop, [&] { return !bus.open(); });
    ask();
    EXPECT_EQ(refusals.size(), 3U);
}

} // namespace
