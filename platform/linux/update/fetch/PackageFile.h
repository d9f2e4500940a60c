#pragma once

#include "platform/linux/Descriptors.h"

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <string>

namespace kelpa {

/// Where downloads lie: a folder of this user's alone, in the program's own. Neither is ever entered through
/// a link, which could lead to anything that this user has, and of what lies there only downloads are
/// touched.
class DownloadFolder {
  public:
    /// Makes the folder, and the one around it, where they are missing. `ending` is how the names of packages
    /// end.
    DownloadFolder(const QString& path, const QString& ending);

    /// What went wrong; empty while nothing did.
    [[nodiscard]] const std::string& error() const { return error_; }
    /// Removes what earlier downloads left.
    void empty();
    /// A descriptor, the caller's, of a new file that nothing opens by its name; -1 when there can be none.
    [[nodiscard]] int create();
    /// Where that file lies.
    [[nodiscard]] QString path() const;
    void discard();
    /// Gives it a name that a person understands and tells its path; empty when that does not work. What has
    /// the name already stays.
    QString keep(const QString& version);

  private:
    void enter(const QString& name);
    void complain(const QString& name);
    [[nodiscard]] bool isDownload(const char* name) const;

    QString path_;
    QString ending_;
    Descriptor folder_;
    std::string error_;
};

/// A package on its way to the disk. Until it is known to be what its maker signed it lies, under a name that
/// nothing opens, in a folder that only this user can enter; what is not kept is removed.
class PackageFile {
  public:
    /// Takes the place of earlier downloads in the folder. `ending` is how the names of packages end.
    /// `error()` tells when that does not work.
    PackageFile(const QString& folder, const QString& ending);
    ~PackageFile();
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;

    /// Why the disk does not take the package; empty while it does.
    [[nodiscard]] const std::string& error() const { return error_; }
    /// False when the disk does not take it.
    bool append(QByteArrayView bytes);
    [[nodiscard]] qint64 size() const { return size_; }
    [[nodiscard]] QString path() const { return folder_.path(); }
    /// Whether the holder of `key` signed what has been appended. Looks at the file through the page cache,
    /// of which the system can take back what it needs.
    [[nodiscard]] bool isSigned(const std::string& signature, const std::string& key);
    /// Keeps the package for good under a name with this in it, and tells its path; empty when that does not
    /// work.
    QString keepAs(const QString& version);

  private:
    void complain();

    DownloadFolder folder_;
    QFile file_;
    qint64 size_ = 0;
    std::string error_;
};

/// The version that a Debian package says it has, without the epoch; empty for what is no such package, or
/// where nothing on this machine can tell.
[[nodiscard]] QString versionInside(const QString& package);

} // namespace kelpa
