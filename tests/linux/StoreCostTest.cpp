#include "StoreFixture.h"
#include "tests/support/Allocations.h"

#include <fcntl.h>
#include <sys/stat.h>

// This program counts what the store asks of the system: its own version stands before the C library's.
namespace {
int looks = 0;
} // namespace

extern "C" int stat(const char* path, struct stat* status) noexcept {
    ++looks;
    return fstatat(AT_FDCWD, path, status, 0);
}

namespace kelpa::test {
namespace {

TEST_F(PlistStoreTest, aReadCostsOneLookAtTheFileAndNoMemory) {
    constexpr int reads = 100;
    store.set("show_time_in_status_bar", true);
    usleep(60'000); // beyond the grain of time stamps
    EXPECT_EQ(store.get<bool>("show_time_in_status_bar"), true);
    looks = 0;
    const std::size_t before = allocations();
    int found = 0;
    for (int i = 0; i < reads; ++i)
        found += store.get<bool>("show_time_in_status_bar") == true ? 1 : 0;
    const std::size_t memory = allocations() - before;
    EXPECT_EQ(found, reads);
    EXPECT_EQ(looks, reads);
    EXPECT_EQ(memory, 0);
}

} // namespace
} // namespace kelpa::test
