#include "platform/linux/Memory.h"

#include <cstddef>
#include <cstdint>
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace kelpa {

namespace {

/// What is never written to is in the file as it is in memory.
bool holdsCode(const ElfW(Phdr) & segment) {
    return segment.p_type == PT_LOAD && (segment.p_flags & PF_W) == 0;
}

/// Pages of a segment that it has to itself: its neighbours may be written to.
void release(std::uintptr_t begin, std::uintptr_t end) {
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    begin = (begin + page - 1) / page * page;
    end = end / page * page;
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
}

/// The first object is the program itself; its libraries belong to others as well.
int releaseFirst(dl_phdr_info* object, std::size_t /*size*/, void* /*data*/) {
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = object->dlpi_phdr[i];
        const std::uintptr_t begin = object->dlpi_addr + segment.p_vaddr;
        if (holdsCode(segment))
            release(begin, begin + segment.p_filesz);
    }
    return 1;
}

} // namespace

void keepHeapSmall() {
    constexpr int freeBytes = 16 * 1024;
    // What the heap grows by beyond what was asked for, and keeps when it shrinks.
    constexpr int spareBytes = 4 * 1024;
    mallopt(M_TRIM_THRESHOLD, freeBytes);
    mallopt(M_TOP_PAD, spareBytes);
}

void releaseMemory() {
    malloc_trim(0);
    dl_iterate_phdr(releaseFirst, nullptr);
}

} // namespace kelpa
