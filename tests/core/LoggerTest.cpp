#include "logging/FileLogging.h"
#include "logging/SharedLogger.h"

#include "desk/VirtualTime.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace kelpa {
namespace {

namespace fs = std::filesystem;

/// A clock that a test sets, and that may go on by itself each time it is read.
class TestClock final : public LocalClock {
  public:
    [[nodiscard]] Date now() const override {
        return {std::exchange(shown.secondsSince1970, shown.secondsSince1970 + step)};
    }
    [[nodiscard]] std::optional<WeekRule> weekRule() const override { return rule; }
    [[nodiscard]] Subscription at(Date, std::function<void()>) override { return {}; }

    mutable Date shown;
    double step = 0;
    std::optional<WeekRule> rule;
};

class LoggerTest : public testing::Test {
  protected:
    LoggerTest() {
        desk::VirtualClock::setZone("Europe/Berlin");
        setTime({2026, 11, 21, 10, 15, 30});
        setUp(root_.string());
    }
    ~LoggerTest() override { fs::remove_all(root_); }

    void setUp(const std::optional<std::string>& home) {
        setUpLogging({clock_, dailyLogFiles(clock_), "app.orvane.Kelpa", "Kelpa", home});
    }
    void setTime(const CivilTime& civil) { clock_.shown = *clock_.date(civil); }
    void write(const fs::path& path, const std::string& text) const {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    static std::string read(const fs::path& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    static std::string standardOutputOf(const std::function<void()>& work) {
        testing::internal::CaptureStdout();
        work();
        return testing::internal::GetCapturedStdout();
    }

    const fs::path root_ = fs::path(testing::TempDir()) / ("kelpa-log-" + std::to_string(::getpid()));
    const fs::path folder_ = root_ / "Library/Caches/Logs";
    const fs::path today_ = folder_ / "app.orvane.Kelpa.20261121.log";
    TestClock clock_;
    const std::string banner_ = "2026-11-21T10:15:30+0100 info app.orvane.Kelpa : "
                                "~~~~~~~~~~~~~~~~~~~~~~~~hello Kelpa~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n";
};

TEST_F(LoggerTest, WritesTheDaysFileAndStandardOutputAlike) {
    write(today_, "before\n");
    const auto output = standardOutputOf([] {
        logger().debug("hidden");
        logger().info("shown");
    });
    EXPECT_EQ(output, banner_ + "2026-11-21T10:15:30+0100 info app.orvane.Kelpa : shown\n");
    EXPECT_EQ(read(today_), "before\n" + output);
    EXPECT_EQ(logfilePath(), today_);
}

TEST_F(LoggerTest, TheFileHasALineBeforeStandardOutputHasIt) {
    clock_.step = 60;
    const auto output = standardOutputOf([] { logger().info("shown"); });
    // Each handler reads the clock for itself; the name of the file took the first minute.
    EXPECT_EQ(read(today_).substr(0, 16) + " " + output.substr(0, 16), "2026-11-21T10:16 2026-11-21T10:17");
}

TEST_F(LoggerTest, OfTheProgramsOldFilesNoneSurvivesAStart) {
    const std::vector<std::string> old = {"app.orvane.Kelpa.20261120.log",
                                          "below/app.orvane.Kelpa.20251121.log",
                                          "app.orvane.Kelpa-view.20261120.log"};
    const std::vector<std::string> kept = {
        "other.20261120.log", "of.app.orvane.Kelpa.20261120.log", "app.orvane.Kelpa.20261120.txt",
        "app.orvane.Kelpa.20261120.log.old", "app.orvane.Kelpa.20261121.copy.log"};
    for (const auto& files : {old, kept})
        for (const std::string& file : files)
            write(folder_ / file, "");
    standardOutputOf([] { (void)logger(); });
    for (const std::string& file : old)
        EXPECT_FALSE(fs::exists(folder_ / file)) << file;
    for (const std::string& file : kept)
        EXPECT_TRUE(fs::exists(folder_ / file)) << file;
    EXPECT_TRUE(fs::exists(today_));
}

TEST_F(LoggerTest, NameAndStampsFollowTheUsersWeeksAndTimeZoneAndTheNameStaysBeyondMidnight) {
    desk::VirtualClock::setZone("America/St_Johns");
    clock_.rule = WeekRule{0, 1};
    setTime({2026, 12, 27, 23, 59, 59}); // the Sunday of New Year's week where weeks begin on Sundays
    standardOutputOf([] {
        (void)logger();
        desk::VirtualClock::setZone("Asia/Kolkata");
        logger().info("far east");
    });
    const auto text = read(folder_ / "app.orvane.Kelpa.20271227.log");
    EXPECT_TRUE(text.starts_with("2026-12-27T23:59:59-0330 info ")) << text;
    EXPECT_TRUE(text.ends_with("\n2026-12-28T08:59:59+0530 info app.orvane.Kelpa : far east\n")) << text;
}

fs::perms modeOf(const fs::path& path) {
    return fs::status(path).permissions();
}

TEST_F(LoggerTest, IsForItsUserAloneWhateverTheUmask) {
    fs::create_directories(root_);
    const mode_t before = ::umask(0);
    standardOutputOf([] { (void)logger(); });
    ::umask(before);
    for (const fs::path& made : {folder_, folder_.parent_path(), folder_.parent_path().parent_path()})
        EXPECT_EQ(modeOf(made), fs::perms::owner_all) << made;
    EXPECT_EQ(modeOf(today_), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(LoggerTest, NarrowsWhatWasOpenToOthersButNothingBehindALink) {
    write(root_ / "elsewhere.log", "");
    fs::permissions(root_ / "elsewhere.log", fs::perms(0644));
    fs::create_directories(folder_);
    fs::permissions(folder_, fs::perms(0755));
    fs::create_symlink(root_ / "elsewhere.log", today_);
    standardOutputOf([] { (void)logger(); });
    EXPECT_EQ(modeOf(folder_), fs::perms::owner_all);
    EXPECT_EQ(read(root_ / "elsewhere.log"), banner_);
    EXPECT_EQ(modeOf(root_ / "elsewhere.log"), fs::perms(0644));
    write(root_ / "old.log", "");
    fs::permissions(root_ / "old.log", fs::perms(0644));
    const FileHandlerOutputStream again(root_ / "old.log");
    EXPECT_EQ(modeOf(root_ / "old.log"), fs::perms(0600));
}

TEST_F(LoggerTest, AFileThatCannotBeOneIsRefusedAndKeepsNobodyWaiting) {
    fs::create_directories(root_ / "folder.log");
    ASSERT_EQ(::mkfifo((root_ / "pipe.log").c_str(), 0600), 0);
    ::alarm(10); // or it would wait for a reader for ever
    for (const char* name : {"folder.log", "pipe.log"})
        EXPECT_THROW(FileHandlerOutputStream(root_ / name), std::system_error) << name;
    ::alarm(0);
    EXPECT_THROW(FileHandlerOutputStream(root_ / "no/such/folder/x.log"),
                 FileHandlerOutputStream::CouldNotCreateFile);
}

TEST_F(LoggerTest, GoesOnWithoutAFileWhereTheFolderCannotBeMade) {
    write(root_ / "Library", "a file where the folder should be");
    const auto output = standardOutputOf([] { logger().info("still here"); });
    EXPECT_TRUE(output.starts_with("create logger error: ")) << output;
    EXPECT_TRUE(output.ends_with(banner_ + "2026-11-21T10:15:30+0100 info app.orvane.Kelpa : still here\n"))
        << output;
    EXPECT_EQ(logfilePath(), std::nullopt);
}

TEST_F(LoggerTest, WithoutAHomeThereIsNeitherFileNorBanner) {
    setUp(std::nullopt);
    EXPECT_EQ(standardOutputOf([] { logger().info("alone"); }),
              "2026-11-21T10:15:30+0100 info app.orvane.Kelpa : alone\n");
}

TEST_F(LoggerTest, MetadataOfTheCallWinsOverTheHandlers) {
    const fs::path file = root_ / "one.log";
    fs::create_directories(root_);
    auto log = FileLogging::logger("label", file, clock_);
    log.handler().setMetadata({{"a", "1"}});
    log.info("m");
    const LogMetadata ofCall = {{"a", "2"}, {"b", "3"}};
    log.log(LogLevel::Critical, "m", {}, &ofCall);
    log.handler().setMetadata("a", std::nullopt);
    log.info("m");
    const std::string stamp = "2026-11-21T10:15:30+0100 ";
    EXPECT_EQ(read(file), stamp + "info label : a=1 m\n" + stamp + "critical label : a=2 b=3 m\n" + stamp +
                              "info label : m\n");
}

TEST_F(LoggerTest, AMultiplexForwardsInOrderToEachByItsOwnLevel) {
    fs::create_directories(root_);
    const auto stream = std::make_shared<FileHandlerOutputStream>(root_ / "both.log");
    std::vector<std::unique_ptr<LogHandler>> handlers;
    for (const char* label : {"first", "second"})
        handlers.push_back(std::make_unique<LineLogHandler>(label, stream, clock_));
    handlers[0]->setLogLevel(LogLevel::Error);
    handlers[1]->setMetadata("k", "v");
    auto both = std::make_unique<MultiplexLogHandler>(std::move(handlers));
    EXPECT_EQ(both->logLevel(), LogLevel::Info);
    EXPECT_EQ(both->metadata("k"), "v");
    Logger log("both", std::move(both));
    log.warning("w");
    log.error("e");
    const std::string stamp = "2026-11-21T10:15:30+0100 ";
    EXPECT_EQ(read(root_ / "both.log"), stamp + "warning second : k=v w\n" + stamp + "error first : e\n" +
                                            stamp + "error second : k=v e\n");
}

TEST_F(LoggerTest, AMultiplexSetsAllAndAnswersForTheFirst) {
    std::vector<std::unique_ptr<LogHandler>> handlers;
    for (const char* label : {"first", "second"})
        handlers.push_back(std::make_unique<StreamLogHandler>(label, clock_));
    LogHandler& second = *handlers[1];
    MultiplexLogHandler both(std::move(handlers));
    both.setLogLevel(LogLevel::Trace);
    EXPECT_EQ(second.logLevel(), LogLevel::Trace);
    both.setMetadata({{"a", "1"}});
    second.setMetadata("a", "2");
    both.setMetadata("b", "3");
    EXPECT_EQ(second.metadata(), (LogMetadata{{"a", "2"}, {"b", "3"}}));
    EXPECT_EQ(both.metadata(), (LogMetadata{{"a", "1"}, {"b", "3"}}));
    EXPECT_EQ(both.metadata("a"), "1");
    EXPECT_EQ(both.metadata("c"), std::nullopt);
    both.setMetadata({});
    EXPECT_EQ(second.metadata(), LogMetadata{});
    EXPECT_DEATH(MultiplexLogHandler({}), "at least one handler");
}

TEST_F(LoggerTest, LevelsAreWrittenByTheirNamesLowestFirst) {
    std::string names;
    for (auto level = LogLevel::Trace; level <= LogLevel::Critical;
         level = static_cast<LogLevel>(static_cast<int>(level) + 1))
        names.append(name(level)).append(" ");
    EXPECT_EQ(names, "trace debug info notice warning error critical ");
}

TEST_F(LoggerTest, TextThatTheFileCannotHoldIsSkipped) {
    fs::create_directories(root_);
    FileHandlerOutputStream stream(root_ / "ascii.log", TextEncoding::Ascii);
    stream.write("水\n");
    stream.write("water\n");
    EXPECT_EQ(read(root_ / "ascii.log"), "water\n");
}

TEST_F(LoggerTest, AFullDiskIsNoReasonToStop) {
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no full device here";
    FileHandlerOutputStream stream("/dev/full");
    stream.write("nowhere to go\n");
}

TEST_F(LoggerTest, TheSystemIsSetUpOnlyOnce) {
    LoggingSystem::bootstrap([](const std::string&) { return nullptr; });
    EXPECT_DEATH(LoggingSystem::bootstrap([](const std::string&) { return nullptr; }), "only be set up once");
}

} // namespace
} // namespace kelpa
