#include "platform/linux/windows/JsonWriter.h"

#include <array>

namespace kelpa {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

unsigned byteAt(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

/// How many bytes the lead byte of a sequence announces; 0 for one that can lead none.
std::size_t announced(unsigned lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if ((lead & 0xF0U) == 0xE0)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// Whether the second byte makes the sequence too long for its character, a surrogate or beyond Unicode.
bool outOfRange(unsigned lead, unsigned second) {
    return (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
           (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
}

/// The bytes of the character at a place; 0 where there is none.
std::size_t characterLength(std::string_view text, std::size_t at) {
    const std::size_t length = announced(byteAt(text, at));
    for (std::size_t i = 1; i < length; ++i)
        if ((byteAt(text, at + i) & 0xC0U) != 0x80)
            return 0;
    return length > 1 && outOfRange(byteAt(text, at), byteAt(text, at + 1)) ? 0 : length;
}

std::string controlCharacter(unsigned code) {
    constexpr std::string_view digits = "0123456789abcdef";
    return std::string("\\u00") + digits[code >> 4U] + digits[code & 0xFU];
}

} // namespace

void JsonWriter::separate() {
    if (afterValue_)
        written_ += ',';
    afterValue_ = false;
}

void JsonWriter::quote(std::string_view value) {
    written_ += '"';
    for (std::size_t at = 0; at < value.size();) {
        const std::size_t length = characterLength(value, at);
        const unsigned code = byteAt(value, at);
        if (length == 0)
            written_ += replacement;
        else if (length == 1 && code < 0x20)
            written_ += controlCharacter(code);
        else if (code == '"' || code == '\\')
            (written_ += '\\') += static_cast<char>(code);
        else
            written_ += value.substr(at, length);
        at += length == 0 ? 1 : length;
    }
    written_ += '"';
}

JsonWriter& JsonWriter::beginObject() {
    separate();
    written_ += '{';
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    written_ += '}';
    afterValue_ = true;
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    separate();
    written_ += '[';
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    written_ += ']';
    afterValue_ = true;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    quote(name);
    written_ += ':';
    return *this;
}

JsonWriter& JsonWriter::text(std::string_view value) {
    separate();
    quote(value);
    afterValue_ = true;
    return *this;
}

JsonWriter& JsonWriter::number(std::int64_t value) {
    separate();
    written_ += std::to_string(value);
    afterValue_ = true;
    return *this;
}

} // namespace kelpa
