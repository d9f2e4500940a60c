#pragma once

#include_next <objc/objc.h>

// As in Apple's header. The library's names `id`, which a variable may be called.
#undef nil
#define nil __null
