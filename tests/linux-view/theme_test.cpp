#include "platform/linux/view/ThemeColors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace kelpa::view;

std::optional<bool> isDarkScheme(const QByteArray& scheme) {
    return isDark(colorsOfScheme(scheme));
}

/// Themes in a folder of their own.
class Themes : public testing::Test {
  protected:
    void write(const QString& file, const QByteArray& text) {
        const QString path = folder_.filePath(file);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    [[nodiscard]] ThemeColors colors(const QString& name) const {
        return colorsOfTheme(name, {QStringLiteral("/nowhere"), folder_.path()});
    }
    [[nodiscard]] std::optional<bool> isDark(const QString& name) const {
        return kelpa::view::isDark(colors(name));
    }
    [[nodiscard]] QString path(const QString& file) const { return folder_.filePath(file); }

  private:
    QTemporaryDir folder_;
};

TEST(Schemes, AreJudgedByTheirBackgroundAndText) {
    EXPECT_EQ(isDarkScheme("fg_color:#eee;bg_color:#222;"), true);
    EXPECT_EQ(isDarkScheme("bg_color:#eeeeee\nfg_color:#222222"), false);
    // A middle grey is what the text makes of it.
    EXPECT_EQ(isDarkScheme("bg_color:#666666\nfg_color:#000000"), false);
    EXPECT_EQ(isDarkScheme("bg_color:#999999\nfg_color:#ffffff"), true);
    EXPECT_EQ(isDarkScheme("selected_bg_color:#000000;tooltip_bg_color:#000"), std::nullopt);
    EXPECT_EQ(isDarkScheme("bg_color:red herring"), std::nullopt);
    EXPECT_EQ(isDarkScheme(""), std::nullopt);
}

TEST_F(Themes, SayTheirColoursInStylesForOlderPrograms) {
    write("Coal/gtk-2.0/gtkrc",
          "gtk-color-scheme = \"base_color:#ffffff\\nbg_color:#3b3b3e\\nfg_color:#d4d4d4"
          "\\nselected_bg_color:#123456\"");
    write("NotDark/gtk-2.0/gtkrc", "gtk_color_scheme = \"tooltip_bg_color:#000;bg_color: #f6f6f6\"");
    write("Contrast/gtk-2.0/gtkrc", "style \"default\" { fg[NORMAL] = \"#ffffff\" bg[NORMAL] = \"#000000\"\n"
                                    "bg[SELECTED] = \"#ffff00\" fg[SELECTED] = \"#000001\" }");
    EXPECT_EQ(isDark("Coal"), true);
    EXPECT_EQ(colors("Coal").chosen, QColor("#123456"));
    EXPECT_FALSE(colors("Coal").chosenText.isValid());
    EXPECT_EQ(isDark("NotDark"), false);
    EXPECT_EQ(isDark("Contrast"), true);
    EXPECT_EQ(colors("Contrast").chosen, QColor("#ffff00"));
    EXPECT_EQ(colors("Contrast").chosenText, QColor("#000001"));
}

TEST_F(Themes, SayTheirColoursInSheetsThatReadOthers) {
    write("Sheets/gtk-3.0/gtk.css",
          "@import url(\"main.css\");\n@define-color theme_bg_color shade (@bg_color, 0.9);");
    write("Sheets/gtk-3.0/main.css", "@define-color bg_color rgb(40, 40, 46);\n@define-color other #ffffff;"
                                     "@define-color selected_bg_color @other;");
    write("Named/gtk-3.20/gtk.css", "@define-color theme_bg_color black;");
    write("LightDark/gtk-3.0/gtk.css", "@define-color bg_color #fefefe; @define-color fg_color #111;");
    EXPECT_EQ(isDark("Sheets"), true);
    EXPECT_EQ(colors("Sheets").chosen, QColor("#ffffff"));
    EXPECT_EQ(isDark("Named"), true);
    EXPECT_EQ(isDark("LightDark"), false);
}

TEST_F(Themes, MaySayNoColours) {
    write("Yaru-dark/gtk-3.0/gtk.css", "@import url(\"resource:///org/example/gtk.css\");");
    write("Endless/gtk-3.0/gtk.css",
          QByteArray("@import url('gtk.css'); @import url('../gtk-3.0/gtk.css');").repeated(1000) +
              "@define-color bg_color @a; @define-color a @bg_color;");
    write("Bright/gtk-3.0/gtk.css", "@define-color bg_color #fefefe;");
    for (const char* name : {"Yaru-dark", "Endless", "Adwaita", "", "Yaru-dark/../Bright"})
        EXPECT_EQ(isDark(name), std::nullopt) << name;
    EXPECT_TRUE(isDarkName("Yaru-dark"));
    EXPECT_TRUE(isDarkName("HighContrastInverse"));
    EXPECT_FALSE(isDarkName("Adwaita"));
}

TEST_F(Themes, CanBeOverruledInTheSettingsOfLxqt) {
    write("lxqt.conf", "[Palette]\nwindow_color=#20282c\nhighlight_color=#336699\n");
    const ThemeColors chosen = colorsOfPalette(path("lxqt.conf"));
    EXPECT_EQ(kelpa::view::isDark(chosen), true);
    EXPECT_EQ(chosen.chosen, QColor("#336699"));
    EXPECT_EQ(kelpa::view::isDark(colorsOfPalette(path("none"))), std::nullopt);
}

} // namespace
