#include "platform/linux/update/fetch/DownloadFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr int openFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr const char* unverified = "unverified";
constexpr const char* keptStart = "kelpa_";
constexpr int longestVersion = 60;

/// Of what a feed says only letters, digits and a few signs become part of a file's name.
QString tame(const QString& version) {
    static const QRegularExpression odd(QStringLiteral("[^A-Za-z0-9.~-]"));
    return QString(version).replace(odd, QStringLiteral("-")).left(longestVersion);
}

bool isThere(int folder, const char* name, struct stat& status) {
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace

DownloadFolder::DownloadFolder(const QString& path, const QString& ending)
    : path_(QDir::cleanPath(path)), ending_(ending) {
    const QFileInfo own(path_);
    const QFileInfo around(own.path());
    QDir().mkpath(around.path());
    folder_ = ::open(QFile::encodeName(around.path()).constData(), openFolder);
    if (folder_ < 0)
        complain(around.path());
    enter(around.fileName());
    enter(own.fileName());
    if (error_.empty() && ::fchmod(folder_, S_IRWXU) != 0)
        complain(path_);
}

DownloadFolder::~DownloadFolder() {
    if (folder_ >= 0)
        ::close(folder_);
}

void DownloadFolder::enter(const QString& name) {
    if (!error_.empty())
        return;
    const QByteArray bytes = QFile::encodeName(name);
    ::mkdirat(folder_, bytes.constData(), S_IRWXU);
    const int inner = ::openat(folder_, bytes.constData(), openFolder | O_NOFOLLOW);
    if (inner < 0)
        return complain(name);
    ::close(folder_);
    folder_ = inner;
}

void DownloadFolder::complain(const QString& name) {
    const bool isNoFolder = errno == ENOTDIR || errno == ELOOP;
    const std::string why = isNoFolder ? "it is a link, or no folder" : std::strerror(errno);
    error_ = "downloads cannot go to " + path_.toStdString() + ": " + name.toStdString() + ": " + why;
}

/// Nothing but its name and its kind tells who made it.
bool DownloadFolder::isDownload(const char* name) const {
    const QString text = QFile::decodeName(name);
    const bool isOurs = text == QLatin1String(unverified) ||
                        (text.startsWith(QLatin1String(keptStart)) && text.endsWith(ending_));
    struct stat status {};
    return isOurs && isThere(folder_, name, status) && S_ISREG(status.st_mode);
}

void DownloadFolder::empty() {
    // The descriptor is the listing's and is closed with it.
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(::openat(folder_, ".", openFolder)),
                                                      ::closedir);
    if (!entries)
        return complain(path_);
    while (const dirent* entry = ::readdir(entries.get()))
        if (isDownload(entry->d_name))
            ::unlinkat(folder_, entry->d_name, 0);
}

int DownloadFolder::create() {
    constexpr int forNewFile = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const int file = ::openat(folder_, unverified, forNewFile, S_IRUSR | S_IWUSR);
    if (file < 0)
        complain(QLatin1String(unverified));
    return file;
}

QString DownloadFolder::path() const {
    return path_ + QLatin1Char('/') + QLatin1String(unverified);
}

void DownloadFolder::discard() {
    ::unlinkat(folder_, unverified, 0);
}

QString DownloadFolder::keep(const QString& version) {
    const QString name = QLatin1String(keptStart) + tame(version) + ending_;
    const QByteArray bytes = QFile::encodeName(name);
    struct stat status {};
    if (isThere(folder_, bytes.constData(), status))
        errno = EEXIST;
    else if (::renameat(folder_, unverified, folder_, bytes.constData()) == 0)
        return path_ + QLatin1Char('/') + name;
    complain(name);
    return {};
}

} // namespace kelpa
