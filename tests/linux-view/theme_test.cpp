#include "platform/linux/view/ThemeColors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using kelpa::view::isDarkScheme;
using kelpa::view::isDarkTheme;

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
    [[nodiscard]] bool isDark(const QString& name) const {
        return isDarkTheme(name, {QStringLiteral("/nowhere"), folder_.path()});
    }

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

TEST_F(Themes, AreJudgedByTheColoursOfTheirFilesWhateverTheyAreCalled) {
    write("Coal/gtk-2.0/gtkrc",
          "gtk-color-scheme = \"base_color:#ffffff\\nbg_color:#3b3b3e\\nfg_color:#d4d4d4\"");
    write("NotDark/gtk-2.0/gtkrc", "gtk_color_scheme = \"tooltip_bg_color:#000;bg_color: #f6f6f6\"");
    write("Contrast/gtk-2.0/gtkrc",
          "style \"default\" { fg[NORMAL] = \"#ffffff\" bg[NORMAL] = \"#000000\" }");
    EXPECT_TRUE(isDark("Coal"));
    EXPECT_FALSE(isDark("NotDark"));
    EXPECT_TRUE(isDark("Contrast"));
}

TEST_F(Themes, SayTheirColoursInSheetsThatReadOthers) {
    write("Sheets/gtk-3.0/gtk.css",
          "@import url(\"main.css\");\n@define-color theme_bg_color shade (@bg_color, 0.9);");
    write("Sheets/gtk-3.0/main.css", "@define-color bg_color rgb(40, 40, 46);\n@define-color other #ffffff;");
    write("Named/gtk-3.20/gtk.css", "@define-color theme_bg_color black;");
    write("LightDark/gtk-3.0/gtk.css", "@define-color bg_color #fefefe; @define-color fg_color #111;");
    EXPECT_TRUE(isDark("Sheets"));
    EXPECT_TRUE(isDark("Named"));
    EXPECT_FALSE(isDark("LightDark"));
}

TEST_F(Themes, ThatSayNoColoursAreKnownByTheirName) {
    write("Yaru-dark/gtk-3.0/gtk.css", "@import url(\"resource:///org/example/gtk.css\");");
    write("Endless-Dark/gtk-3.0/gtk.css",
          QByteArray("@import url('gtk.css'); @import url('../gtk-3.0/gtk.css');").repeated(1000) +
              "@define-color bg_color @a; @define-color a @bg_color;");
    EXPECT_TRUE(isDark("Yaru-dark"));
    EXPECT_TRUE(isDark("Endless-Dark"));
    EXPECT_TRUE(isDark("HighContrastInverse"));
    EXPECT_FALSE(isDark("Adwaita"));
    EXPECT_FALSE(isDark(""));
    EXPECT_FALSE(isDark("../Yaru"));
}

} // namespace
