#pragma once

#include <objc/objc.h>

// As much of the run-time library as is mentioned in the headers of GNUstep and used here. A compiler that
// counts owners by itself cannot read the library's own.
typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
struct objc_method_description;
extern "C" BOOL sel_isEqual(SEL one, SEL other);
extern "C" Method class_getInstanceMethod(Class owner, SEL name);
extern "C" void method_exchangeImplementations(Method one, Method other);
