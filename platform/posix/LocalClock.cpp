#include "platform/posix/LocalClock.h"

#include "platform/posix/LocalTime.h"

namespace kelpa {

CivilTime LocalClock::civil(Date date) const {
    return localCivilTime(date);
}

std::optional<Date> LocalClock::date(const CivilTime& civil) const {
    return localDate(civil);
}

int LocalClock::utcOffset(Date date) const {
    return localUtcOffset(date);
}

} // namespace kelpa
