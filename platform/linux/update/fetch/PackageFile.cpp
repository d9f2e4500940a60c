#include "platform/linux/update/fetch/PackageFile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <array>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sodium.h>
#include <sys/stat.h>

namespace kelpa {

namespace {

constexpr int asFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
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

/// Nothing unless the text is base64 of exactly so many bytes.
template <std::size_t Size>
std::optional<std::array<unsigned char, Size>> decoded(const std::string& base64) {
    std::array<unsigned char, Size> bytes{};
    std::size_t length = 0;
    const int result = sodium_base642bin(bytes.data(), Size, base64.data(), base64.size(), " \t\r\n", &length,
                                         nullptr, sodium_base64_VARIANT_ORIGINAL);
    if (result != 0 || length != Size)
        return std::nullopt;
    return bytes;
}

} // namespace

PackageFile::PackageFile(const QString& folder, const QString& ending)
    : path_(QDir::cleanPath(folder)), ending_(ending) {
    openFolder();
    if (error_.empty())
        removeEarlier();
    if (error_.empty())
        create();
}

PackageFile::~PackageFile() {
    if (file_.isOpen())
        ::unlinkat(folder_.get(), unverified, 0);
}

void PackageFile::openFolder() {
    const QFileInfo own(path_);
    const QFileInfo around(own.path());
    QDir().mkpath(around.path());
    folder_ = Descriptor(::open(QFile::encodeName(around.path()).constData(), asFolder));
    if (!folder_)
        complain(around.path());
    enter(around.fileName());
    enter(own.fileName());
    if (error_.empty() && ::fchmod(folder_.get(), S_IRWXU) != 0)
        complain(path_);
}

void PackageFile::enter(const QString& name) {
    if (!error_.empty())
        return;
    const QByteArray bytes = QFile::encodeName(name);
    ::mkdirat(folder_.get(), bytes.constData(), S_IRWXU);
    Descriptor inner(::openat(folder_.get(), bytes.constData(), asFolder | O_NOFOLLOW));
    if (!inner)
        return complain(name);
    folder_ = std::move(inner);
}

void PackageFile::complain(const QString& name) {
    const bool isNoFolder = errno == ENOTDIR || errno == ELOOP;
    const std::string why = isNoFolder ? "it is a link, or no folder" : std::strerror(errno);
    error_ = "downloads cannot go to " + path_.toStdString() + ": " + name.toStdString() + ": " + why;
}

/// Nothing but its name and its kind tells who made it.
bool PackageFile::isDownload(const char* name) const {
    const QString text = QFile::decodeName(name);
    const bool isOurs = text == QLatin1String(unverified) ||
                        (text.startsWith(QLatin1String(keptStart)) && text.endsWith(ending_));
    struct stat status {};
    return isOurs && isThere(folder_.get(), name, status) && S_ISREG(status.st_mode);
}

void PackageFile::removeEarlier() {
    // The descriptor is the listing's and is closed with it.
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(::openat(folder_.get(), ".", asFolder)),
                                                      ::closedir);
    if (!entries)
        return complain(path_);
    while (const dirent* entry = ::readdir(entries.get()))
        if (isDownload(entry->d_name))
            ::unlinkat(folder_.get(), entry->d_name, 0);
}

void PackageFile::create() {
    constexpr int asNewFile = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const int file = ::openat(folder_.get(), unverified, asNewFile, S_IRUSR | S_IWUSR);
    if (file < 0)
        complain(QLatin1String(unverified));
    else if (!file_.open(file, QFile::ReadWrite | QFile::Unbuffered, QFile::AutoCloseHandle))
        complainOfFile();
}

QString PackageFile::path() const {
    return path_ + QLatin1Char('/') + QLatin1String(unverified);
}

bool PackageFile::append(QByteArrayView bytes) {
    if (file_.write(bytes.data(), bytes.size()) != bytes.size()) {
        complainOfFile();
        return false;
    }
    size_ += bytes.size();
    return true;
}

bool PackageFile::isSigned(const std::string& signature, const std::string& key) {
    const auto seal = decoded<crypto_sign_BYTES>(signature);
    const auto publicKey = decoded<crypto_sign_PUBLICKEYBYTES>(key);
    const unsigned char* bytes = size_ > 0 ? file_.map(0, size_) : nullptr;
    if (!seal || !publicKey || bytes == nullptr || sodium_init() < 0)
        return false;
    const auto size = static_cast<unsigned long long>(size_);
    return crypto_sign_verify_detached(seal->data(), bytes, size, publicKey->data()) == 0;
}

QString PackageFile::keepAs(const QString& version) {
    const QString name = QLatin1String(keptStart) + tame(version) + ending_;
    const QByteArray bytes = QFile::encodeName(name);
    struct stat status {};
    if (isThere(folder_.get(), bytes.constData(), status)) {
        errno = EEXIST;
    } else if (::renameat(folder_.get(), unverified, folder_.get(), bytes.constData()) == 0) {
        file_.close();
        return path_ + QLatin1Char('/') + name;
    }
    complain(name);
    return {};
}

QString versionInside(const QString& package) {
    constexpr int patience = 10'000; // milliseconds
    QProcess reader;
    reader.setStandardErrorFile(QProcess::nullDevice());
    reader.start(QStringLiteral("dpkg-deb"), {QStringLiteral("--field"), package, QStringLiteral("Version")});
    const bool ended = reader.waitForFinished(patience) && reader.exitStatus() == QProcess::NormalExit;
    if (!ended || reader.exitCode() != 0)
        return {};
    const QString version = QString::fromUtf8(reader.readAllStandardOutput()).trimmed();
    return version.mid(version.indexOf(QLatin1Char(':')) + 1);
}

} // namespace kelpa
