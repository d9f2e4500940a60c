#pragma once

namespace kelpa {

/// Whether it is no wonder that a process does not get on: it computes, waits for a disk, or sleeps on a
/// machine on which far more is to be done than it has processors. One that was stopped is not held up by
/// that.
[[nodiscard]] bool heldUpByWork(int pid);

} // namespace kelpa
