#include "StoreFixture.h"

#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>

// This program counts what the store does: its own versions of these stand before the C library's.
namespace {
int looks = 0;
int allocations = 0;
} // namespace

extern "C" int stat(const char* path, struct stat* status) noexcept {
    ++looks;
    return fstatat(AT_FDCWD, path, status, 0);
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kelpa::test {
namespace {

TEST_F(PlistStoreTest, aReadCostsOneLookAtTheFileAndNoMemory) {
    constexpr int reads = 100;
    store.setBoolean("show_time_in_status_bar", true);
    usleep(60'000); // beyond the grain of time stamps
    EXPECT_EQ(store.boolean("show_time_in_status_bar"), true);
    looks = allocations = 0;
    int found = 0;
    for (int i = 0; i < reads; ++i)
        found += store.boolean("show_time_in_status_bar") == true ? 1 : 0;
    const int memory = allocations;
    EXPECT_EQ(found, reads);
    EXPECT_EQ(looks, reads);
    EXPECT_EQ(memory, 0);
}

} // namespace
} // namespace kelpa::test
