#include "desk/RecordingServices.h"

#include <algorithm>
#include <array>

namespace kelpa::desk {

namespace {

struct NamedLine {
    std::string_view name;
    std::string_view keyEquivalent; ///< tells the line; where there is none its image does
    std::string_view image;
};

constexpr std::array<NamedLine, 7> namedLines = {{{"pause", "p", ""},
                                                  {"water", "r", ""},
                                                  {"settings", ",", ""},
                                                  {"updates", "", "arrow.counterclockwise.icloud"},
                                                  {"feedback", "", "mail.stack"},
                                                  {"about", "", "info.circle"},
                                                  {"quit", "q", ""}}};

const NamedLine* named(std::string_view name) {
    const auto* found = std::find_if(namedLines.begin(), namedLines.end(),
                                     [&](const NamedLine& each) { return each.name == name; });
    return found == namedLines.end() ? nullptr : found;
}

bool is(const MenuLine& line, const NamedLine& wanted) {
    return wanted.keyEquivalent.empty() ? line.image == wanted.image
                                        : line.keyEquivalent == wanted.keyEquivalent;
}

bool isPause(const MenuLine& line) {
    return is(line, namedLines[0]);
}

bool isWater(const MenuLine& line) {
    return is(line, namedLines[1]);
}

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
    [[nodiscard]] std::optional<std::string> metadata(const std::string& /*key*/) const override {
        return {};
    }
    void setMetadata(const std::string& /*key*/, std::optional<std::string> /*value*/) override {}

  private:
    Journal& journal_;
    LogLevel level_ = LogLevel::Info;
};

} // namespace

void RecordingStatusBar::lineInserted(std::size_t index, const MenuLine& line) {
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(index), line);
    if (isWater(line))
        journal_.note("item", "water inserted " + std::to_string(index) + " " + inQuotes(line.title));
}

void RecordingStatusBar::lineRemoved(int lineId) {
    const auto found =
        std::find_if(lines_.begin(), lines_.end(), [&](const MenuLine& l) { return l.id == lineId; });
    if (found == lines_.end())
        return;
    if (isWater(*found))
        journal_.note("item", "water removed");
    lines_.erase(found);
}

void RecordingStatusBar::lineChanged(const MenuLine& line) {
    for (MenuLine& known : lines_)
        if (known.id == line.id)
            known = line;
    if (isPause(line))
        journal_.note("item", "pause " + line.image + " " + inQuotes(line.title));
    if (isWater(line))
        journal_.note("item", "water " + inQuotes(line.title));
}

void RecordingStatusBar::createItem(const std::string& image, MenuClicks& clicks) {
    journal_.aside("item", "created " + image);
    clicks_ = &clicks;
}

void RecordingStatusBar::setTitle(const std::string& title) {
    if (title == title_)
        return;
    title_ = title;
    if (journal_.keeps("title"))
        journal_.note("title", title.empty() ? "\"\"" : title);
}

void RecordingStatusBar::setHint(const std::string& hint) {
    if (std::exchange(hint_, hint) != hint)
        journal_.note("hint", inQuotes(hint));
}

bool RecordingStatusBar::knows(std::string_view name) {
    return named(name) != nullptr;
}

bool RecordingStatusBar::click(std::string_view name) {
    const NamedLine* wanted = named(name);
    for (const MenuLine& line : lines_)
        if (clicks_ && wanted && is(line, *wanted) && line.enabled) {
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
