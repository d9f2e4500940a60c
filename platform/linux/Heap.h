#pragma once

namespace kelpa {

/// Makes free memory at the end of the heap go back to the system from some kilobytes on, and not from a
/// hundred. What the program needs for a moment, such as the pictures of its item on their way to a panel,
/// would else be kept for ever. To be called before there are threads.
void keepHeapSmall();

} // namespace kelpa
