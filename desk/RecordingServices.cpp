#include "desk/RecordingServices.h"

#include <algorithm>
#include <map>

namespace kelpa::desk {

namespace {

constexpr std::string_view pauseAction = "didClickPause";
constexpr std::string_view waterAction = "didClickWater";

/// The names of lines in scripts, with what a click on them does.
const std::map<std::string_view, std::string_view> actions = {
    {"pause", pauseAction},         {"water", waterAction},           {"settings", "didClickSettings"},
    {"updates", "didClickUpdates"}, {"feedback", "didClickFeedback"}, {"about", "didClickAbout"},
    {"quit", "didClickQuit"}};

class JournalLogHandler final : public LogHandler {
  public:
    explicit JournalLogHandler(Journal& journal) : journal_(journal) {}
    void log(const LogRecord& record) override {
        if (journal_.keeps("log"))
            journal_.note("log", std::string(name(record.level)) + " " + oneLine(record.message));
    }
    [[nodiscard]] LogLevel logLevel() const override { return level_; }
    void setLogLevel(LogLevel level) override { level_ = level; }
    [[nodiscard]] LogMetadata metadata() const override { return {}; }
    void setMetadata(LogMetadata /*metadata*/) override {}
    void setMetadata(const std::string& /*key*/, std::optional<std::string> /*value*/) override {}

  private:
    Journal& journal_;
    LogLevel level_ = LogLevel::Info;
};

} // namespace

void RecordingStatusBar::lineInserted(std::size_t index, const MenuLine& line) {
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(index), line);
    if (line.action == waterAction)
        journal_.note("item", "water inserted " + std::to_string(index) + " " + inQuotes(line.title));
}

void RecordingStatusBar::lineRemoved(int lineId) {
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const MenuLine& l) { return l.id == lineId; });
    if (found == lines.end())
        return;
    if (found->action == waterAction)
        journal_.note("item", "water removed");
    lines.erase(found);
}

void RecordingStatusBar::lineChanged(const MenuLine& line) {
    for (MenuLine& known : lines)
        if (known.id == line.id)
            known = line;
    if (line.action == pauseAction)
        journal_.note("item", "pause " + line.image + " " + inQuotes(line.title));
    if (line.action == waterAction)
        journal_.note("item", "water " + inQuotes(line.title));
}

void RecordingStatusBar::createItem(const std::string& image, MenuClicks& clicks) {
    journal_.aside("item", "created " + image);
    clicks_ = &clicks;
}

void RecordingStatusBar::setTitle(const std::string& told) {
    if (told == title)
        return;
    title = told;
    if (journal_.keeps("title"))
        journal_.note("title", told.empty() ? "\"\"" : told);
}

void RecordingStatusBar::setHint(const std::string& told) {
    if (std::exchange(hint, told) != told)
        journal_.note("hint", inQuotes(told));
}

bool RecordingStatusBar::knows(std::string_view name) {
    return actions.count(name) > 0;
}

bool RecordingStatusBar::click(std::string_view name) {
    for (const MenuLine& line : lines)
        if (clicks_ && line.enabled && line.action == actions.at(name)) {
            clicks_->didClick(line.id);
            return true;
        }
    return false;
}

LogFileOpener recordingLogFiles(Journal& journal) {
    const LogHandlerFactory handlers = [&journal](const std::string&) {
        return std::make_unique<JournalLogHandler>(journal);
    };
    return [handlers](const auto&...) { return handlers; };
}

} // namespace kelpa::desk
