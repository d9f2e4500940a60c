#include "platform/linux/windows/JsonWriter.h"
#include "platform/linux/windows/PreferencesJson.h"

#include <gtest/gtest.h>

namespace {

using namespace kelpa;

std::string quoted(std::string_view text) {
    return JsonWriter().text(text).written();
}

TEST(JsonWriter, SetsCommasAndNestsWhatIsNested) {
    JsonWriter json;
    json.beginObject().key("a").number(-12).member("b", "c").key("d").beginArray().endArray();
    json.key("e").beginArray().text("f").beginObject().endObject().number(3).endArray().endObject();
    EXPECT_EQ(json.written(), R"({"a":-12,"b":"c","d":[],"e":["f",{},3]})");
}

TEST(JsonWriter, EscapesWhatAReaderWouldTakeForItsOwn) {
    EXPECT_EQ(quoted("say \"hi\" \\n / \t\n\x7f"), "\"say \\\"hi\\\" \\\\n / \\u0009\\u000a\x7f\"");
    EXPECT_EQ(quoted(std::string_view("\0\x1f", 2)), R"("\u0000\u001f")");
    EXPECT_EQ(quoted("堂堂 é 🥤"), "\"堂堂 é 🥤\"");
}

TEST(JsonWriter, PutsASignInThePlaceOfWhatIsNoUtf8) {
    const std::string sign = "\xEF\xBF\xBD";
    EXPECT_EQ(quoted("a\xff"
                     "b"),
              "\"a" + sign + "b\"");
    EXPECT_EQ(quoted("\xE5\xA0"), "\"" + sign + sign + "\"") << "cut off";
    EXPECT_EQ(quoted("\xC0\xAF"), "\"" + sign + sign + "\"") << "longer than it need be";
    EXPECT_EQ(quoted("\xED\xA0\x80"), "\"" + sign + sign + sign + "\"") << "half a pair";
    EXPECT_EQ(quoted("\xF4\x90\x80\x80"), "\"" + sign + sign + sign + sign + "\"") << "beyond Unicode";
    EXPECT_EQ(quoted("\xC3\""), "\"" + sign + "\\\"\"") << "the quotation mark that follows is one";
}

TEST(PreferencesJson, WritesTheWholeLayout) {
    PreferencesLayout layout;
    layout.minimumWidth = 480;
    layout.minimumHeight = 400;
    layout.decrease = {"minus", "Less"};
    layout.prompts.add = {"plus", "Add"};
    PreferencesRow row{"Every", {"work", PreferencesControlKind::Number, "Work", "mins"}};
    layout.panes = {
        {"Workflow", "tray.circle", {{"Short", {row}}}, {}},
        {"About", "info.circle", {}, AboutContent{"icon", "g", "f", "Kelpa", "v1", "c", "l", "a"}}};
    EXPECT_EQ(
        layoutJson(layout),
        R"({"minimumWidth":480,"minimumHeight":400,"buttons":{"addPrompt":{"symbol":"plus","name":"Add"},)"
        R"("editPrompt":{"symbol":"","name":""},"cancelPrompt":"","removePrompt":{"symbol":"","name":""},)"
        R"("resetPrompts":{"symbol":"","name":""},"addTimePoint":{"symbol":"","name":""},)"
        R"("removalSymbol":"","decrease":{"symbol":"minus","name":"Less"},)"
        R"("increase":{"symbol":"","name":""}},"panes":[{"label":"Workflow","symbol":"tray.circle","sections":[{"title":"Short",)"
        R"("rows":[{"caption":"Every","id":"work","kind":"number","label":"Work","unit":"mins"}]}]},)"
        R"({"label":"About","symbol":"info.circle","sections":[],"about":{"icon":"icon","glyph":"g",)"
        R"("glyphFont":"f","name":"Kelpa","version":"v1","copyright":"c","link":"l","linkAddress":"a"}}]})");
}

TEST(PreferencesJson, WritesListsAndCutsAnEndlessOne) {
    EXPECT_EQ(choicesJson({{-1, "a"}, {90, "b\"c"}}),
              R"([{"value":"-1","text":"a"},{"value":"90","text":"b\"c"}])");
    EXPECT_EQ(timePointsJson({{8, 5, "08:05", "No 08:05"}}),
              R"([{"value":"8:5","text":"08:05","removal":"No 08:05"}])");
    EXPECT_EQ(promptsJson({"one\\ntwo"}), R"([{"text":"one\\ntwo"}])");
    EXPECT_EQ(promptsJson({}), "[]");
    const std::string many = promptsJson(std::vector<std::string>(1000, std::string(1000, 'p')));
    EXPECT_LT(many.size(), 256U * 1024);
    EXPECT_GT(many.size(), 128U * 1024);
    const std::string worst = promptsJson(std::vector<std::string>(100, std::string(16384, '\1')));
    EXPECT_LT(worst.size(), 256U * 1024) << "each of its bytes is written as six";
    EXPECT_EQ(many.substr(many.size() - 2), "}]");
}

} // namespace
