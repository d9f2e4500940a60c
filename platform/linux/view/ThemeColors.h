#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace kelpa::view {

/// Whether a scheme of colours, as in "fg_color:#000;bg_color:#fff", is a dark one. Nothing where it does not
/// say what colour the background has.
[[nodiscard]] std::optional<bool> isDarkScheme(const QByteArray& scheme);

/// Where the desktop's themes are, each in a folder of its name, the person's own first.
[[nodiscard]] QStringList themeFolders();
/// Whether a GTK theme is dark: its background darker than its text, as the theme's files in one of the
/// folders say. One that says no colours, as those that GTK has within itself, is known by its name.
[[nodiscard]] bool isDarkTheme(const QString& name, const QStringList& folders);

} // namespace kelpa::view
