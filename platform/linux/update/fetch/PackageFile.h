#pragma once

#include "platform/linux/update/fetch/DownloadFolder.h"

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <string>

namespace kelpa {

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

} // namespace kelpa
