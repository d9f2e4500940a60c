#include "base/Text.h"

#include "base/FatalError.h"
#include "logging/FileLogging.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace kelpa {
namespace {

TEST(TimeString, GluesHoursOnAndNeverGoesBelowZero) {
    EXPECT_EQ(timeString(1500), "25:00");
    EXPECT_EQ(timeString(59), "00:59");
    EXPECT_EQ(timeString(3600), "0100:00");
    EXPECT_EQ(timeString(3725), "0102:05");
    EXPECT_EQ(timeString(360000), "10000:00");
    EXPECT_EQ(timeString(360061), "10001:01");
    EXPECT_EQ(timeString(0), "00:00");
    EXPECT_EQ(timeString(std::numeric_limits<std::int64_t>::min()), "00:00");
}

TEST(SecondsOf, readsWhatIsShown) {
    for (const std::int64_t seconds : {0, 1, 59, 60, 299, 3599, 3600, 3725, 86399, 359999, 360000, 3660000})
        EXPECT_EQ(secondsOf(timeString(seconds)), seconds);
    EXPECT_EQ(secondsOf("0102:05"), 3725);
    for (const char* odd :
         {"", ":", "5:00", "05:0", "05:000", "0500", "ab:cd", "-1:00", "05:0x", "99999999999999999900:00"})
        EXPECT_EQ(secondsOf(odd), 0) << odd;
}

TEST(DecimalText, IsShortAlwaysHasAFractionAndReadsBack) {
    EXPECT_EQ(decimalText(1), "1.0");
    EXPECT_EQ(decimalText(0.1), "0.1");
    EXPECT_EQ(decimalText(1767603600), "1767603600.0");
    EXPECT_EQ(decimalText(-1500), "-1500.0");
    EXPECT_EQ(decimalText(1e21), "1e+21");
    for (const double value :
         {1767603600.123456, 1.0 / 3, 5e-324, 1.7976931348623157e308, -0.5, 1e15, 123456789012.5})
        EXPECT_EQ(parseDecimal(decimalText(value)), value) << decimalText(value);
}

TEST(DecimalText, DoesNotFollowTheLocale) {
    const test::TempFolder folder;
    if (!test::useLocaleFolder(folder, "de_DE") || !std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "no locale with a decimal comma can be made here";
    EXPECT_EQ(decimalText(0.5), "0.5");
    EXPECT_EQ(parseDecimal("0.5"), 0.5);
    EXPECT_EQ(parseDecimal("0,5"), std::nullopt);
}

TEST(ParseDecimal, TakesAWholeNumberOrNothing) {
    EXPECT_EQ(parseDecimal("12"), 12);
    EXPECT_EQ(parseDecimal("-1e3"), -1000);
    for (const char* text : {"", " 1", "1 ", "1.0.0", "0x10", "nan", "inf", "1e", "--1", "eins"})
        EXPECT_EQ(parseDecimal(text), std::nullopt) << text;
}

TEST(WithArguments, PutsEachInItsPlaceAndLeavesTheRest) {
    EXPECT_EQ(withArguments("%2$s, %1$s und %2$s", {"a", "%1$s"}), "%1$s, a und %1$s");
    EXPECT_EQ(withArguments("100%, %0$s%3$s%$s %1$", {"a", "b"}), "100%, %0$s%3$s%$s %1$");
    EXPECT_EQ(withArguments("", {"a"}), "");
}

TEST(Printable, ShowsWhatWouldBreakItOrRuleATerminal) {
    EXPECT_EQ(printable("堂堂 é 🥤 \\n"), "堂堂 é 🥤 \\n");
    EXPECT_EQ(printable("a\nb\r\tc\x1b[2J\x7f"), "a\\nb\\r\\tc\\x1b[2J\\x7f");
    EXPECT_EQ(printable(std::string_view("\0\x9b", 2)), "\\x00\x9b");
}

TEST(Shortened, KeepsTheBeginningInWholeCharacters) {
    EXPECT_EQ(shortened("堂堂七尺", 12), "堂堂七尺");
    EXPECT_EQ(shortened("堂堂七尺!", 12), "堂堂七…");
    EXPECT_EQ(shortened("堂堂七尺!", 11), "堂堂…");
    EXPECT_EQ(shortened(std::string(8, '\x80'), 7), std::string(4, '\x80') + "…") << "no text at all";
}

TEST(TextEncoder, NeverLosesACharacter) {
    EXPECT_EQ(encoded("Grüße", TextEncoding::Latin1), "Gr\xFC\xDF"
                                                      "e");
    // The first character of each length, and the last that there is.
    constexpr std::string_view edges("\0\xC2\x80\xE0\xA0\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", 14);
    EXPECT_EQ(encoded(edges, TextEncoding::Utf8), edges);
    EXPECT_EQ(encoded("喝水", TextEncoding::Latin1), std::nullopt);
    EXPECT_EQ(encoded("é", TextEncoding::Ascii), std::nullopt);
    for (const char* broken : {"\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "a\x80", "\xE4\xBD"})
        EXPECT_EQ(encoded(broken, TextEncoding::Utf8), std::nullopt);
}

TEST(CheckedDeathTest, OverflowEndsTheProcess) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(checkedMultiply(-3037000499, 3037000499), -9223372030926249001);
    EXPECT_EQ(checkedMultiply(lowest, 1), lowest);
    EXPECT_EQ(checkedMultiply(highest / 60, 60), highest / 60 * 60);
    EXPECT_DEATH((void)checkedMultiply(highest / 60 + 1, 60), "overflow");
    EXPECT_DEATH((void)checkedMultiply(lowest, -1), "overflow");
    EXPECT_DEATH((void)checkedAdd(highest, 1), "overflow");
    EXPECT_DEATH((void)checkedSubtract(lowest, 1), "overflow");
}

} // namespace
} // namespace kelpa
