#include "platform/linux/update/fetch/PackageFile.h"

#include "platform/linux/update/Signature.h"

#include <QDir>

namespace kelpa {

PackageFile::PackageFile(const QString& folder)
    : folder_(folder), file_(folder + QStringLiteral("/unverified")) {
    if (!QDir().mkpath(folder_)) {
        error_ = "the folder " + folder_.toStdString() + " cannot be made";
        return;
    }
    QFile::setPermissions(folder_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    empty();
    if (!file_.open(QFile::ReadWrite | QFile::NewOnly | QFile::Unbuffered))
        complain();
}

PackageFile::~PackageFile() {
    if (file_.isOpen())
        file_.remove();
}

/// What earlier downloads left behind.
void PackageFile::empty() const {
    const QDir folder(folder_);
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System))
        QFile::remove(folder.filePath(name));
}

void PackageFile::complain() {
    error_ = file_.errorString().toStdString();
}

bool PackageFile::append(QByteArrayView bytes) {
    if (file_.write(bytes.data(), bytes.size()) != bytes.size()) {
        complain();
        return false;
    }
    size_ += bytes.size();
    return true;
}

bool PackageFile::isSigned(const std::string& signature, const std::string& key) {
    const unsigned char* bytes = size_ > 0 ? file_.map(0, size_) : nullptr;
    return bytes != nullptr && kelpa::isSigned({bytes, static_cast<std::size_t>(size_)}, signature, key);
}

QString PackageFile::keepAs(const QString& name) {
    const QString path = folder_ + QLatin1Char('/') + name;
    if (!file_.rename(path)) {
        complain();
        return {};
    }
    file_.close();
    return path;
}

} // namespace kelpa
