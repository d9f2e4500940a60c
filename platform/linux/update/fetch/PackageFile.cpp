#include "platform/linux/update/fetch/PackageFile.h"

#include "platform/linux/update/Signature.h"

namespace kelpa {

PackageFile::PackageFile(const QString& folder, const QString& ending) : folder_(folder, ending) {
    if (folder_.error().empty())
        folder_.empty();
    const int descriptor = folder_.error().empty() ? folder_.create() : -1;
    if (descriptor < 0)
        error_ = folder_.error();
    else if (!file_.open(descriptor, QFile::ReadWrite | QFile::Unbuffered, QFile::AutoCloseHandle))
        complain();
}

PackageFile::~PackageFile() {
    if (file_.isOpen())
        folder_.discard();
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

QString PackageFile::keepAs(const QString& version) {
    const QString path = folder_.keep(version);
    if (path.isEmpty())
        error_ = folder_.error();
    else
        file_.close();
    return path;
}

} // namespace kelpa
