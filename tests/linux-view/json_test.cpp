#include "platform/linux/windows/Json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace kelpa;
using nlohmann::json;

TEST(Json, NamesTheKindOfEachRow) {
    PreferencesLayout layout;
    const PreferencesRow row{"Every", {"work", PreferencesControlKind::Number, "Work", "mins"}};
    layout.panes = {{"Workflow", "tray.circle", {{"Short", {row}}}, {}}};
    EXPECT_EQ(
        json::parse(partsJson(layout)).at("/panes/0/sections/0/rows/0"_json_pointer),
        json(
            {{"caption", "Every"}, {"id", "work"}, {"kind", "number"}, {"label", "Work"}, {"unit", "mins"}}));
}

TEST(Json, PutsASignInThePlaceOfWhatIsNoUtf8) {
    for (const char* bad : {"\xff", "\xE5\xA0", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC3\""}) {
        const json list =
            json::parse(entriesJson({{1, std::string("a") + bad + "b\n", ""}, {2, "堂堂 é 🥤", ""}}));
        const auto text = list[0]["text"].get<std::string>();
        EXPECT_TRUE(text.starts_with("a\xEF\xBF\xBD") && text.ends_with("b\n")) << text;
        EXPECT_EQ(list[1]["text"], "堂堂 é 🥤");
    }
}

TEST(Json, CutsAnEndlessList) {
    const std::string many =
        entriesJson(std::vector<PreferencesEntry>(1000, {0, std::string(1000, 'p'), ""}));
    EXPECT_LT(many.size(), 256U * 1024);
    EXPECT_GT(many.size(), 128U * 1024);
    EXPECT_TRUE(json::accept(many));
    const std::string worst =
        entriesJson(std::vector<PreferencesEntry>(100, {0, std::string(16384, '\1'), ""}));
    EXPECT_LT(worst.size(), 256U * 1024) << "each of its bytes is written as six";
    EXPECT_GT(json::parse(worst).size(), 1U);
}

} // namespace
