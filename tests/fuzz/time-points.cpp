// Whatever is stored as time points is read or refused, and what was read is the same once it was written.
#include "water/WaterDates.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelpa;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    (void)dateFromText(text);
    const auto points = timePointsFromText(text);
    if (points && timePointsFromText(timePointsText(*points)) != points)
        __builtin_trap();
    return 0;
}
