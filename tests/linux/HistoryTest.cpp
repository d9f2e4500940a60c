#include "Support.h"
#include "history/HistoryEntry.h"
#include "platform/linux/control/HistoryCommand.h"
#include "platform/posix/HistoryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelpa::test {
namespace {

const std::string header(historyHeader);
const std::string line = "2026-11-23,09:00:00,work,,,1500,,,,,break";

struct Kept {
    std::optional<std::string> add(std::string_view text = line) {
        return folder.append("2026-11", historyHeader, text);
    }
    [[nodiscard]] std::int64_t workSeconds() {
        const auto date = historyDate("2026-11-23").value();
        return sumsOf(folder, date, date).days.front().workSeconds;
    }

    TempFolder temp;
    std::string path = temp.file("data/history");
    std::string file = path + "/2026-11.csv";
    HistoryFolder folder{path};
};

mode_t modeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

TEST(HistoryFolder, IsMadeForThisUserAlone) {
    Kept kept;
    EXPECT_TRUE(kept.folder.read("2026-11").bytes.empty());
    EXPECT_EQ(kept.folder.read("2026-11").problem, "");
    EXPECT_EQ(kept.add(), std::nullopt);
    EXPECT_EQ(contentOf(kept.file), header + "\n" + line + "\n");
    EXPECT_EQ(modeOf(kept.path), 0700U);
    EXPECT_EQ(modeOf(kept.file), 0600U);
    ::chmod(kept.file.c_str(), 0644);
    EXPECT_EQ(kept.add(), std::nullopt);
    EXPECT_EQ(modeOf(kept.file), 0600U) << "a spreadsheet saved it anew";
    HistoryFolder homeless{std::nullopt};
    EXPECT_NE(homeless.append("2026-11", historyHeader, line), std::nullopt);
    EXPECT_EQ(homeless.read("2026-11").problem, "");
}

TEST(HistoryFolder, KeepsWhatIsNotItsOwnAndEndsALineThatWasCutOff) {
    Kept kept;
    kept.add();
    const std::string foreign = contentOf(kept.file) + "my own note\n2026-11-23,09:30:00,work,,,15";
    writeFile(kept.file, foreign);
    EXPECT_EQ(kept.add(), std::nullopt);
    EXPECT_EQ(contentOf(kept.file), foreign + "\n" + line + "\n");
    EXPECT_EQ(kept.workSeconds(), 3000);
}

TEST(HistoryFolder, AFolderOrAPipeInPlaceOfAMonthIsAProblemAndNoWait) {
    Kept kept;
    kept.add();
    for (const auto& make : {+[](const char* path) { return ::mkdir(path, 0700); },
                             +[](const char* path) { return ::mkfifo(path, 0600); }}) {
        std::filesystem::remove_all(kept.file);
        ASSERT_EQ(make(kept.file.c_str()), 0);
        EXPECT_TRUE(kept.add().value_or("").starts_with(kept.file + ": "));
        const auto date = historyDate("2026-11-23").value();
        EXPECT_EQ(sumsOf(kept.folder, date, date).problems.size(), 1U);
    }
}

TEST(HistoryFolder, AFullDiskLosesNothingThatWasWritten) {
    Kept kept;
    kept.add();
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit room = {contentOf(kept.file).size() + 20, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &room), 0);
    EXPECT_NE(kept.add(), std::nullopt) << "a part of it is written";
    EXPECT_NE(kept.add(), std::nullopt) << "nothing is";
    const rlimit free = {RLIM_INFINITY, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &free), 0);
    EXPECT_EQ(kept.workSeconds(), 1500);
    EXPECT_EQ(kept.add(), std::nullopt);
    EXPECT_EQ(kept.workSeconds(), 3000);
}

TEST(HistoryFolder, TwoProgramsMayWriteAtOnce) {
    Kept kept;
    constexpr int each = 500;
    const auto writeAll = [&] {
        for (int written = 0; written < each; ++written)
            if (kept.add())
                return 1;
        return 0;
    };
    const pid_t other = ::fork();
    ASSERT_GE(other, 0);
    if (other == 0)
        ::_exit(writeAll());
    EXPECT_EQ(writeAll(), 0);
    int status = -1;
    ASSERT_EQ(::waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(kept.workSeconds(), 2LL * each * 1500);
}

TEST(HistoryFolder, ForgettingLeavesWhatSomebodyPutThere) {
    Kept kept;
    kept.add();
    writeFile(kept.path + "/chart.ods", "mine");
    writeFile(kept.path + "/2026-11.csv.bak", "mine");
    EXPECT_EQ(kept.folder.removeAll(), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(kept.file));
    EXPECT_EQ(contentOf(kept.path + "/chart.ods") + contentOf(kept.path + "/2026-11.csv.bak"), "minemine");
    std::filesystem::remove(kept.path + "/chart.ods");
    std::filesystem::remove(kept.path + "/2026-11.csv.bak");
    std::filesystem::create_directory(kept.file);
    EXPECT_TRUE(kept.folder.removeAll().value_or("").starts_with(kept.file));
    std::filesystem::remove(kept.file);
    EXPECT_EQ(kept.folder.removeAll(), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(kept.path));
    EXPECT_EQ(kept.folder.removeAll(), std::nullopt) << "nothing to forget";
    std::filesystem::create_directory_symlink(kept.path, kept.path);
    EXPECT_TRUE(kept.folder.removeAll().value_or("").starts_with(kept.path + ": "))
        << "nobody can tell what is there";
}

TEST(HistoryCommand, ReadsItsOptions) {
    const auto parse = [](const std::string& options) { return parseHistory(wordsOf("history " + options)); };
    EXPECT_EQ(parse("").command.days, 14);
    EXPECT_EQ(parse("--days 7 --csv").command.days, 7);
    EXPECT_EQ(parse("--days=7 --csv").command.form, HistoryCommand::Form::Csv);
    const auto span = parse("--from 2026-11-01 --to=2026-11-30 --json");
    EXPECT_EQ(span.error, "");
    EXPECT_EQ(dateText(*span.command.from) + dateText(*span.command.to), "2026-11-012026-11-30");
    for (const char* wrong :
         {"--days", "--days 0", "--days x", "--days=36601", "--from tomorrow", "--to 2026-11-30", "--week",
          "--from", "--from 2026-11-02 --to 2026-11-01", "now", "--days 3 --from 2026-11-02"})
        EXPECT_NE(parse(wrong).error, "") << wrong;
}

TEST(HistoryCommand, TellsTheDaysInThreeForms) {
    const auto first = historyDate("2026-11-21").value();
    const std::vector<HistorySum> days = {{}, {19500, 9, 2, 1250, 1500}, {}, {9750, 0, 1, 0, 0}};
    EXPECT_EQ(historyTable(first, days, true),
              "Day              Worked                        Breaks  Skipped           Water\n"
              "2026-11-22 Sun     5:25  ████████████████████       9        2    1250/1500 ml  ████████▎\n"
              "2026-11-23 Mon     0:00                             0        0\n"
              "2026-11-24 Tue     2:42  ██████████                 0        1\n"
              "Total              8:07                             9        3    1250/1500 ml  ████████▎\n");
    EXPECT_EQ(historyTable(first, {days.begin() + 1, days.begin() + 2}, false),
              "Day              Worked                        Breaks  Skipped           Water\n"
              "2026-11-21 Sat     5:25  ####################       9        2    1250/1500 ml  ########\n"
              "Total              5:25                             9        2    1250/1500 ml  ########\n");
    EXPECT_EQ(historyTable(first, {{}, {}}, true), "Nothing is recorded from 2026-11-21 to 2026-11-22.\n");
    EXPECT_EQ(historyCsv(first, {days.begin(), days.begin() + 2}),
              "date,worked_seconds,breaks_taken,breaks_skipped,water_ml,water_target_ml\n"
              "2026-11-21,0,0,0,0,0\n2026-11-22,19500,9,2,1250,1500\n");
    EXPECT_EQ(
        historyJson(first, {days.begin() + 1, days.begin() + 2}),
        "[{\"date\": \"2026-11-21\", \"worked_seconds\": 19500, \"breaks_taken\": 9, \"breaks_skipped\": "
        "2, \"water_ml\": 1250, \"water_target_ml\": 1500}]\n");
}

TEST(HistoryCommand, TellsOfTheDaysThatAreAskedFor) {
    const TempFolder temp;
    ASSERT_EQ(::setenv("XDG_DATA_HOME", temp.path().c_str(), 1), 0);
    HistoryFolder folder(temp.file("app.orvane.Kelpa/history"));
    ASSERT_EQ(folder.append("2026-11", historyHeader, line), std::nullopt);
    ::testing::internal::CaptureStdout();
    const std::vector<std::string> words = wordsOf("history --from 2026-11-23 --to 2026-11-23 --csv");
    EXPECT_EQ(runHistory(parseHistory(words).command), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "date,worked_seconds,breaks_taken,breaks_skipped,water_ml,water_target_ml\n"
              "2026-11-23,1500,0,0,0,0\n");
}

} // namespace
} // namespace kelpa::test
