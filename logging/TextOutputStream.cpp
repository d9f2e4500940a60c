#include "logging/TextOutputStream.h"

#include "logging/TextEncoder.h"

#include <cerrno>
#include <system_error>

namespace kelpa {

void StandardOutputStream::write(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

FileHandlerOutputStream::FileHandlerOutputStream(const std::filesystem::path& localFile,
                                                 TextEncoding encoding)
    : encoding_(encoding) {
    std::error_code ignored;
    const auto found = std::filesystem::status(localFile, ignored);
    const bool existed = std::filesystem::exists(found);
    // Opening a pipe would wait for its other end for ever.
    if (std::filesystem::is_fifo(found))
        throw std::system_error(EINVAL, std::generic_category(), localFile.string());
    fileHandle_ = std::fopen(localFile.string().c_str(), "ab");
    if (!fileHandle_ && !existed)
        throw CouldNotCreateFile("couldNotCreateFile");
    if (!fileHandle_)
        throw std::system_error(errno, std::generic_category(), localFile.string());
    using std::filesystem::perms;
    if (std::filesystem::is_regular_file(std::filesystem::symlink_status(localFile, ignored)))
        std::filesystem::permissions(localFile, perms::owner_read | perms::owner_write, ignored);
    // Each line goes out whole and at once: whoever reads the log after a crash finds the last words in it.
    std::setvbuf(fileHandle_, nullptr, _IONBF, 0);
}

FileHandlerOutputStream::~FileHandlerOutputStream() {
    std::fclose(fileHandle_);
}

void FileHandlerOutputStream::write(std::string_view text) {
    if (const auto data = encoded(text, encoding_))
        std::fwrite(data->data(), 1, data->size(), fileHandle_);
}

} // namespace kelpa
