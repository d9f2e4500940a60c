#include "logging/FileLogging.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace kelpa {

namespace {

struct Decoded {
    std::uint32_t codePoint;
    std::size_t length;
};

std::uint8_t byteAt(std::string_view text, std::size_t at) {
    return static_cast<std::uint8_t>(text[at]);
}

std::size_t sequenceLength(std::uint8_t lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool allowed(std::uint32_t codePoint, std::size_t length) {
    constexpr std::uint32_t lowest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    return codePoint >= lowest[length] && codePoint <= 0x10FFFF && !surrogate;
}

std::optional<Decoded> decode(std::string_view text, std::size_t at) {
    const std::size_t length = sequenceLength(byteAt(text, at));
    if (length == 0 || at + length > text.size())
        return std::nullopt;
    std::uint32_t codePoint = length == 1 ? byteAt(text, at) : byteAt(text, at) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, at + i) & 0xC0) != 0x80)
            return std::nullopt;
        codePoint = codePoint << 6 | (byteAt(text, at + i) & 0x3F);
    }
    if (!allowed(codePoint, length))
        return std::nullopt;
    return Decoded{codePoint, length};
}

/// The last character that each encoding has a place for, in the order of the encodings.
constexpr std::array<std::uint32_t, 3> highestCodePoints = {0x10FFFF, 0x7F, 0xFF};

} // namespace

std::optional<std::string> encoded(std::string_view utf8, TextEncoding encoding) {
    const std::uint32_t highest = highestCodePoints.at(static_cast<std::size_t>(encoding));
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto character = decode(utf8, at);
        if (!character || character->codePoint > highest)
            return std::nullopt;
        if (encoding == TextEncoding::Utf8)
            bytes.append(utf8.substr(at, character->length));
        else
            bytes.push_back(static_cast<char>(character->codePoint));
        at += character->length;
    }
    return bytes;
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

FileLogging::FileLogging(std::filesystem::path localFile, const Clock& clock)
    : localFile_(std::move(localFile)), stream_(std::make_shared<FileHandlerOutputStream>(localFile_)),
      clock_(clock) {}

std::unique_ptr<FileLogHandler> FileLogging::handler(const std::string& label) const {
    return std::make_unique<FileLogHandler>(label, *this);
}

Logger FileLogging::logger(const std::string& label, const std::filesystem::path& localFile,
                           const Clock& clock) {
    return Logger(label, std::make_unique<FileLogHandler>(label, localFile, clock));
}

} // namespace kelpa
