#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <compare>
#include <optional>
#include <variant>
#include <vector>

namespace kelpa {

/// Which of two versions is the later one, in the order that people mean: numbers count as numbers (1.10
/// comes behind 1.9), a word makes a version an earlier one (1.0 beta 2 comes before 1.0), zeros at the end
/// say nothing (1.0.0 is 1), and neither does what stands behind a plus sign. Numbers may be of any length.
[[nodiscard]] std::weak_ordering versionOrder(const QString& left, const QString& right);

/// One file of a release.
struct AppcastPackage {
    QUrl address;
    QString system;    ///< "linux", "windows", …; empty for any
    QString signature; ///< Ed25519, base64
    qint64 length = 0; ///< in bytes; 0 where the feed does not tell
};

/// One release in a feed.
struct AppcastItem {
    QString version; ///< by which releases are ordered
    QString name;    ///< the version that people are shown
    QString channel; ///< empty for the releases that are meant for everybody
    QString minimumSystem;
    QUrl notes;
    std::vector<AppcastPackage> packages;
};

/// What the feed is read for.
struct AppcastReader {
    QString runningVersion;
    QString systemVersion;
    QString packageEnding; ///< of the names of the packages that this system can install
};

struct AppcastOffer {
    AppcastItem item;
    AppcastPackage package;
};

/// Why there is nothing to offer.
enum class AppcastNews {
    None,         ///< the newest release runs already
    SystemTooOld, ///< there is a newer one, but not for this version of the system
};

/// Reads a feed: RSS in UTF-8 with the customary sparkle elements. Addresses in it may be relative to `base`.
/// Nothing when it is no such feed, or when it is built to do harm: nested beyond all reason, or with a
/// document type, which no feed needs and which can make a few bytes stand for gigabytes.
[[nodiscard]] std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray& bytes, const QUrl& base);

/// The newest release that is newer than the running one, meant for everybody and for this kind of system.
[[nodiscard]] std::variant<AppcastNews, AppcastOffer> newestFor(const AppcastReader& reader,
                                                                const std::vector<AppcastItem>& items);

} // namespace kelpa
