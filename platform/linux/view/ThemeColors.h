#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QStringList>
#include <optional>

namespace kelpa::view {

/// What programs of a desktop are drawn on and with, and what is chosen in them. Invalid is what nobody says;
/// without a background nothing is known.
struct ThemeColors {
    QColor background;
    QColor text;
    QColor chosen;
    QColor chosenText;
};

/// Whether the background is darker than the text. Nothing where no background is known.
[[nodiscard]] std::optional<bool> isDark(const ThemeColors& colors);

/// Those of a scheme, as in "fg_color:#000;bg_color:#fff".
[[nodiscard]] ThemeColors colorsOfScheme(const QByteArray& scheme);
/// Those that a person chose in the settings of LXQt, which has them in such a file.
[[nodiscard]] ThemeColors colorsOfPalette(const QString& file);

/// Where the desktop's themes are, each in a folder of its name, the person's own first.
[[nodiscard]] QStringList themeFolders();
/// Those of a GTK theme, as its files in one of the folders say. Those that GTK has within itself say none.
[[nodiscard]] ThemeColors colorsOfTheme(const QString& name, const QStringList& folders);
/// Whether a theme that says no colours is called as dark ones are.
[[nodiscard]] bool isDarkName(const QString& theme);

} // namespace kelpa::view
