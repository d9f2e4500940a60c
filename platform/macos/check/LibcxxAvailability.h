#pragma once

// Before anything else: libc++ says of its parts in which macOS they first were, but only to a compiler for
// macOS. This one compiles for macOS with the C library of this machine and hides that from the other
// headers, so that the marks have to be switched on by hand.
#include <__config>
#undef _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS
#define __APPLE__ 1
#include <__availability>
#undef __APPLE__
// <chrono> names the parts of <format> without using them. That nobody uses them is checked by name.
#undef _LIBCPP_AVAILABILITY_FORMAT
#define _LIBCPP_AVAILABILITY_FORMAT
