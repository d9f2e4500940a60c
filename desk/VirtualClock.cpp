#include "desk/VirtualClock.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace kelpa::desk {

namespace {

constexpr double microseconds = 1e6; // in a second

} // namespace

void VirtualClock::set(Date date) {
    offset_ = std::llround(date.secondsSince1970 * microseconds) - time_.microseconds();
}

void VirtualClock::step(double seconds) {
    constexpr std::int64_t farthest = 4'000'000'000'000'000'000;
    offset_ = std::clamp<std::int64_t>(offset_ + std::llround(seconds * microseconds), -farthest, farthest);
}

Date VirtualClock::now() const {
    return Date{static_cast<double>(offset_ + time_.microseconds()) / microseconds};
}

bool VirtualClock::setZone(const std::string& name) {
    const std::filesystem::path database = "/usr/share/zoneinfo";
    const bool known = !name.empty() && name.front() != '/' && name.find("..") == std::string::npos &&
                       std::filesystem::is_regular_file(database / name);
    if (!known && name != "UTC")
        return false;
    return ::setenv("TZ", name == "UTC" ? "UTC0" : (":" + name).c_str(), 1) == 0;
}

} // namespace kelpa::desk
