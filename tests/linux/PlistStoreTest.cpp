#include "StoreFixture.h"
#include "platform/linux/EventLoop.h"
#include "platform/linux/store/FileAccess.h"

#include <clocale>
#include <cmath>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kelpa::test {
namespace {

using Texts = std::vector<std::string>;

TEST_F(PlistStoreTest, keepsTheTypesOfValues) {
    store.set("yes", true);
    store.set("low", std::numeric_limits<std::int64_t>::min());
    store.set("high", std::numeric_limits<std::int64_t>::max());
    store.set("whole", 20.0);
    store.set("text", "堂堂 <&>\"'\n]]>\t");
    store.set("none", "");
    store.set("texts", Texts{"a", "", "ü"});
    store.set("empty", Texts{});

    const auto again = makePlistStore(path, report, loop);
    EXPECT_EQ(again->get<bool>("yes"), true);
    EXPECT_EQ(again->get<std::int64_t>("low"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(again->get<std::int64_t>("high"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(again->get<double>("whole"), 20.0);
    EXPECT_EQ(again->get<std::int64_t>("whole"), std::nullopt);
    EXPECT_EQ(again->get<std::string>("text"), "堂堂 <&>\"'\n]]>\t");
    EXPECT_EQ(again->get<std::string>("none"), "");
    EXPECT_EQ(again->get<Texts>("texts"), (Texts{"a", "", "ü"}));
    EXPECT_EQ(again->get<Texts>("empty"), Texts{});
    EXPECT_EQ(report.all(), "");
}

TEST_F(PlistStoreTest, writesAtOnceAsPrivateXml) {
    store.set("key", true);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_TRUE(contentOf(path).starts_with("<?xml"));
    EXPECT_NE(contentOf(path).find("<true/>"), std::string::npos);
}

TEST_F(PlistStoreTest, replacesWhatXmlCannotHold) {
    store.set("text", std::string("a\0b\x1b", 4));
    EXPECT_EQ(makePlistStore(path, report, loop)->get<std::string>("text"), "a\xEF\xBF\xBD"
                                                                            "b\xEF\xBF\xBD");
}

TEST_F(PlistStoreTest, realsAreTheSameUnderADecimalComma) {
    const TempFolder locales;
    if (!useLocaleFolder(locales, "de_DE") || std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "this machine has no sources of locales";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    for (const double value : {1753788243.9876542, 0.1, 1e300, -5e-324}) {
        store.set("real", value);
        EXPECT_EQ(makePlistStore(path, report, loop)->get<double>("real"), value);
    }
    EXPECT_NE(contentOf(path).find("e-324</real>"), std::string::npos);
}

TEST_F(PlistStoreTest, aValueOfAnotherKindIsAbsent) {
    writeDict(
        "<key>i</key><integer>5</integer><key>b</key><true/><key>r</key><real>1.5</real>"
        "<key>s</key><string>5</string><key>a</key><array><string>x</string><integer>1</integer></array>"
        "<key>d</key><dict/><key>t</key><date>2024-01-02T03:04:05Z</date>");
    const auto kinds = [this](const char* key) {
        return std::string(store.get<bool>(key) ? "b" : "") + (store.get<std::int64_t>(key) ? "i" : "") +
               (store.get<double>(key) ? "r" : "") + (store.get<std::string>(key) ? "s" : "") +
               (store.get<Texts>(key) ? "a" : "");
    };
    for (const char* own : {"i", "b", "r", "s"})
        EXPECT_EQ(kinds(own), own);
    for (const char* none : {"a", "d", "t", "missing"})
        EXPECT_EQ(kinds(none), "") << none;
}

TEST_F(PlistStoreTest, aFalseNumberIsNoNumber) {
    writeDict(
        "<!-- <integer>x</integer> --><key>a</key><integer>abc</integer><key>b</key><integer/>"
        "<key>c</key><real>1,5</real><key>d</key><integer> 12 </integer><key>e</key><real>1.5e3</real>"
        "<key>f</key><integer>-0x10</integer><key>g</key><integer>18446744073709551615</integer>"
        "<key>h</key><string><![CDATA[<integer>abc</integer>]]></string><key>i</key><real>+infinity</real>");
    for (const char* none : {"a", "b", "g"})
        EXPECT_EQ(store.get<std::int64_t>(none), std::nullopt) << none;
    EXPECT_EQ(store.get<double>("c"), std::nullopt);
    EXPECT_EQ(store.get<std::int64_t>("d"), 12);
    EXPECT_EQ(store.get<double>("e"), 1500);
    EXPECT_EQ(store.get<std::string>("h"), "<integer>abc</integer>");
    EXPECT_EQ(store.get<double>("i"), INFINITY);
    store.set("other", true);
    EXPECT_EQ(store.get<std::int64_t>("a"), std::nullopt) << "nor does it become one when it is written back";
    EXPECT_EQ(store.get<std::string>("a"), "abc");
}

TEST_F(PlistStoreTest, otherProgramsKeysAndKindsStay) {
    writeDict("<key>theirs</key><dict><key>x</key><data>AAEC</data></dict>"
              "<key>when</key><date>2024-01-02T03:04:05Z</date><key>big</key><integer>18446744073709551615</"
              "integer>"
              "<key>below</key><integer>-7</integer>");
    store.set("ours", true);
    const std::string xml = contentOf(path);
    for (const char* part : {"AAEC", "2024-01-02T03:04:05Z", "<integer>18446744073709551615</integer>",
                             "<integer>-7</integer>", "ours"})
        EXPECT_NE(xml.find(part), std::string::npos) << part;
}

TEST_F(PlistStoreTest, aChangeByAnotherProgramIsSeenAtTheNextRead) {
    store.set("key", 1);
    EXPECT_EQ(store.get<std::int64_t>("key"), 1);
    for (int value = 2; value < 10; ++value) {
        // In place, of the same size and with the same time stamp, which a file system may be too coarse to
        // change.
        const auto stamp = std::filesystem::last_write_time(path);
        writeDict("<key>key</key><integer>" + std::to_string(value) + "</integer>");
        if (value > 2)
            std::filesystem::last_write_time(path, stamp);
        EXPECT_EQ(store.get<std::int64_t>("key"), value);
    }
    std::filesystem::remove(path);
    EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
    EXPECT_EQ(report.all(), "");
}

TEST_F(PlistStoreTest, processesDoNotLoseEachOthersKeys) {
    constexpr int writers = 3, keys = 40;
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        children.push_back(fork());
        if (children.back() != 0)
            continue;
        for (int i = 0; i < keys; ++i) {
            store.set(std::to_string(writer) + "-" + std::to_string(i), i);
            usleep(1000);
        }
        _exit(report.all().empty() ? 0 : 1);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    for (int writer = 0; writer < writers; ++writer)
        for (int i = 0; i < keys; ++i)
            EXPECT_EQ(store.get<std::int64_t>(std::to_string(writer) + "-" + std::to_string(i)), i);
}

TEST_F(PlistStoreTest, aWriterThatIsKilledAtAnyPointLeavesAWholeFile) {
    store.set("first", 0);
    store.set("second", 0);
    std::int64_t reached = 0;
    for (int round = 0; round < 60; ++round) {
        store.set("second", reached);
        const pid_t child = fork();
        if (child == 0)
            for (std::int64_t i = reached + 1;; ++i) {
                store.set("first", i);
                store.set("ballast", std::string(static_cast<std::size_t>(i * 997 % 20000), 'x'));
                store.set("second", i);
            }
        std::this_thread::sleep_for(std::chrono::microseconds(1000 + round * 331));
        kill(child, SIGKILL);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const auto after = makePlistStore(path, report, loop);
        const auto first = after->get<std::int64_t>("first"), second = after->get<std::int64_t>("second");
        ASSERT_TRUE(first && second) << round;
        ASSERT_TRUE(*first == *second || *first == *second + 1) << *first << " " << *second;
        ASSERT_GE(*first, reached);
        reached = *first;
    }
    EXPECT_GT(reached, 10) << "the killer was too fast for the test to mean anything";
    EXPECT_EQ(report.all(), "");
    store.set("end", true);
    EXPECT_EQ(names(), (Texts{"settings.plist", "settings.plist.lock"})) << "nothing piles up";
}

TEST_F(PlistStoreTest, aFullDiskKeepsTheValueForTheNextWrite) {
    store.set("old", 1);
    const std::string before = contentOf(path);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit small = limit;
    small.rlim_cur = 100;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    store.set("new", 2);
    store.set("old", 3);
    EXPECT_EQ(store.get<std::int64_t>("new"), 2);
    EXPECT_EQ(store.get<std::int64_t>("old"), 3);
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(report.errors.size(), 1u) << "said once, not with every write";

    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    store.set("third", true);
    const auto again = makePlistStore(path, report, loop);
    EXPECT_EQ(again->get<std::int64_t>("new"), 2);
    EXPECT_EQ(again->get<std::int64_t>("old"), 3);
    EXPECT_EQ(again->get<bool>("third"), true);
    EXPECT_EQ(report.errors.size(), 1u);
}

TEST_F(PlistStoreTest, aReadOnlyFolderKeepsTheValueForTheRun) {
    writeDict("<key>key</key><integer>1</integer>");
    std::filesystem::permissions(path, std::filesystem::perms::others_read,
                                 std::filesystem::perm_options::add);
    beNobody(0555);
    store.set("key", 2);
    store.set("key", 3);
    EXPECT_EQ(store.get<std::int64_t>("key"), 3);
    EXPECT_EQ(report.errors.size(), 1u);
    EXPECT_EQ(makePlistStore(path, report, loop)->get<std::int64_t>("key"), 1);
}

TEST_F(PlistStoreTest, aDamagedFileInAReadOnlyFolderIsToldOfOnce) {
    writeFile(path, "garbage");
    usleep(static_cast<useconds_t>(rest * 1.2e6));
    beNobody(0555);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
    EXPECT_EQ(report.errors.size(), 1u);
    EXPECT_EQ(contentOf(path), "garbage");
}

TEST_F(PlistStoreTest, aFileThatCannotBeReadIsNotOverwritten) {
    writeDict("<key>key</key><integer>1</integer>");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const auto before = FileIdentity::of(path);
    beNobody(0777);
    EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
    store.set("other", 2);
    EXPECT_EQ(store.get<std::int64_t>("other"), 2);
    EXPECT_EQ(FileIdentity::of(path), before);
    EXPECT_EQ(report.errors.size(), 2u);
}

TEST_F(PlistStoreTest, whatIsNoFileIsLeftAlone) {
    std::filesystem::create_directory(path);
    EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
    store.set("key", 1);
    EXPECT_EQ(store.get<std::int64_t>("key"), 1);
    EXPECT_TRUE(std::filesystem::is_directory(path));
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(store.get<std::string>("key"), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(PlistStoreTest, missingFoldersAreMade) {
    const auto deep = makePlistStore(folder.file("a/b/settings.plist"), report, loop);
    EXPECT_EQ(deep->get<bool>("key"), std::nullopt);
    deep->set("key", true);
    EXPECT_EQ(makePlistStore(folder.file("a/b/settings.plist"), report, loop)->get<bool>("key"), true);
    EXPECT_EQ(std::filesystem::status(folder.file("a")).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(PlistStoreTest, withoutAPlaceTheValuesHoldForTheRun) {
    const auto homeless = makePlistStore("", report, loop);
    homeless->set("key", "value");
    EXPECT_EQ(homeless->get<std::string>("key"), "value");
    EXPECT_EQ(report.errors.size(), 1u);
}

TEST_F(PlistStoreTest, aSymbolicLinkStaysOne) {
    std::filesystem::create_directory(folder.file("real"));
    for (const char* target : {"real/there.plist", "real/dangling.plist"}) {
        std::filesystem::remove(path);
        std::filesystem::create_symlink(target, path);
        if (target == std::string("real/there.plist"))
            writeFile(folder.file(target), dict("<key>old</key><true/>"));
        store.set("key", 4);
        EXPECT_TRUE(std::filesystem::is_symlink(path));
        EXPECT_EQ(makePlistStore(folder.file(target), report, loop)->get<std::int64_t>("key"), 4);
        EXPECT_EQ(store.get<std::int64_t>("key"), 4);
    }
    EXPECT_EQ(makePlistStore(folder.file("real/there.plist"), report, loop)->get<bool>("old"), true);
    std::filesystem::remove(path);
    std::filesystem::create_symlink("settings.plist", path);
    store.set("key", 5);
    EXPECT_EQ(store.get<std::int64_t>("key"), 5);
    EXPECT_EQ(report.errors.size(), 2u) << "a link to itself can neither be read nor written";
}

TEST_F(PlistStoreTest, aLockThatIsHeldForLongDoesNotStopTheProgram) {
    const int other = open((path + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    const double start = secondsNow();
    store.set("key", 1);
    EXPECT_LT(secondsNow() - start, 5);
    EXPECT_EQ(store.get<std::int64_t>("key"), 1);
    EXPECT_FALSE(std::filesystem::exists(path));
    close(other);
    store.set("next", 2);
    EXPECT_EQ(makePlistStore(path, report, loop)->get<std::int64_t>("key"), 1);
}

TEST_F(PlistStoreTest, whatWasHeldIsTriedOnceMoreAtTheEnd) {
    std::filesystem::create_directory(path);
    {
        const auto ending = makePlistStore(path, report, loop);
        ending->set("key", 1);
        std::filesystem::remove(path);
    }
    EXPECT_EQ(store.get<std::int64_t>("key"), 1);
    EXPECT_EQ(report.errors.size(), 1u);
}

} // namespace
} // namespace kelpa::test
