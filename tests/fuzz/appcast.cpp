// Whatever a server sends is read or refused, and what was read can be chosen from.
#include "platform/linux/update/Appcast.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelpa;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto items =
        parseAppcast(bytes, QUrl(QStringLiteral("https://updates.kelpa.example/feed/appcast.xml")));
    if (!items)
        return 0;
    const AppcastReader reader{QStringLiteral("5"), QStringLiteral("12.0.0"), QStringLiteral("_amd64.deb")};
    const auto news = newestFor(reader, *items);
    if (const auto* offer = std::get_if<AppcastOffer>(&news);
        offer != nullptr && !offer->package.address.path().endsWith(reader.packageEnding))
        __builtin_trap();
    return 0;
}
