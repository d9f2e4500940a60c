#pragma once

#include "base/Text.h"
#include "desk/Journal.h"
#include "desk/RecordingAttention.h"
#include "desk/RecordingPreferences.h"
#include "logging/SharedLogger.h"
#include "platform/ports/Ports.h"

#include <string_view>
#include <vector>

namespace kelpa::desk {

/// Thrown where the real program would end because of a fault of its own.
struct FatalEnd {
    std::string message;
};

/// A window of the history that remembers what it was told last.
class RecordingHistoryWindow final : public HistoryWindow {
  public:
    explicit RecordingHistoryWindow(Journal& journal) : journal_(journal) {}

    void setTexts(const HistoryTexts& told, HistoryWindowClient& whose) override {
        texts = told;
        client = &whose;
    }
    void setPicture(const HistoryPicture& told) override {
        picture = told;
        ++pictures;
    }
    void show() override { journal_.note("history", "shown"); }

    HistoryTexts texts;
    HistoryPicture picture;
    int pictures = 0; ///< that were told
    HistoryWindowClient* client = nullptr;

  private:
    Journal& journal_;
};

/// Everything that a script cannot see further than that it was called.
class RecordingServices final : public LoginItem,
                                public Updater,
                                public MailComposer,
                                public AboutPanel,
                                public ApplicationLoop {
  public:
    RecordingServices(Journal& journal, VirtualTime& time)
        : preferences(journal), history(journal), notifications(journal), busyness(journal, time),
          journal_(journal), time_(time) {}

    [[nodiscard]] Services services() {
        return {this, this, this, this, &preferences, &notifications, &busyness, &history};
    }

    void setEnabled(bool enabled) override { journal_.note("login", enabled ? "register" : "unregister"); }
    void setAutomaticallyChecks(bool checks) override {
        journal_.aside("updater", checks ? "automatic" : "by hand");
    }
    void setCheckInterval(double seconds) override {
        journal_.aside("updater", "every " + decimalText(seconds));
    }
    void setSendsSystemProfile(bool sends) override {
        journal_.aside("updater", sends ? "with profile" : "without profile");
    }
    void start() override { journal_.aside("updater", "start"); }
    void checkForUpdates() override { journal_.note("updater", "check"); }
    void compose(const Mail& mail) override {
        lastMail = mail;
        journal_.note("mail", inQuotes(mail.subject));
    }
    void show(const AboutContent& text) override {
        lastAbout = text;
        journal_.note("about");
    }
    void terminate() override {
        journal_.note("app", "quit");
        time_.stop();
    }

    Mail lastMail;
    AboutContent lastAbout;
    RecordingPreferences preferences;
    RecordingHistoryWindow history;
    RecordingNotifications notifications;
    ScriptedBusyness busyness;

  private:
    Journal& journal_;
    VirtualTime& time_;
};

/// A status bar that notes titles and the lines that change, and that a script clicks.
class RecordingStatusBar final : public StatusBar {
  public:
    explicit RecordingStatusBar(Journal& journal) : journal_(journal) {}

    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void createItem(const std::string& image, MenuClicks& clicks) override;
    void setTitle(const std::string& told) override;
    void setHint(const std::string& told) override;

    /// Clicks a line by its name in scripts ("pause", "water", "settings", …), which must be known; false
    /// where the menu has no such line or it is disabled.
    bool click(std::string_view name);
    [[nodiscard]] static bool knows(std::string_view name);

    std::vector<MenuLine> lines;
    std::string title;
    std::string hint;

  private:
    Journal& journal_;
    MenuClicks* clicks_ = nullptr;
};

class NoFonts final : public Fonts {
  public:
    [[nodiscard]] std::optional<std::vector<unsigned char>> fontAsset(const std::string&) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::optional<std::string> registerFont(const std::vector<unsigned char>&) override {
        return "no fonts here";
    }
    [[nodiscard]] std::optional<GlyphImage> drawGlyph(const std::string&, const std::string&,
                                                      double) override {
        return std::nullopt;
    }
};

/// A log without files: each record that reaches the handlers is noted.
[[nodiscard]] LogFileOpener recordingLogFiles(Journal& journal);

/// Desktop events that scripts cause.
class ScriptedEvents final : public LockNotifications, public ActivityMonitor {
  public:
    explicit ScriptedEvents(Journal& journal) : journal_(journal) {}

    void observe(std::function<void()> locked, std::function<void()> unlocked) override {
        journal_.aside("observe", "lock");
        lock = std::move(locked);
        unlock = std::move(unlocked);
    }
    Watch watch(std::function<void()> happens, std::function<void()> lost) override {
        journal_.aside("observe", "activity");
        activity = std::move(happens);
        loseActivity = std::move(lost);
        return activityWatch;
    }

    // What a script calls; nothing comes of it before the program asks for it.
    std::function<void()> lock = [] {}, unlock = [] {}, activity = [] {}, loseActivity = [] {};
    Watch activityWatch = Watch::Working; ///< what the program is answered when it asks for activity

  private:
    Journal& journal_;
};

} // namespace kelpa::desk
