#include "app/AppState.h"
#include "tests/core/Play.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const PrefState& pref() {
    return AppState::prefState();
}

TEST(Preferences, AFreshAccountHasTheDefaults) {
    Play play;
    play("launch\n");
    EXPECT_FALSE(pref().launchAtLogin());
    EXPECT_TRUE(pref().showTime());
    EXPECT_TRUE(pref().autoCheckUpdate());
    EXPECT_EQ(pref().workTime(), 25);
    EXPECT_EQ(pref().breakTime(), 300);
    EXPECT_FALSE(pref().customBreakPrompt());
    EXPECT_EQ(pref().breakPrompt(), "堂堂七尺少年郎, 躺上一躺又何妨");
    EXPECT_EQ(pref().breakPrompt().size(), 44U);
    EXPECT_EQ(pref().shortBreakTimes(), 4);
    EXPECT_EQ(pref().longBreakTime(), 15);
    EXPECT_FALSE(pref().forceLongBreak());
    EXPECT_TRUE(pref().restartTimerAfterAwake());
    EXPECT_TRUE(pref().stopTimerAfterMouseStop());
    EXPECT_FALSE(pref().showNewDayTip());
    EXPECT_EQ(pref().lastWeakupTimestamp(), 0.0);
    EXPECT_TRUE(pref().isNewDay());
}

TEST(Preferences, AValueOfAnotherTypeReadsAsAbsent) {
    Play play;
    play("launch\nstore pref.work.time text 30\nstore pref.break.time real 60\nstore show_time_in_status_bar "
         "int 0\n"
         "store break_prompt_text bool true\nstore last_weakup_timestamp int 5\nstore break_style int 3\n");
    EXPECT_EQ(pref().workTime(), 25);
    EXPECT_EQ(pref().breakTime(), 300);
    EXPECT_TRUE(pref().showTime());
    EXPECT_EQ(pref().breakPrompt().size(), 44U);
    EXPECT_EQ(pref().lastWeakupTimestamp(), 0.0);
    EXPECT_EQ(AppState::prefState().styleState().breakStyle(), BreakStyle::default_);
}

TEST(Preferences, ObserversHearAfterWriteAndSideEffect) {
    Play play({"item", "title"});
    play("launch\n");
    const auto told = AppState::prefState().workTime.observe([&](std::int64_t minutes) {
        play.journal.note("told", std::to_string(minutes) + " stored " + std::to_string(pref().workTime()));
    });
    int replaced = 0;
    const auto style = AppState::prefState().observeStyleState([&] { ++replaced; });
    EXPECT_EQ(play("pref workTime 7\n").back(), "0.000 told 7 stored 7");
    AppState::prefState().setStyleState(std::make_unique<PrefStyleState>(play.desk.store));
    EXPECT_EQ(replaced, 1);
}

TEST(Preferences, ANewDayBeginsAtLocalMidnight) {
    Play play;
    play("start 2026-11-23T23:59:58\nzone Asia/Shanghai\nlaunch\n");
    AppState::prefState().updateWeakupTimestamp();
    play("+1.5\n");
    EXPECT_FALSE(pref().isNewDay());
    play("+0.5\n");
    EXPECT_TRUE(pref().isNewDay());
    EXPECT_EQ(play.journal.lines().back().substr(0, 5), "2.000");
}

/// FNV-1a: enough to see a change of one sign.
std::uint64_t digest(const std::string& text) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char c : text)
        sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return sum;
}

TEST(BreakStyles, HaveTheirListsInOrder) {
    const std::vector<std::pair<BreakStyle, std::size_t>> sizes = {
        {BreakStyle::default_, 11}, {BreakStyle::relaxation, 10}, {BreakStyle::struggle, 10}};
    std::string all = newDayFallback();
    for (const auto& [style, size] : sizes) {
        EXPECT_EQ(prompts(style).size(), size);
        EXPECT_EQ(newDayPrompts(style).size(), 10U);
        for (const auto& texts : {prompts(style), newDayPrompts(style)})
            for (const std::string& text : texts)
                all += "\n" + text;
    }
    EXPECT_EQ(digest(all), 1273328436274675169U) << "a text is another than it was";
    EXPECT_EQ(prompts(BreakStyle::default_).front(), "给你的眼睛一个小小的暂停，它们会感激你的关心。");
    EXPECT_EQ(newDayPrompts(BreakStyle::struggle).back(),
              "每天都是一个宝贵的礼物，我会充分利用每一天，认真工作，不虚度时光。");
    EXPECT_EQ(desc(fromRawValue<BreakStyle>(2).value()), "Struggle");
    EXPECT_EQ(fromRawValue<BreakStyle>(3), std::nullopt);
    EXPECT_EQ(fromRawValue<BreakStyle>(-1), std::nullopt);
}

TEST(StylePane, EditsTheListOfTheChosenStyle) {
    Play play({"log", "item", "title"});
    play("store break_prompt_list_1 list [\"a\",\"b\",\"a\"]\nlaunch\npref breakStyle relaxation\n");
    EXPECT_EQ(play("style add b\nstyle edit a => c\nstyle edit none => d\nstyle edit a => \nstyle add \n"
                   "style edit d => e\nstyle edit a => z\nstyle delete z\n"),
              (Lines{"0.000 set break_prompt_list_1 list [\"b\",\"a\",\"b\",\"a\"]",
                     "0.000 set break_prompt_list_1 list [\"b\",\"c\",\"b\",\"a\"]",
                     "0.000 set break_prompt_list_1 list [\"d\",\"b\",\"c\",\"b\",\"a\"]",
                     "0.000 set break_prompt_list_1 list [\"e\",\"b\",\"c\",\"b\",\"a\"]",
                     "0.000 set break_prompt_list_1 list [\"e\",\"b\",\"c\",\"b\",\"z\"]",
                     "0.000 set break_prompt_list_1 list [\"e\",\"b\",\"c\",\"b\"]"}));
    EXPECT_EQ(play("style delete b\nstyle delete e\nstyle delete c\n").back(),
              "0.000 set break_prompt_list_1 list []");
    EXPECT_TRUE(AppState::prefState().styleState().promptList().empty());
}

TEST(StylePane, ResetStoresACopyAndForeignTypesReadAsTheBuiltInList) {
    Play play({"log", "item", "title"});
    play("store new_day_break_prompt_list_0 text x\nlaunch\nstyle list newday\n");
    PrefStyleState& style = AppState::prefState().styleState();
    EXPECT_EQ(style.newDayPromptList(), newDayPrompts(BreakStyle::default_));
    play("style reset\nstyle add x\n");
    EXPECT_EQ(style.newDayPromptList().size(), 11U);
    EXPECT_EQ(style.promptList(), prompts(BreakStyle::default_));
    play("style reset\n");
    EXPECT_EQ(play.desk.store.get<std::vector<std::string>>("new_day_break_prompt_list_0"),
              newDayPrompts(BreakStyle::default_));
    EXPECT_EQ(play.desk.store.get<std::vector<std::string>>("break_prompt_list_0"), std::nullopt);
}

} // namespace
} // namespace kelpa::test
