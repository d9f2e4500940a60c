#include "Support.h"
#include "platform/linux/Folders.h"
#include "platform/linux/GettextTranslations.h"
#include "platform/linux/LinuxFonts.h"
#include "platform/linux/LinuxSystemInfo.h"
#include "platform/linux/Memory.h"
#include "platform/posix/AbortOnFatalErrors.h"
#include "platform/posix/Random.h"

#include <array>
#include <clocale>
#include <fstream>
#include <gtest/gtest.h>
#include <libintl.h>
#include <malloc.h>
#include <map>
#include <memory>
#include <set>
#include <sys/utsname.h>

namespace kelpa::test {
namespace {

std::string numbers(std::string_view text) {
    const auto version = leadingVersion(text);
    if (!version)
        return "none";
    return std::to_string(version->major) + "." + std::to_string(version->minor) + "." +
           std::to_string(version->patch);
}

long residentPages() {
    long all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident;
}

/// As a window leaves it: much that was needed for a moment, and here and there something that stays.
TEST(Memory, goesBackToTheSystemFromBetweenWhatIsStillUsed) {
    if (mallinfo2().arena == 0)
        GTEST_SKIP() << "the heap is not the C library's";
    constexpr int blocks = 8192, blockBytes = 1024, oneStaysOf = 64;
    std::vector<std::unique_ptr<std::string>> all;
    for (int i = 0; i < blocks; ++i)
        all.push_back(std::make_unique<std::string>(blockBytes, 'x'));
    for (int i = 0; i < blocks; ++i)
        if (i % oneStaysOf != 0)
            all[i].reset();
    const long before = residentPages();
    releaseMemory();
    const long freedPages = long{blocks} * blockBytes / getpagesize();
    EXPECT_LT(residentPages(), before - freedPages / 2);
}

TEST(LinuxSystemInfo, readsVersionsOfEveryShape) {
    EXPECT_EQ(numbers("12"), "12.0.0");
    EXPECT_EQ(numbers("22.04"), "22.4.0");
    EXPECT_EQ(numbers("6.1.0-18-amd64"), "6.1.0");
    EXPECT_EQ(numbers("15.5.1.2"), "15.5.1");
    EXPECT_EQ(numbers("7-rc1"), "7.0.0");
    EXPECT_EQ(numbers("3."), "3.0.0");
    EXPECT_EQ(numbers("3.-4"), "3.0.0");
    for (const char* none : {"", "rolling", "-5", "99999999999"})
        EXPECT_EQ(numbers(none), "none") << none;
}

TEST(LinuxSystemInfo, findsTheVersionAmongTheLines) {
    EXPECT_EQ(versionId(std::istringstream("NAME=x\nVERSION_ID=\"12\"\nID=debian\n")), "12");
    EXPECT_EQ(versionId(std::istringstream("VERSION_ID='39'")), "39");
    EXPECT_EQ(versionId(std::istringstream("VERSION_ID=3.18.4\n")), "3.18.4");
    EXPECT_EQ(versionId(std::istringstream("NAME=x\nOLD_VERSION_ID=1\n")), std::nullopt);
    EXPECT_EQ(versionId(std::istringstream("")), std::nullopt);
}

TEST(LinuxSystemInfo, saysWhatProgramAndMachineAre) {
    utsname names{};
    ASSERT_EQ(uname(&names), 0);
    const SystemInfo info = linuxSystemInfo();
    EXPECT_EQ(info.machine, names.machine);
    EXPECT_GT(info.osVersion.major, 0);
    EXPECT_EQ(info.bundleIdentifier, "app.orvane.Kelpa");
    EXPECT_EQ(std::get<std::string>(info.bundleInfo.at("CFBundleDisplayName")), "Kelpa");
    for (const char* key : {"CFBundleShortVersionString", "CFBundleVersion"})
        EXPECT_FALSE(std::get<std::string>(info.bundleInfo.at(key)).empty());
}

TEST(Folders, passOverRelativePaths) {
    setenv("HOME", "/home/me", 1);
    setenv("XDG_CONFIG_HOME", "/elsewhere", 1);
    setenv("XDG_STATE_HOME", "not/absolute", 1);
    EXPECT_EQ(configHome(), "/elsewhere");
    EXPECT_EQ(stateHome(), "/home/me/.local/state");
    EXPECT_EQ(linuxSystemInfo().homeDirectory, "/home/me/.local/state/app.orvane.Kelpa");
    setenv("XDG_CONFIG_HOME", "", 1);
    EXPECT_EQ(configHome(), "/home/me/.config");
    setenv("HOME", "", 1);
    EXPECT_EQ(configHome(), std::nullopt);
    unsetenv("HOME");
    EXPECT_EQ(linuxSystemInfo().homeDirectory, std::nullopt);
}

TEST(Folders, findTheDataOfABuildTreeAndOfAnInstallation) {
    const TempFolder folder;
    std::filesystem::create_directories(folder.file("build/share/kelpa"));
    EXPECT_EQ(dataFoldersOf(folder.file("build/kelpa")).data, folder.file("build/share/kelpa"));
    EXPECT_EQ(dataFoldersOf("/usr/bin/kelpa").data, "/usr/share/kelpa");
    EXPECT_EQ(dataFoldersOf("/usr/bin/kelpa").locale, "/usr/share/locale");
}

TEST(Folders, findAProgramAsAShellDoes) {
    const TempFolder folder;
    for (const char* name : {"text/tool", "folder/tool/inside", "program/tool"}) {
        std::filesystem::create_directories(std::filesystem::path(folder.file(name)).parent_path());
        test::writeFile(folder.file(name), "");
    }
    std::filesystem::permissions(folder.file("program/tool"), std::filesystem::perms::owner_all);
    const std::string path = std::getenv("PATH");
    setenv("PATH", (folder.file("text") + ":" + folder.file("folder") + ":" + folder.file("program")).c_str(),
           1);
    EXPECT_EQ(programOnPath("tool"), folder.file("program/tool"));
    EXPECT_EQ(programOnPath("sh"), "");
    EXPECT_EQ(programOnPath("/no/such/tool"), "/no/such/tool");
    unsetenv("PATH");
    EXPECT_NE(programOnPath("sh"), "") << "there are usual places";
    setenv("PATH", path.c_str(), 1);
}

/// A program that was started from within another one's image inherits what that image was told.
TEST(Folders, takeTheImageForTheProgramOnlyWhenItRunsFromThere) {
    const std::string own = std::filesystem::read_symlink("/proc/self/exe");
    const TempFolder folder;
    setenv("APPIMAGE", "/home/me/Some.AppImage", 1);
    unsetenv("APPDIR");
    EXPECT_EQ(programPath(), own);
    setenv("APPDIR", folder.path().c_str(), 1);
    EXPECT_EQ(programPath(), own);
    std::filesystem::create_directory_symlink(std::filesystem::path(own).parent_path(), folder.file("mount"));
    setenv("APPDIR", folder.file("mount").c_str(), 1);
    EXPECT_EQ(programPath(), "/home/me/Some.AppImage");
    setenv("APPDIR", (own + "/").c_str(), 1);
    EXPECT_EQ(programPath(), own);
}

constexpr std::array messageVariables{"LC_ALL", "LC_MESSAGES", "LC_CTYPE", "LC_TIME", "LANG", "LANGUAGE"};

struct TranslationsTest : testing::Test {
    std::string folder = KELPA_BINARY_DIR "/share/locale";
    TranslationsTest() {
        for (const char* name : messageVariables)
            unsetenv(name);
    }
};

TEST_F(TranslationsTest, speakALanguageWhoseLocaleTheMachineLacks) {
    setenv("LOCPATH", "/nonexistent", 1); // nothing is generated but what the C library has built in
    setenv("LANG", "zh_CN.UTF-8", 1);
    setenv("LC_NUMERIC", "de_DE.UTF-8", 1);
    const GettextTranslations translations(folder);
    EXPECT_TRUE(translations.usable());
    EXPECT_EQ(translations.lookUp("Quit"), "退出");
    EXPECT_EQ(translations.lookUp("no such text"), "no such text");
    EXPECT_EQ(translations.lookUp(""), "");
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(TranslationsTest, speakEnglishWhereTheUsersLanguageIsMissing) {
    for (const char* language : {"xx_XX.UTF-8", "C.UTF-8"}) {
        setenv("LANG", language, 1);
        unsetenv("LANGUAGE");
        EXPECT_EQ(GettextTranslations(folder).lookUp("water.select.amount"), "ml") << language;
    }
}

struct Choice {
    std::map<std::string, std::string> environment;
    const char* quit;
};

const std::vector<Choice> choices{
    {{{"LANG", "de_AT.UTF-8"}}, "Beenden"},
    {{{"LANG", "ja_JP.UTF-8"}}, "終了"},
    {{{"LANG", "en_GB.UTF-8"}}, "Quit"},
    {{{"LANGUAGE", "en"}, {"LANG", "zh_CN.UTF-8"}}, "Quit"},
    {{{"LANGUAGE", "fr:de"}, {"LANG", "en_US.UTF-8"}}, "Quitter"},
    {{{"LANGUAGE", "xx:de:fr"}, {"LANG", "en_US.UTF-8"}}, "Beenden"},
    {{{"LANGUAGE", "xx:yy"}, {"LANG", "de_DE.UTF-8"}}, "Quit"},
    {{{"LANGUAGE", "ja"}, {"LANG", "C.UTF-8"}}, "終了"},
    {{{"LANGUAGE", ""}, {"LANG", "de_DE.UTF-8"}}, "Beenden"},
    {{{"LC_MESSAGES", "es_ES.UTF-8"}, {"LANG", "de_DE.UTF-8"}}, "Salir"},
    {{{"LC_MESSAGES", "C"}, {"LANGUAGE", "fr"}, {"LANG", "de_DE.UTF-8"}}, "Quit"},
    {{{"LC_ALL", "fr_FR.UTF-8"}, {"LC_MESSAGES", "es_ES.UTF-8"}, {"LANG", "de_DE.UTF-8"}}, "Quitter"},
    {{{"LC_ALL", "POSIX"}, {"LANGUAGE", "fr"}}, "Quit"},
    {{{"LC_TIME", "fr_FR.UTF-8"}, {"LANG", "de_DE.UTF-8"}}, "Beenden"},
};

/// What each of the choices gives, on a machine with the locales that LOCPATH shows.
void expectChoices(const std::string& folder) {
    for (const auto& [environment, quit] : choices) {
        std::string told;
        for (const char* name : messageVariables)
            unsetenv(name);
        for (const auto& [name, value] : environment) {
            setenv(name.c_str(), value.c_str(), 1);
            told += name + "=" + value + " ";
        }
        textdomain("kelpa"); // makes the C library forget what it found before
        const GettextTranslations translations(folder);
        EXPECT_EQ(translations.lookUp("Quit"), quit) << told;
        EXPECT_TRUE(translations.usable()) << told;
    }
}

TEST_F(TranslationsTest, followTheEnvironmentOnAMachineWithoutLocales) {
    setenv("LOCPATH", "/nonexistent", 1);
    expectChoices(folder);
}

TEST_F(TranslationsTest, followTheEnvironmentOnAMachineWithLocales) {
    const TempFolder locales;
    if (!test::useLocaleFolder(locales, "de_DE"))
        GTEST_SKIP() << "no sources of locales on this machine";
    expectChoices(folder);
}

TEST_F(TranslationsTest, areUsableWithoutATable) {
    setenv("LANG", "xx_XX.UTF-8", 1);
    const GettextTranslations translations("/nonexistent");
    EXPECT_TRUE(translations.usable());
    EXPECT_EQ(translations.lookUp("Quit"), "Quit");
}

TEST(LinuxFonts, takeTheProgramsFontAndRefuseDamagedOnes) {
    const auto fonts = makeLinuxFonts(KELPA_BINARY_DIR "/share/kelpa");
    const auto font = fonts->fontAsset("iconfont");
    ASSERT_TRUE(font);
    EXPECT_EQ(fonts->registerFont(*font), std::nullopt);
    EXPECT_EQ(fonts->fontAsset("missing"), std::nullopt);
    constexpr std::size_t padding = 3; // the last table is filled up to a multiple of four
    for (std::size_t length = 0; length + padding < font->size(); ++length) {
        const std::vector<unsigned char> cut(font->begin(),
                                             font->begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(fonts->registerFont(cut), std::nullopt) << length;
    }
    const TempFolder folder;
    test::writeFile(folder.file("iconfont.ttf"), "no font");
    EXPECT_EQ(makeLinuxFonts(folder.path())->fontAsset("iconfont"), std::nullopt);
}

TEST(SystemRandom, reachesEveryNumberBelow) {
    const RandomBelow below = systemRandom();
    std::set<std::size_t> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(below(7));
    EXPECT_EQ(seen, (std::set<std::size_t>{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(below(1), 0u);
}

TEST(AbortOnFatalErrors, sayWhatIsWrongAndAbort) {
    FatalErrorHandler end;
    end = abortOnFatalErrors([&end](const std::string& message) {
        std::cerr << "logged: " << message << '\n';
        end("while logging"); // comes back without being logged again
    });
    EXPECT_EXIT(end("the set is empty"), testing::KilledBySignal(SIGABRT),
                "kelpa: the set is empty\nlogged: the set is empty\nkelpa: while logging");
}

} // namespace
} // namespace kelpa::test
