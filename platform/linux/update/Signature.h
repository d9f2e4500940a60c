#pragma once

#include <span>
#include <string>

namespace kelpa {

/// Whether whoever holds the other half of `key` signed exactly these bytes. Key and signature are Ed25519 in
/// base64; a text that is none signs nothing.
[[nodiscard]] bool isSigned(std::span<const unsigned char> bytes, const std::string& signature,
                            const std::string& key);

} // namespace kelpa
