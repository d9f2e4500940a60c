#pragma once

namespace kelpa {

/// Makes free memory at the end of the heap go back to the system from some kilobytes on, and not from a
/// hundred. What the program needs for a moment, such as the pictures of its item on their way to a panel,
/// would else be kept for ever. Call before anything else.
void keepHeapSmall();

/// Gives the system back what lies free between what is used, and unmaps the program's own code, of which
/// what runs from now on comes back from the system's file cache, a few pages at a time. To be called when
/// something is over that needed much of both and that does not come again soon, as the start and windows do.
/// A debugger's breakpoints go with the pages.
void releaseMemory();

} // namespace kelpa
