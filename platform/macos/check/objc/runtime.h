#pragma once

#include <objc/objc.h>

// As much of the run-time library as the headers of GNUstep mention.
@class Protocol;
extern "C" BOOL sel_isEqual(SEL one, SEL other);
typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
extern "C" Method class_getInstanceMethod(Class owner, SEL name);
extern "C" IMP method_setImplementation(Method method, IMP implementation);
struct objc_method_description;
