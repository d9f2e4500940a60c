#include "desk/RecordingServices.h"

namespace kelpa::desk {

namespace {

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

LogHandlerFactory RecordingLogFiles::open(const std::filesystem::path&, const std::string&,
                                          const std::string&, const std::string&) {
    return [&journal = journal_](const std::string&) { return std::make_unique<JournalLogHandler>(journal); };
}

} // namespace kelpa::desk
