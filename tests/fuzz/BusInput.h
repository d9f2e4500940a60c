#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>

namespace kelpa::fuzz {

/// Takes the input apart.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
    [[nodiscard]] bool empty() const { return left_ == 0; }
    std::uint8_t next() {
        if (left_ == 0)
            return 0;
        --left_;
        return *data_++;
    }
    std::string text() {
        std::string text;
        for (std::uint8_t length = next() % 16; length > 0; --length)
            text += static_cast<char>(next());
        return text;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};

inline void appendBasic(sd_bus_message* message, char type, Bytes& bytes) {
    const std::string text = bytes.text();
    // Small numbers as they are, and those that are odd in every size of number.
    const std::uint64_t byte = bytes.next();
    const std::uint64_t number = byte < 0x80 ? byte : byte * 0x0101010101010101ULL;
    const int truth = static_cast<int>(number & 1);
    if (type == 's' || type == 'o' || type == 'g')
        sd_bus_message_append_basic(message, type, text.c_str());
    else if (type == 'b')
        sd_bus_message_append_basic(message, type, &truth);
    else
        sd_bus_message_append_basic(message, type, &number);
}

inline void appendVariant(sd_bus_message* message, Bytes& bytes, int depth) {
    constexpr std::string_view kinds = "sogbynqiuxtdvA";
    const char kind = kinds[bytes.next() % kinds.size()];
    if (kind == 'A' || (kind == 'v' && depth > 20)) {
        sd_bus_message_open_container(message, 'v', "as");
        sd_bus_message_open_container(message, 'a', "s");
        appendBasic(message, 's', bytes);
        sd_bus_message_close_container(message);
    } else {
        const std::array<char, 2> contents{kind, '\0'};
        sd_bus_message_open_container(message, 'v', contents.data());
        if (kind == 'v')
            appendVariant(message, bytes, depth + 1);
        else
            appendBasic(message, kind, bytes);
    }
    sd_bus_message_close_container(message);
}

/// How many signs of the signature the first type in it takes.
inline std::size_t lengthOfType(std::string_view signature) {
    if (signature[0] == 'a')
        return 1 + lengthOfType(signature.substr(1));
    if (signature[0] != '(')
        return 1;
    std::size_t length = 1;
    while (signature[length] != ')')
        length += lengthOfType(signature.substr(length));
    return length + 1;
}

/// Values of these types.
inline void append(sd_bus_message* message, std::string_view signature, Bytes& bytes) {
    while (!signature.empty()) {
        const std::size_t length = lengthOfType(signature);
        const std::string type(signature.substr(0, length));
        signature.remove_prefix(length);
        if (type[0] == 'v') {
            appendVariant(message, bytes, 0);
        } else if (type[0] == 'a') {
            sd_bus_message_open_container(message, 'a', type.c_str() + 1);
            for (int count = bytes.next() % 8; count > 0; --count)
                append(message, type.substr(1), bytes);
            sd_bus_message_close_container(message);
        } else if (type[0] == '(') {
            const std::string members = type.substr(1, type.size() - 2);
            sd_bus_message_open_container(message, 'r', members.c_str());
            append(message, members, bytes);
            sd_bus_message_close_container(message);
        } else {
            appendBasic(message, type[0], bytes);
        }
    }
}

} // namespace kelpa::fuzz
