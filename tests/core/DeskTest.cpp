#include "tests/core/Play.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

std::string problem(const std::string& script) {
    std::istringstream in(script);
    try {
        (void)desk::readScript(in);
    } catch (const desk::ScriptError& error) {
        return error.what();
    }
    return {};
}

TEST(Script, IsRefusedWithTheLineAndWhatIsWrong) {
    EXPECT_EQ(problem("# comment\n\n  launch\n+1.5\n"), "");
    EXPECT_EQ(problem("launch\n+x\n"), "line 2: 'x' is no number of seconds");
    EXPECT_EQ(problem("+-1\n"), "line 1: time does not run backwards");
    EXPECT_EQ(problem("launch\nstart 2026-01-01T00:00:00\n"), "line 2: start must be the first command");
    EXPECT_EQ(problem("start 2026-02-30T00:00:00\n"),
              "line 1: '2026-02-30T00:00:00' is no local time like 2026-11-23T08:59:00");
    EXPECT_EQ(problem("store k int 1.5\n"), "line 1: '1.5' is no value of type 'int'");
    EXPECT_EQ(problem("store k list [\"a\",]\n"), "line 1: '[\"a\",]' is no value of type 'list'");
    EXPECT_EQ(problem("pref colour red\n"), "line 1: there is no preference 'colour'");
    EXPECT_EQ(problem("pref workTime long\n"), "line 1: 'long' is no value for workTime");
    EXPECT_EQ(problem("menu pizza\n"), "line 1: there is no menu line 'pizza'");
    EXPECT_EQ(problem("style edit a\n"), "line 1: style edit needs OLD => NEW");
}

TEST(Script, MayHaveACommentBehindACommand) {
    Play play({"title", "item", "log"});
    EXPECT_EQ(problem("launch # begins\n+60\t#\nmenu pause #\n"), "");
    EXPECT_EQ(problem("menu#pause\n"), "line 1: there is no command 'menu#pause'") << "a word goes on";
    play(
        "store break_prompt_list_0 list [\"one # two\", \"say \\\"# three\\\"\"] # \"four\"\nlaunch # now\n");
    EXPECT_EQ(
        play("style add tea#1   # on top\n"),
        (Lines{"0.000 set break_prompt_list_0 list [\"tea#1\",\"one # two\",\"say \\\"# three\\\"\"]"}));
}

TEST(Script, ReadsEveryEscapeOfATextInAList) {
    EXPECT_EQ(desk::textsFromJson(R"(["\u00e4\u5802\ud83e\udd64\u0041", "\b\f\n\r\t\/\\\""])"),
              (Lines{"ä堂🥤A", "\b\f\n\r\t/\\\""}));
    for (const char* odd : {R"(["\u00e"])", R"(["\u00eg"])", R"(["\ud83e"])", R"(["\ud83ex"])",
                            R"(["\ud83e\u0041"])", R"(["\udd64"])", R"(["\x"])", R"(["\)"})
        EXPECT_EQ(desk::textsFromJson(odd), std::nullopt) << odd;
}

TEST(Script, AClockSetByThousandthsTellsExactInstants) {
    Play play;
    play("start 2026-11-23T08:59:00\nlaunch\n");
    for (int i = 0; i < 7; ++i)
        play("clock +0.001\n");
    EXPECT_EQ(play.desk.clock.now(), Date{1795424340.007});
    play("+0.1\nclock -0.007\n+0.2\n");
    EXPECT_EQ(play.desk.clock.now(), Date{1795424340.3});
    play("suspend 28800.25\n");
    EXPECT_EQ(play.desk.clock.now(), Date{1795424340.3 + 28800.25});
}

TEST(Script, StopsWhereTheDeskIsNotReady) {
    Play play;
    EXPECT_THROW(play("pref workTime 3\n"), desk::ScriptError);
    EXPECT_THROW(play("launch\nlaunch\n"), desk::ScriptError);
    EXPECT_THROW(play("zone Mars/Olympus\n"), desk::ScriptError);
}

} // namespace
} // namespace kelpa::test
