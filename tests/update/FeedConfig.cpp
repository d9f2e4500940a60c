#include "platform/linux/BuildConfig.h"

#include <cstdlib>

namespace kelpa::build {

namespace {

const char* given(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace

const char* const feedUrl = given("KELPA_TEST_FEED");
const char* const updateKey = given("KELPA_TEST_KEY");
const char* const updatePackage = "_amd64.deb";

} // namespace kelpa::build
