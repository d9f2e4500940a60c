#include "platform/linux/view/ThemeColors.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>
#include <QStandardPaths>

namespace kelpa::view {

namespace {

constexpr qint64 longestFile = 1024 * 1024;
constexpr int deepest = 6; ///< of colours that stand for others
constexpr int middle = 128;

QString textOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longestFile)) : QString();
}

QRegularExpression expression(const QString& pattern) {
    return QRegularExpression(pattern, QRegularExpression::MultilineOption);
}

/// What a scheme calls `name`, and not what ends so.
QColor inScheme(const QString& scheme, const QString& name) {
    static const QString pattern = QStringLiteral("(?<![a-z_])%1\\s*:\\s*(#[0-9A-Fa-f]+)");
    return QColor(expression(pattern.arg(name)).match(scheme).captured(1));
}

/// The colour that a style for older programs sets for what is in that state.
QColor inStyle(const QString& styles, const QString& name, const QString& state) {
    static const QString pattern = QStringLiteral(R"(\b%1\[%2\]\s*=\s*"(#[0-9A-Fa-f]+)\")");
    return QColor(expression(pattern.arg(name, state)).match(styles).captured(1));
}

ThemeColors inText(QString text) {
    // Where the scheme is a string, a line ends with an escape.
    text.replace(QLatin1String("\\n"), QLatin1String("\n"));
    const auto named = [&text](const char* name) { return inScheme(text, QLatin1String(name)); };
    if (const QColor background = named("bg_color"); background.isValid())
        return {background, named("fg_color"), named("selected_bg_color"), named("selected_fg_color")};
    const auto set = [&text](const char* name, const char* state) {
        return inStyle(text, QLatin1String(name), QLatin1String(state));
    };
    return {set("bg", "NORMAL"), set("fg", "NORMAL"), set("bg", "SELECTED"), set("fg", "SELECTED")};
}

/// The colours that a style sheet and those that it reads, each of them once, define by names.
class Sheet {
  public:
    explicit Sheet(const QString& path) { read(QFileInfo(path)); }

    /// The colour of that name, or of the older one.
    [[nodiscard]] QColor color(const QString& name) const {
        const QColor found = resolved(definitions_.value(QStringLiteral("theme_") + name), 0);
        return found.isValid() ? found : resolved(definitions_.value(name), 0);
    }

  private:
    void read(const QFileInfo& file) {
        static const QRegularExpression part(QStringLiteral(
            R"re(@import\s+url\(\s*["']?([^"')]+)|@define-color\s+([A-Za-z0-9_-]+)\s+([^;]+);)re"));
        const QString path = file.canonicalFilePath();
        if (path.isEmpty() || read_.contains(path))
            return;
        read_.insert(path);
        const QString text = textOf(path);
        for (auto found = part.globalMatch(text); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            if (match.hasCaptured(2))
                definitions_.insert(match.captured(2), match.captured(3));
            else if (!match.captured(1).contains(QLatin1Char(':')))
                read(QFileInfo(file.dir(), match.captured(1)));
        }
    }
    /// What is made out of a colour, as a shade of it, counts as that colour.
    [[nodiscard]] QColor resolved(const QString& value, int depth) const {
        static const QRegularExpression known(
            QStringLiteral(R"(@([A-Za-z0-9_-]+)|(#[0-9A-Fa-f]+)|rgba?\(\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+))"));
        const QRegularExpressionMatch match = known.match(value);
        if (match.hasCaptured(1))
            return depth < deepest ? resolved(definitions_.value(match.captured(1)), depth + 1) : QColor();
        if (match.hasCaptured(3))
            return QColor(match.captured(3).toInt(), match.captured(4).toInt(), match.captured(5).toInt());
        return QColor(match.hasCaptured(2) ? match.captured(2) : value.trimmed());
    }

    QHash<QString, QString> definitions_;
    QSet<QString> read_;
};

ThemeColors inSheet(const QString& path) {
    const Sheet sheet(path);
    return {sheet.color(QStringLiteral("bg_color")), sheet.color(QStringLiteral("fg_color")),
            sheet.color(QStringLiteral("selected_bg_color")),
            sheet.color(QStringLiteral("selected_fg_color"))};
}

/// The short file first: it says the same.
ThemeColors inFolder(const QDir& folder) {
    ThemeColors found = inText(textOf(folder.filePath(QStringLiteral("gtk-2.0/gtkrc"))));
    for (const char* sheet : {"gtk-3.0/gtk.css", "gtk-3.20/gtk.css", "gtk-4.0/gtk.css"})
        if (!found.background.isValid())
            found = inSheet(folder.filePath(QLatin1String(sheet)));
    return found;
}

} // namespace

std::optional<bool> isDark(const ThemeColors& colors) {
    if (!colors.background.isValid())
        return std::nullopt;
    // A light background that nobody knows the text of is one in the lighter half.
    return qGray(colors.background.rgb()) < (colors.text.isValid() ? qGray(colors.text.rgb()) : middle);
}

ThemeColors colorsOfScheme(const QByteArray& scheme) {
    return inText(QString::fromUtf8(scheme));
}

ThemeColors colorsOfPalette(const QString& file) {
    const QSettings settings(file, QSettings::IniFormat);
    const auto color = [&settings](const char* name) {
        return QColor(settings.value(QLatin1String("Palette/") + QLatin1String(name)).toString());
    };
    return {color("window_color"), color("window_text_color"), color("highlight_color"),
            color("highlighted_text_color")};
}

QStringList themeFolders() {
    return QStringList(QDir::home().filePath(QStringLiteral(".themes"))) +
           QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("themes"),
                                     QStandardPaths::LocateDirectory);
}

ThemeColors colorsOfTheme(const QString& name, const QStringList& folders) {
    // Of a name that is a way to somewhere else no theme is known.
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.startsWith(QLatin1Char('.')))
        return {};
    for (const QString& place : folders)
        if (const ThemeColors found = inFolder(QDir(place + QLatin1Char('/') + name));
            found.background.isValid())
            return found;
    return {};
}

bool isDarkName(const QString& theme) {
    const QString known = theme.toLower();
    return known.contains(QLatin1String("dark")) || known.contains(QLatin1String("inverse"));
}

} // namespace kelpa::view
