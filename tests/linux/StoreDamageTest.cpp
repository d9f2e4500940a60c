// Files that are not what the store itself writes: half-written ones, other encodings, and what would do
// harm.
#include "StoreFixture.h"
#include "platform/linux/store/PlistDocument.h"

#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <thread>

namespace kelpa::test {
namespace {

using Texts = std::vector<std::string>;

constexpr double second = 1.0;

std::string key(int value) {
    return "<key>key</key><integer>" + std::to_string(value) + "</integer>";
}

struct StoreDamageTest : PlistStoreTest {
    /// What another program has written of a file so far.
    void writeHalf(int value) const {
        const std::string whole = dict(key(value));
        writeFile(path, whole.substr(0, whole.size() / 2));
    }
    [[nodiscard]] std::string aside(int number = 1) const {
        return path + ".damaged-" + std::to_string(number);
    }
};

TEST_F(StoreDamageTest, aDamagedFileIsSetAsideOnceItRests) {
    const Texts damaged = {"garbage",
                           "",
                           "<?xml version=\"1.0\"?><plist><dict><key>a</key>",
                           "bplist00\x01\x02",
                           "<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>",
                           std::string(100, '\0')};
    int number = 0;
    for (const std::string& bytes : damaged) {
        writeFile(path, bytes);
        EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
        EXPECT_EQ(contentOf(path), bytes) << "it may be half-written";
        EXPECT_TRUE(spinUntil(loop, [&] { return std::filesystem::exists(aside(number + 1)); }));
        EXPECT_EQ(contentOf(aside(++number)), bytes);
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_EQ(report.warnings.size(), static_cast<std::size_t>(number));
        EXPECT_NE(report.warnings.back().find(aside(number)), std::string::npos);
    }
    writeFile(path, "garbage again");
    store.set("key", 5);
    EXPECT_EQ(contentOf(path), "garbage again");
    EXPECT_EQ(store.get<std::int64_t>("key"), 5);
    EXPECT_TRUE(
        spinUntil(loop, [&] { return makePlistStore(path, report, loop)->get<std::int64_t>("key") == 5; }));
    EXPECT_EQ(contentOf(aside(7)), "garbage again");
    EXPECT_TRUE(report.errors.empty());
}

TEST_F(StoreDamageTest, whatRestedBeforeTheStartIsJudgedAtOnce) {
    writeFile(path, "garbage");
    usleep(static_cast<useconds_t>(rest * 1.2e6));
    EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
    EXPECT_TRUE(std::filesystem::exists(aside()));
}

TEST_F(StoreDamageTest, whileAnotherProgramWritesTheLastGoodValuesHold) {
    const auto patient = makePlistStore(path, report, loop, second);
    std::optional<std::int64_t> last;
    for (int value = 1; value <= 40; ++value) {
        writeHalf(value);
        ASSERT_EQ(patient->get<std::int64_t>("key"), last);
        spin(loop, 0.03);
        ASSERT_EQ(patient->get<std::int64_t>("key"), last);
        writeDict(key(value));
        ASSERT_EQ(patient->get<std::int64_t>("key"), value);
        last = value;
    }
    EXPECT_EQ(names(), Texts{"settings.plist"});
    EXPECT_EQ(report.all(), "");
}

TEST_F(StoreDamageTest, aWriterThatGoesOnIsWaitedForHoweverLongItTakes) {
    const std::string whole = dict(key(7));
    for (std::size_t written = 0; written < whole.size() / 2; written += whole.size() / 16) {
        writeFile(path, whole.substr(0, written));
        EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
        spin(loop, rest / 2);
    }
    writeFile(path, whole);
    EXPECT_EQ(store.get<std::int64_t>("key"), 7);
    EXPECT_EQ(report.all(), "");
}

TEST_F(StoreDamageTest, aWriteOfOursWaitsForTheJudgement) {
    writeHalf(1);
    const std::string half = contentOf(path);
    const double start = secondsNow();
    store.set("ours", true);
    EXPECT_LT(secondsNow() - start, rest / 2) << "the main thread did the waiting";
    EXPECT_EQ(store.get<bool>("ours"), true);
    EXPECT_EQ(contentOf(path), half);
    writeDict(key(1));
    EXPECT_TRUE(spinUntil(loop, [&] { return contentOf(path).find("ours") != std::string::npos; }));
    EXPECT_EQ(store.get<std::int64_t>("key"), 1);
    EXPECT_EQ(makePlistStore(path, report, loop)->get<bool>("ours"), true);
    EXPECT_EQ(report.all(), "");
}

TEST_F(StoreDamageTest, aWriteThatWaitsIsNotLostWhenTheProgramEnds) {
    writeHalf(1);
    {
        const auto ending = makePlistStore(path, report, loop, second);
        ending->set("ours", true);
        const auto finished = std::async(std::launch::async, [this] {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            writeDict(key(2));
        });
    }
    EXPECT_EQ(store.get<bool>("ours"), true);
    EXPECT_EQ(store.get<std::int64_t>("key"), 2);
    writeHalf(3);
    const std::string half = contentOf(path);
    const double start = secondsNow();
    makePlistStore(path, report, loop, second)->set("more", true);
    EXPECT_LT(secondsNow() - start, 1.5);
    EXPECT_EQ(store.get<bool>("more"), true);
    EXPECT_EQ(contentOf(aside()), half);
    EXPECT_TRUE(report.errors.empty());
}

TEST_F(StoreDamageTest, otherEncodingsAreNoDamage) {
    const auto wide = [](const std::string& text, bool littleFirst) {
        std::string bytes;
        for (const char c : text)
            bytes += littleFirst ? std::string{c, '\0'} : std::string{'\0', c};
        return bytes;
    };
    const std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist version=\"1.0\"><dict>" +
                            key(3) + "<key>text</key><string>";
    const std::string end = "</string></dict></plist>";
    // A character of the basic plane and one beyond, in either order of bytes.
    const std::string little = "\x02\x58\x3e\xd8\x64\xdd", big = "\x58\x02\xd8\x3e\xdd\x64";
    for (const std::string& bytes :
         {"\xEF\xBB\xBF" + xml + "堂🥤" + end, "\xFF\xFE" + wide(xml, true) + little + wide(end, true),
          "\xFE\xFF" + wide(xml, false) + big + wide(end, false), wide(xml, true) + little + wide(end, true),
          wide(xml, false) + big + wide(end, false)}) {
        writeFile(path, bytes);
        EXPECT_EQ(store.get<std::int64_t>("key"), 3);
        EXPECT_EQ(store.get<std::string>("text"), "堂🥤");
    }
    store.set("ours", true);
    EXPECT_TRUE(contentOf(path).starts_with("<?xml"));
    EXPECT_EQ(report.all(), "");
    EXPECT_FALSE(PlistDocument::parse("\xFF\xFE" + wide(xml, true) + little.substr(0, 4) + wide(end, true)))
        << "half a pair";
    EXPECT_FALSE(PlistDocument::parse("\xFF\xFE" + wide(xml, true) + wide(end, true) + "x"));
}

std::string times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/// Whether it is read as a list, which must not take long.
bool isRead(const std::string& bytes) {
    const double start = secondsNow();
    const bool read = PlistDocument::parse(bytes).has_value();
    EXPECT_LT(secondsNow() - start, 0.5);
    return read;
}

std::string nested(int levels, const std::string& between = "") {
    return "<plist version=\"1.0\"><dict><key>k</key>" + times(levels, "<array>" + between) +
           times(levels, "</array>") + "</dict></plist>";
}

TEST(PlistDepth, whatIsNestedBeyondReasonIsRefusedBeforeItOverflowsTheStack) {
    EXPECT_TRUE(isRead(nested(50)));
    for (const char* between :
         {"", "<!-- </array> -->", "<?x \"?>\" </array> ?>", "<!DOCTYPE x [ > </array> ]>",
          "<string x=\"> </array> \"/>", "<string><![CDATA[</array>]]></string>"}) {
        EXPECT_FALSE(isRead(nested(20'000, between))) << between;
        EXPECT_FALSE(isRead(nested(50'000, between))) << between;
    }
    EXPECT_FALSE(isRead("<plist version=\"1.0\"><dict>" + times(50'000, "<key>k</key><dict>")));
    EXPECT_TRUE(
        isRead("<!DOCTYPE plist PUBLIC \"-//A//DTD P>L 1.0//EN\" \"http://a\"><!-- <a><b> --><plist><dict>" +
               times(3000, "<key>k</key><array /><key>l</key><string><![CDATA[<array>]]></string>") +
               "</dict></plist>"));
}

/// A binary list of these objects, the first of which is its root.
std::string binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00", table;
    const auto twoBytes = [](std::size_t number) {
        return std::string{static_cast<char>(number >> 8U & 0xFFU), static_cast<char>(number & 0xFFU)};
    };
    for (const std::string& object : objects) {
        table += std::string{'\0', static_cast<char>(bytes.size() >> 16U)} + twoBytes(bytes.size() & 0xFFFFU);
        bytes += object;
    }
    const std::size_t start = bytes.size();
    const auto eight = [&](std::size_t number) {
        return std::string(5, '\0') + static_cast<char>(number >> 16U & 0xFFU) + twoBytes(number & 0xFFFFU);
    };
    return bytes + table + std::string(6, '\0') + "\x04\x02" + eight(objects.size()) + eight(0) +
           eight(start);
}

std::string reference(std::size_t to) {
    return {static_cast<char>(to >> 8U & 0xFFU), static_cast<char>(to & 0xFFU)};
}

TEST(PlistDepth, theSameHoldsForBinaryLists) {
    const auto chain = [](std::size_t levels, int branches) {
        std::vector<std::string> objects = {"\xD1" + reference(1) + reference(2), "Sabc"};
        for (std::size_t i = 2; i < levels; ++i)
            objects.push_back(static_cast<char>(0xA0 + branches) + times(branches, reference(i + 1)));
        objects.push_back("Send");
        return binary(objects);
    };
    EXPECT_TRUE(isRead(chain(40, 1)));
    EXPECT_FALSE(isRead(chain(50'000, 1)));
    EXPECT_FALSE(isRead(chain(40, 2))) << "the same object in two places, forty times over";
    EXPECT_FALSE(isRead(binary({"\xD1" + reference(1) + reference(0), "Sabc"}))) << "itself";
    EXPECT_FALSE(isRead(binary({"\xD1" + reference(1) + reference(7), "Sabc"}))) << "none";
    EXPECT_TRUE(isRead(binary(
        {"\xD2" + reference(1) + reference(2) + reference(3) + reference(3), "Sabc", "Sdef", "\x10*"})));
}

TEST_F(StoreDamageTest, aBinaryListIsReadAndAZeroByteInAKeyDoesNotEndTheProgram) {
    const auto with = [](const std::string& name) {
        return binary({"\xD1" + reference(1) + reference(2), name, "\x10*"});
    };
    writeFile(path, with({"c\0k\0\0\0y", 7}));
    EXPECT_EQ(store.get<std::int64_t>("key"), std::nullopt);
    store.set("key", 5);
    EXPECT_TRUE(
        spinUntil(loop, [&] { return makePlistStore(path, report, loop)->get<std::int64_t>("key") == 5; }));
    writeFile(path, with("Skey"));
    EXPECT_EQ(store.get<std::int64_t>("key"), 42);
}

} // namespace
} // namespace kelpa::test
