// Whatever lies where the settings should be is read or refused, and what was read is the same once it was
// written.
#include "platform/linux/store/PlistDocument.h"

#include <cstdint>

namespace {

std::string written(const kelpa::PlistDocument& document) {
    kelpa::PlistDocument copy;
    for (const auto& [key, value] : document.values())
        copy.set(key, value);
    return copy.xml();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using kelpa::PlistDocument;
    const auto document = PlistDocument::parse(std::string(reinterpret_cast<const char*>(data), size));
    if (!document)
        return 0;
    const std::string once = written(*document);
    const auto again = PlistDocument::parse(once);
    if (!again || written(*again) != once)
        __builtin_trap();
    return 0;
}
