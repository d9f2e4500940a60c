#pragma once

// The library's header uses a word as a name that C++ keeps for itself, and a warning about the way around
// that helps nobody.
#pragma GCC system_header

#include <xcb/xcb.h>
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
