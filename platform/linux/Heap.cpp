#include "platform/linux/Heap.h"

#include <malloc.h>

namespace kelpa {

namespace {

constexpr int freeBytes = 16 * 1024;
/// What the heap grows by beyond what was asked for, and keeps when it shrinks.
constexpr int spareBytes = 4 * 1024;

} // namespace

void keepHeapSmall() {
    mallopt(M_TRIM_THRESHOLD, freeBytes);
    mallopt(M_TOP_PAD, spareBytes);
}

} // namespace kelpa
