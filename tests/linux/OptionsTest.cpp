#include "platform/linux/Options.h"
#include "Support.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

using Arguments = std::vector<std::string>;

TEST(Options, readWhatIsAskedFor) {
    EXPECT_EQ(parseOptions({}).options.speed, 1);
    EXPECT_EQ(parseOptions({"--speed=0.5"}).options.speed, 0.5);
    EXPECT_EQ(parseOptions({"--speed", "1000"}).options.speed, 1000);
    EXPECT_EQ(parseOptions({"--speed=2"}).options.wish, StartWish::Preferences);
    const Options wished = parseOptions({"--show-history", "--speed", "2"}).options;
    EXPECT_EQ(wished.wish, StartWish::History);
    EXPECT_EQ(wished.speed, 2);
    EXPECT_EQ(parseOptions({"--help", "--bogus"}).options.action, Options::Action::ShowHelp);
    EXPECT_EQ(parseOptions({"--speed", "2", "--version"}).options.action, Options::Action::ShowVersion);
    for (const char* line : {"", "--speed 60", "--help", "--version"})
        EXPECT_EQ(parseOptions(test::wordsOf(line)).error, "");
}

TEST(Options, readCommandsForTheRunningProgram) {
    const auto status = parseOptions({"status", "--follow", "--json"});
    EXPECT_EQ(status.error, "");
    EXPECT_EQ(status.options.action, Options::Action::Control);
    EXPECT_TRUE(status.options.control.verb == nullptr && status.options.control.json &&
                status.options.control.follow);
    EXPECT_FALSE(parseOptions({"status"}).options.control.json);
    for (const std::string word :
         {"pause", "resume", "toggle", "break", "postpone", "skip", "water", "settings", "quit"}) {
        const auto parsed = parseOptions({word});
        ASSERT_EQ(parsed.options.action, Options::Action::Control);
        ASSERT_NE(parsed.options.control.verb, nullptr);
        EXPECT_EQ(parsed.options.control.verb->word, word);
        EXPECT_NE(helpText().find("\n  " + word + " "), std::string::npos);
    }
    EXPECT_EQ(parseOptions({"postpone"}).options.control.text, "");
    EXPECT_EQ(parseOptions({"postpone", "10", "apples"}).options.control.text, "10 apples");
    const auto pausedBy = [](const Arguments& arguments) {
        const ControlCommand command = parseOptions(arguments).options.control;
        return command.verb == nullptr ? "" : std::string(command.verb->method) + " " + command.text;
    };
    EXPECT_EQ(pausedBy({"pause"}), "Pause ");
    EXPECT_EQ(pausedBy({"pause", "45m"}), "PauseFor 45m");
    EXPECT_EQ(pausedBy({"pause", "until", "14:30"}), "PauseUntil 14:30");
    EXPECT_EQ(parseOptions({"status", "--help"}).options.action, Options::Action::ShowHelp);
}

TEST(Options, refuseWhatTheyDoNotKnowInOneLine) {
    std::vector<Arguments> refused = {{""},         {"--speed", ""}, {"a\nb"}, {"--speed", "2\n"},
                                      {"skip", ""}, {"pause", ""}};
    for (const char* line : {"--bogus",        "word",
                             "--speed",        "--speed 0",
                             "--speed -1",     "--speed nan",
                             "--speed inf",    "--speed 1000.1",
                             "--speed 1e400",  "--speed 5x",
                             "--speed 1,5",    "--speed=",
                             "--speed --help", "--speed 2 status",
                             "pause --json",   "postpone -5",
                             "status pause",   "status --jso",
                             "Pause",          "skip 45m",
                             "pause 45m 2h",   "pause until 14:30 15:00"})
        refused.push_back(test::wordsOf(line));
    for (const Arguments& arguments : refused) {
        const auto parsed = parseOptions(arguments);
        EXPECT_EQ(parsed.error.find('\n'), std::string::npos);
        EXPECT_TRUE(parsed.error.starts_with("kelpa: ")) << testing::PrintToString(arguments);
        EXPECT_EQ(parsed.options.action, Options::Action::Run);
    }
}

} // namespace
} // namespace kelpa
