#include "platform/linux/update/Signature.h"

#include <array>
#include <optional>
#include <sodium.h>

namespace kelpa {

namespace {

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

using Key = std::array<unsigned char, crypto_sign_PUBLICKEYBYTES>;
using Seal = std::array<unsigned char, crypto_sign_BYTES>;

} // namespace

bool isSigned(std::span<const unsigned char> bytes, const std::string& signature, const std::string& key) {
    const auto seal = decoded<std::tuple_size_v<Seal>>(signature);
    const auto publicKey = decoded<std::tuple_size_v<Key>>(key);
    if (!seal || !publicKey || sodium_init() < 0)
        return false;
    return crypto_sign_verify_detached(seal->data(), bytes.data(), bytes.size(), publicKey->data()) == 0;
}

} // namespace kelpa
