// Plays the core's part with real break windows, for desktop checks: does what lines on standard input say
// and tells on standard output what happened.

#include "platform/linux/Folders.h"
#include "platform/linux/display/Display.h"
#include "platform/linux/tray/TrayHelper.h"
#include "platform/linux/windows/RemoteWindowSystem.h"

#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

using namespace kelpa;

constexpr double fadeSeconds = 2.0;

void say(const std::string& text) {
    std::cout << text << std::endl; // a script waits for each line
}

class SpokenReport final : public WindowReport {
  public:
    void info(const std::string& text) override { say("info " + text); }
    void warning(const std::string& text) override { say("warning " + text); }
};

class SpokenClient final : public BreakScreenClient {
  public:
    void skipPressed() override { say("skip"); }
    void noticeTapped() override { say("notice"); }
};

class SpokenClicks final : public MenuClicks {
  public:
    void didClick(int lineId) override { say("clicked " + std::to_string(lineId)); }
};

struct BreakWindow {
    std::unique_ptr<NativeWindow> window;
    std::unique_ptr<BreakScreenFace> face;
    bool closing = false;
};

class Driver final : public WindowSystemClient {
  public:
    Driver(EventLoop& loop, RemoteWindowSystem& windows, TrayProcess& tray)
        : loop_(loop), windows_(windows), tray_(tray) {
        windows_.setClient(*this);
        input_ = loop_.watch(STDIN_FILENO, [this] { read(); });
    }

    void screensChanged() override {}
    void panelDragged(const Rect& /*frame*/) override {}

  private:
    void read() {
        char buffer[4096];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0)
            return loop_.terminate();
        pending_.append(buffer, static_cast<std::size_t>(count));
        for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
            obey(pending_.substr(0, end));
            pending_.erase(0, end + 1);
        }
    }

    void obey(const std::string& line) {
        const auto blank = line.find(' ');
        const std::string verb = line.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (verb == "prepare")
            windows_.prepare();
        else if (verb == "show")
            show();
        else if (verb == "close")
            close();
        else if (verb == "quit")
            loop_.terminate();
        else if (verb == "tray")
            tray_.show(item_, clicks_);
        else if (verb == "untray")
            tray_.hide();
        else if (verb == "title")
            setTitle(rest);
        else if (verb == "pause")
            pause(rest);
        else
            set(verb, rest);
    }

    void setTitle(const std::string& title) {
        item_.title = title;
        tray_.titleChanged(title);
    }

    void pause(const std::string& title) {
        item_.lines[1].title = title;
        tray_.lineChanged(item_.lines[1]);
    }

    void set(const std::string& verb, const std::string& text) {
        std::string& value = verb == "count" ? count_ : verb == "prompt" ? prompt_ : skip_;
        value = text;
        for (auto& [number, each] : breaks_)
            tell(*each.face);
    }

    void tell(BreakScreenFace& face) const {
        std::string prompt = prompt_;
        for (auto at = prompt.find("\\n"); at != std::string::npos; at = prompt.find("\\n"))
            prompt.replace(at, 2, "\n");
        face.setPrompt(prompt);
        face.setCount(count_);
        face.setSkipOffered(skip_ == "1");
    }

    BreakWindow& find(const Screen& screen) {
        BreakWindow& found = breaks_[screen.number];
        if (!found.window) {
            found.window = windows_.makeWindow({std::to_string(screen.number), screen.frame, 25,
                                                WindowStyle::FullSizeContent, screen.number});
            found.face = found.window->hostBreakScreen(client_);
            found.face->setTexts({"New Feature:", "Water Reminder",
                                  "You can enable it in the preference panel.", "Skip", "chevron.forward"});
            tell(*found.face);
        }
        return found;
    }

    void appear(const Screen& screen) {
        BreakWindow& each = find(screen);
        each.closing = false;
        each.window->setAlpha(0);
        each.window->fadeTo(1, fadeSeconds, nullptr);
        each.window->orderFrontRegardless();
    }

    void show() {
        for (const Screen& screen : windows_.screens())
            appear(screen);
        windows_.activate();
    }

    void close() {
        for (auto& [number, each] : breaks_) {
            each.closing = true;
            each.window->fadeTo(0, fadeSeconds, [&each = each, number = number] {
                if (!each.closing)
                    return;
                each.window->close();
                say("closed " + std::to_string(number));
            });
        }
        windows_.deactivate();
    }

    EventLoop& loop_;
    RemoteWindowSystem& windows_;
    TrayProcess& tray_;
    SpokenClient client_;
    SpokenClicks clicks_;
    StatusItemModel item_{"kelpa",
                          "24:59",
                          "",
                          {{1, false, false, "    Kelpa", "", "", 0, ""},
                           {2, false, true, "- Stop -", "stop.circle", "p", 0, ""},
                           {3, true, true, "", "", "", 0, ""},
                           {4, false, true, "Quit & more", "escape", "q", 0, ""}}};
    std::map<std::uint32_t, BreakWindow> breaks_;
    std::string count_ = "05:00";
    std::string prompt_ = "Look at something far away.";
    std::string skip_ = "1";
    std::string pending_;
    Subscription input_;
};

/// Checks do not wait as long as a person would not notice.
double idleSeconds() {
    const char* seconds = std::getenv("DRIVER_IDLE_SECONDS");
    return seconds == nullptr ? 20 : std::atof(seconds);
}

int run(const std::string& view) {
    EventLoop loop;
    const auto [display, error] = openDisplay(loop, [&loop] {
        say("display lost");
        loop.terminate();
    });
    if (!display || !display->x11) {
        say("no display: " + error);
        return 1;
    }
    SpokenReport report;
    RemoteWindowSystem windows({loop, *display->screens, *display->focus, report, idleSeconds()}, view);
    TrayProcess tray(loop, *display->x11, report, helperPath("kelpa-tray"), dataFolders().data);
    Driver driver(loop, windows, tray);
    say("screens " + std::to_string(windows.screens().size()));
    return loop.run();
}

} // namespace

int main(int argc, char** argv) {
    return run(argc > 1 ? argv[1] : helperPath("kelpa-view"));
}
