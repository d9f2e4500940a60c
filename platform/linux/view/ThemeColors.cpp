#include "platform/linux/view/ThemeColors.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
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

/// A light background that nobody knows the text of is one in the lighter half.
std::optional<bool> isDark(const QColor& background, const QColor& text) {
    if (!background.isValid())
        return std::nullopt;
    return qGray(background.rgb()) < (text.isValid() ? qGray(text.rgb()) : middle);
}

/// What a scheme calls `name`, and not what ends so.
QColor inScheme(const QString& scheme, const QString& name) {
    static const QString pattern = QStringLiteral("(?<![a-z_])%1\\s*:\\s*(#[0-9A-Fa-f]+)");
    return QColor(expression(pattern.arg(name)).match(scheme).captured(1));
}

/// The colour that a style for older programs sets for what is neither chosen nor pointed at.
QColor inStyle(const QString& styles, const QString& name) {
    static const QString pattern = QStringLiteral(R"(\b%1\[NORMAL\]\s*=\s*"(#[0-9A-Fa-f]+)\")");
    return QColor(expression(pattern.arg(name)).match(styles).captured(1));
}

std::optional<bool> isDarkText(QString text) {
    // Where the scheme is a string, a line ends with an escape.
    text.replace(QLatin1String("\\n"), QLatin1String("\n"));
    const auto dark =
        isDark(inScheme(text, QStringLiteral("bg_color")), inScheme(text, QStringLiteral("fg_color")));
    return dark ? dark : isDark(inStyle(text, QStringLiteral("bg")), inStyle(text, QStringLiteral("fg")));
}

/// The colours that a style sheet and those that it reads, each of them once, define by names.
class Sheet {
  public:
    explicit Sheet(const QString& path) { read(QFileInfo(path)); }

    [[nodiscard]] QColor color(const QStringList& names) const {
        for (const QString& name : names)
            if (const QColor found = resolved(definitions_.value(name), 0); found.isValid())
                return found;
        return {};
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

std::optional<bool> isDarkSheet(const QString& path) {
    const Sheet sheet(path);
    return isDark(sheet.color({QStringLiteral("theme_bg_color"), QStringLiteral("bg_color")}),
                  sheet.color({QStringLiteral("theme_fg_color"), QStringLiteral("fg_color")}));
}

/// The short file first: it says the same.
std::optional<bool> isDarkFolder(const QDir& folder) {
    if (const auto dark = isDarkText(textOf(folder.filePath(QStringLiteral("gtk-2.0/gtkrc")))))
        return dark;
    for (const char* sheet : {"gtk-3.0/gtk.css", "gtk-3.20/gtk.css", "gtk-4.0/gtk.css"})
        if (const auto dark = isDarkSheet(folder.filePath(QLatin1String(sheet))))
            return dark;
    return std::nullopt;
}

} // namespace

std::optional<bool> isDarkScheme(const QByteArray& scheme) {
    return isDarkText(QString::fromUtf8(scheme));
}

QStringList themeFolders() {
    QStringList folders{QDir::home().filePath(QStringLiteral(".themes"))};
    const QStringList data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString& place : data)
        folders.append(place + QStringLiteral("/themes"));
    return folders;
}

bool isDarkTheme(const QString& name, const QStringList& folders) {
    // Of a name that is a way to somewhere else no theme is known.
    const bool plain =
        !name.isEmpty() && !name.contains(QLatin1Char('/')) && !name.startsWith(QLatin1Char('.'));
    for (const QString& place : folders)
        if (const auto dark = plain ? isDarkFolder(QDir(place + QLatin1Char('/') + name)) : std::nullopt)
            return *dark;
    const QString known = name.toLower();
    return known.contains(QLatin1String("dark")) || known.contains(QLatin1String("inverse"));
}

} // namespace kelpa::view
