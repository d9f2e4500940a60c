#pragma once

#include "platform/linux/Descriptors.h"

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <string>

namespace kelpa {

/// A package on its way to the disk. Until it is known to be what its maker signed it lies, under a name that
/// nothing opens, in a folder of this user's alone, in the program's own; what is not kept is removed.
/// Neither folder is ever entered through a link, which could lead to anything that this user has, and of
/// what lies there only downloads are touched.
class PackageFile {
  public:
    /// Makes the folder, and the one around it, where they are missing, and takes the place of earlier
    /// downloads there. `ending` is how the names of packages end. `error()` tells when that does not work.
    PackageFile(const QString& folder, const QString& ending);
    ~PackageFile();
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;

    /// Why the disk does not take the package; empty while it does.
    [[nodiscard]] const std::string& error() const { return error_; }
    /// False when the disk does not take it.
    bool append(QByteArrayView bytes);
    [[nodiscard]] qint64 size() const { return size_; }
    [[nodiscard]] QString path() const;
    /// Whether whoever holds the other half of `key` signed exactly what has been appended. Both are Ed25519
    /// in base64; a text that is none signs nothing. Looks at the file through the page cache, of which the
    /// system can take back what it needs.
    [[nodiscard]] bool isSigned(const std::string& signature, const std::string& key);
    /// Keeps the package for good under a name with this in it, and tells its path; empty when that does not
    /// work. What has the name already stays.
    QString keepAs(const QString& version);

  private:
    void openFolder();
    void enter(const QString& name);
    void removeEarlier();
    void create();
    [[nodiscard]] bool isDownload(const char* name) const;
    void complain(const QString& name);
    void complainOfFile() { error_ = file_.errorString().toStdString(); }

    QString path_; ///< of the folder
    QString ending_;
    Descriptor folder_;
    QFile file_;
    qint64 size_ = 0;
    std::string error_;
};

/// The version that a Debian package says it has, without the epoch; empty for what is no such package, or
/// where nothing on this machine can tell.
[[nodiscard]] QString versionInside(const QString& package);

} // namespace kelpa
