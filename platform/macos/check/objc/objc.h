#pragma once

// The types of the Objective-C language itself, which belong to a run-time library that is not needed to
// check sources. Names and meanings are those of the language's documentation.
typedef struct objc_class* Class;
typedef struct objc_object* id;
typedef struct objc_selector* SEL;
typedef id (*IMP)(id, SEL, ...);
#if defined(__arm64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#define nil __null
#define Nil __null
