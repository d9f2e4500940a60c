#include "desk/VirtualClock.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace kelpa::desk {

void VirtualClock::set(Date date) {
    offset_ = date.secondsSince1970 - time_.seconds();
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
