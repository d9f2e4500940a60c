// Plays the core's part with a real updater whose window is standard output: does what lines on standard
// input say and tells what a person would see.
//
// usage: kelpa-update-driver FEED KEY PACKAGE HELPER STORE FOLDER SPEED [VIEW]

#include "base/Text.h"
#include "platform/linux/Folders.h"
#include "platform/linux/GettextTranslations.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/display/Display.h"
#include "platform/linux/store/PlistStore.h"
#include "platform/linux/update/LinuxUpdater.h"
#include "platform/linux/windows/RemoteDialogs.h"

#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace kelpa;

/// Everything in one line, for which a script waits.
void say(const std::string& text) {
    std::cout << replacingAll(text, "\n", " ") << std::endl;
}

struct SpokenReport final : WindowReport, StoreReport {
    void info(const std::string& text) override { say("info " + text); }
    void warning(const std::string& text) override { say("warning " + text); }
    void error(const std::string& text) override { say("error " + text); }
};

/// A window on the screen, and all that it takes.
struct RealWindow {
    RealWindow(EventLoop& loop, const std::string& view, WindowReport& report)
        : opened(openDisplay(loop, [&loop] { loop.terminate(); })),
          windows({loop, *opened.display->screens, *opened.display->focus, report}, view), window(windows) {}
    OpenedDisplay opened;
    RemoteWindowSystem windows;
    RemoteUpdateWindow window;
};

struct SpokenWindow final : UpdateWindow {
    void setPage(const UpdatePage& page) override {
        say("page " + page.headline + " | " + page.text + " | " + page.notesLink);
        if (real)
            real->setPage(page);
    }
    void present(Attention attention) override {
        say("present");
        if (real)
            real->present(attention);
    }
    void close() override {
        say("close");
        if (real)
            real->close();
    }
    void setClient(UpdateWindowClient* told) override {
        client = told;
        if (real)
            real->setClient(told);
    }
    UpdateWindowClient* client = nullptr;
    UpdateWindow* real = nullptr;
};

class Driver {
  public:
    Driver(EventLoop& loop, Updater& updater, SpokenWindow& window)
        : loop_(loop), updater_(updater), window_(window) {
        input_ = loop.watch(STDIN_FILENO, [this] { read(); });
    }

  private:
    void read() {
        char bytes[256];
        const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (count <= 0)
            return loop_.terminate();
        buffer_.append(bytes, static_cast<std::size_t>(count));
        for (std::size_t end = 0; (end = buffer_.find('\n')) != std::string::npos; buffer_.erase(0, end + 1))
            obey(buffer_.substr(0, end));
    }
    void obey(const std::string& command) {
        static const std::map<std::string, UpdateAction> actions{{"install", UpdateAction::Install},
                                                                 {"later", UpdateAction::Later},
                                                                 {"skip", UpdateAction::Skip},
                                                                 {"cancel", UpdateAction::Cancel},
                                                                 {"close", UpdateAction::Close}};
        if (command == "ask")
            updater_.checkForUpdates();
        else
            window_.client->act(actions.at(command));
    }

    EventLoop& loop_;
    Updater& updater_;
    SpokenWindow& window_;
    std::string buffer_;
    Subscription input_;
};

UpdateSetup setupOf(const std::vector<std::string>& arguments, const std::string& language) {
    UpdateSetup setup;
    setup.support = arguments.at(0).empty() ? UpdateSupport::NoFeed : UpdateSupport::Feed;
    setup.feed = arguments.at(0);
    setup.key = arguments.at(1);
    setup.package = arguments.at(2);
    setup.helper = arguments.at(3);
    setup.folder = arguments.at(5);
    setup.version = "5";
    setup.name = "0.1.0";
    setup.system = "12.0.0";
    setup.processor = "x86_64";
    setup.language = language;
    return setup;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const double speed = std::stod(arguments.at(6));
    EventLoop loop(speed);
    const LinuxClock clock(loop, speed);
    const GettextTranslations translations(dataFolders().locale);
    setTranslations(GettextTranslations::lookUp);
    SpokenReport report;
    SpokenWindow window;
    std::unique_ptr<RealWindow> real;
    if (arguments.size() > 7) {
        real = std::make_unique<RealWindow>(loop, arguments[7], report);
        window.real = &real->window;
    }
    const auto store = makePlistStore(arguments.at(4), report, loop);
    const auto updater =
        makeLinuxUpdater({loop, clock, *store, window, report}, setupOf(arguments, translations.language()));
    updater->setAutomaticallyChecks(true);
    updater->setCheckInterval(43200);
    updater->setSendsSystemProfile(true);
    updater->start();
    const Driver driver(loop, *updater, window);
    say("started");
    return loop.run();
}
