#include "ui/IconFont.h"

#include "tests/core/Play.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

class FakeFonts final : public Fonts {
  public:
    [[nodiscard]] std::optional<std::vector<unsigned char>>
    fontAsset(const std::string& name) const override {
        return name == "iconfont" ? asset : std::nullopt;
    }
    [[nodiscard]] std::optional<std::string> registerFont(const std::vector<unsigned char>&) override {
        ++registrations;
        return error;
    }
    [[nodiscard]] std::optional<GlyphImage> drawGlyph(const std::string& text, const std::string& font,
                                                      double size) override {
        drawn = text + " " + font;
        return GlyphImage{static_cast<int>(size), static_cast<int>(size), {}};
    }
    std::optional<std::vector<unsigned char>> asset = std::vector<unsigned char>{1};
    std::optional<std::string> error;
    std::string drawn;
    int registrations = 0;
};

TEST(IconFont, RegistersOnceAndShowsItsGlyphs) {
    FakeFonts fonts;
    IconFont::wire(fonts);
    EXPECT_EQ(IconFont::name(), "iconfont");
    const GlyphView view = IconFont::kelpagun.view(24);
    EXPECT_EQ(view.text, "\xEE\x99\x8C");
    EXPECT_EQ(view.fontName, "iconfont");
    EXPECT_EQ(IconFont::kelpa.loadIcon(16)->width, 16);
    EXPECT_EQ(fonts.drawn, "\xEE\x99\x8B iconfont");
    EXPECT_EQ(fonts.registrations, 1);
}

TEST(AboutPane, ShowsItsGlyphWhereThereIsNoPicture) {
    test::Play play;
    play.desk.system.applicationIcon = std::nullopt;
    play("launch\n");
    FakeFonts fonts;
    IconFont::wire(fonts);
    play("menu settings\n");
    const auto about = play.desk.services.preferences.layout().panes[4].about;
    ASSERT_TRUE(about);
    EXPECT_EQ(about->icon, "");
    EXPECT_EQ(about->glyph, "\uE64B");
    EXPECT_EQ(about->glyphFont, "iconfont");
}

TEST(IconFontDeathTest, WithoutItsFontTheProgramIsWrong) {
    FakeFonts fonts;
    IconFont::wire(fonts);
    fonts.error = "too odd";
    EXPECT_DEATH((void)IconFont::name(), "Register Iconfont failed: too odd");
    fonts.asset = std::nullopt;
    EXPECT_DEATH((void)IconFont::name(), "Can not found font named: iconfont");
}

} // namespace
} // namespace kelpa
