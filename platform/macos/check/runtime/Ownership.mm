// What the compiler's code asks of a run-time library beyond what GCC's has: messages in its form, ownership
// that it counts by itself, weak references, and blocks that are objects. Compiled without that counting, on
// which it is built.
#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>

#include "platform/macos/check/runtime/Objects.h"

#include <cstddef>
#include <cstring>
#include <mutex>
#include <sstream>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <unwind.h>

extern "C" {

IMP objc_msg_lookup(id receiver, SEL selector);
IMP objc_msg_lookup_super(struct Super* receiver, SEL selector);
Class objc_lookUpClass(const char* name);
Class objc_getMetaClass(const char* name);
Method class_getInstanceMethod(Class, SEL);
IMP method_setImplementation(Method, IMP);
BOOL class_addMethod(Class, SEL, IMP, const char* types);
SEL sel_registerName(const char*);
const char* sel_getName(SEL);
const char* sel_getTypeEncoding(SEL);
void* _Block_copy(const void*);
void _Block_release(const void*);
extern void* _NSConcreteGlobalBlock[];
extern void* _NSConcreteStackBlock[];
extern void* _NSConcreteMallocBlock[];
_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, unsigned long, _Unwind_Exception*,
                                         _Unwind_Context*);

} // extern "C"

namespace {

/// What is known of all objects. It outlives everything that runs at the end.
struct Known {
    std::recursive_mutex guard; ///< also so that no object is taken over a weak reference while it goes
    std::unordered_map<id, std::unordered_set<id*>> weakReferences;
    std::unordered_map<id, NSMutableDictionary*> records;
};

Known& known() {
    static auto* all = new Known;
    return *all;
}

/// Gives the object's record, to be let go of without the lock.
NSMutableDictionary* dissolve(id object) {
    if (const auto references = known().weakReferences.extract(object))
        for (id* place : references.mapped())
            *place = nil;
    const auto record = known().records.extract(object);
    return record ? record.mapped() : nil;
}

void release(id self, SEL) {
    std::unique_lock lock(known().guard);
    if (!NSDecrementExtraRefCountWasZero(self))
        return;
    NSMutableDictionary* record = dissolve(self);
    lock.unlock();
    [record release];
    [self dealloc];
}

NSMethodSignature* (*knownSignature)(id, SEL, SEL);

/// How a message that sets something is sent says of which types it is.
NSMethodSignature* signature(id self, SEL selector, SEL message) {
    NSMethodSignature* known = knownSignature(self, selector, message);
    if (known || std::strncmp(sel_getName(message), "set", 3) != 0)
        return known;
    return [NSMethodSignature signatureWithObjCTypes:sel_getTypeEncoding(message)];
}

Class classNamed(const char* name) {
    return *name == '+' ? objc_getMetaClass(name + 1) : objc_lookUpClass(name);
}

} // namespace

extern "C" {

/// As the compiler reads the answer to a lookup: at once, so that one a thread is enough.
struct Slot {
    void* unused[4];
    IMP method;
};

Slot* objc_msg_lookup_sender(id* receiver, SEL selector, id) {
    thread_local Slot slot;
    slot.method = objc_msg_lookup(*receiver, selector);
    return &slot;
}

Slot* objc_slot_lookup_super(Super* receiver, SEL selector) {
    thread_local Slot slot;
    slot.method = objc_msg_lookup_super(receiver, selector);
    return &slot;
}

_Unwind_Reason_Code __gnustep_objcxx_personality_v0(int version, _Unwind_Action actions, unsigned long kind,
                                                    _Unwind_Exception* exception, _Unwind_Context* context) {
    return __gxx_personality_v0(version, actions, kind, exception, context);
}

id objc_retain(id object) {
    return [object retain];
}
id objc_retainAutoreleasedReturnValue(id object) __attribute__((alias("objc_retain")));

void objc_release(id object) {
    [object release];
}

id objc_autorelease(id object) {
    return [object autorelease];
}
id objc_autoreleaseReturnValue(id object) __attribute__((alias("objc_autorelease")));

id objc_retainAutoreleaseReturnValue(id object) {
    return [[object retain] autorelease];
}

id objc_retainBlock(id block) {
    return static_cast<id>(_Block_copy(block));
}

void objc_storeStrong(id* place, id object) {
    id before = *place;
    *place = [object retain];
    [before release];
}

/// A property that copies what it is set to.
void objc_setProperty_nonatomic_copy(char* self, SEL, id value, std::ptrdiff_t offset) {
    id copied = [value copy];
    objc_storeStrong(reinterpret_cast<id*>(self + offset), copied);
    [copied release];
}

void* objc_autoreleasePoolPush() {
    return [[NSAutoreleasePool alloc] init];
}

void objc_autoreleasePoolPop(void* pool) {
    [static_cast<NSAutoreleasePool*>(pool) drain];
}

id objc_storeWeak(id* place, id object) {
    const std::lock_guard lock(known().guard);
    auto& references = known().weakReferences;
    references[*place].erase(place);
    if (object)
        references[object].insert(place);
    return *place = object;
}

id objc_initWeak(id* place, id object) {
    *place = nil;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(id* place) {
    objc_storeWeak(place, nil);
}

id objc_loadWeakRetained(id* place) {
    const std::lock_guard lock(known().guard);
    return [*place retain];
}

void objc_copyWeak(id* to, id* from) {
    const std::lock_guard lock(known().guard);
    objc_initWeak(to, *from);
}

} // extern "C"

/// Here, because no class of a library may get a method any more once blocks have theirs.
@implementation NSObject (Records)

/// What can be set there and not here is kept, an object under its name; a number comes to nothing.
- (void)forwardInvocation:(NSInvocation*)asked {
    if (id target = [self forwardingTargetForSelector:[asked selector]])
        return [asked invokeWithTarget:target];
    NSString* name = NSStringFromSelector([asked selector]);
    if (![name hasPrefix:@"set"])
        return [self doesNotRecognizeSelector:[asked selector]];
    if (*[[asked methodSignature] getArgumentTypeAtIndex:2] != '@')
        return;
    id value = nil;
    [asked getArgument:&value atIndex:2];
    NSString* first = [[name substringWithRange:NSMakeRange(3, 1)] lowercaseString];
    NSString* rest = [name substringWithRange:NSMakeRange(4, [name length] - 5)];
    [recordOf(self) setValue:value forKey:[first stringByAppendingString:rest]];
}

- (id)valueForUndefinedKey:(NSString*)key {
    return [recordOf(self) objectForKey:key];
}

@end

/// What a block answers as an object.
@interface BlockObject : NSObject
@end

@implementation BlockObject

/// The classes of blocks are empty in the blocks' own library. This one must have taken a message before it
/// stands in for them, because its table of methods is made then.
+ (void)load {
    replaceMethod("NSObject", @selector(release), reinterpret_cast<void*>(release));
    replace("NSObject", @selector(methodSignatureForSelector:), signature, knownSignature);
    GSDebugAllocationActive(YES);
    for (const char* message : {"copy", "copyWithZone:", "retain"})
        class_addMethod(self, sel_registerName(message),
                        reinterpret_cast<IMP>(reinterpret_cast<void*>(objc_retainBlock)), "@@:");
    [[[self alloc] init] dealloc];
    constexpr std::size_t size = 13 * sizeof(void*);
    for (void** kind : {_NSConcreteGlobalBlock, _NSConcreteStackBlock, _NSConcreteMallocBlock})
        std::memcpy(kind, self, size);
}

- (oneway void)release {
    _Block_release(self);
}

@end

NSMutableDictionary* recordOf(id object) {
    const std::lock_guard lock(known().guard);
    NSMutableDictionary*& record = known().records[object];
    if (!record)
        record = [[NSMutableDictionary alloc] init];
    return record;
}

NSDictionary* liveObjects() {
    NSMutableDictionary* all = [NSMutableDictionary dictionary];
    for (Class* each = GSDebugAllocationClassList(); *each; ++each)
        if (const int count = GSDebugAllocationCount(*each))
            [all setObject:[NSNumber numberWithInt:count] forKey:NSStringFromClass(*each)];
    return all;
}

void* replaceMethod(const char* owner, SEL selector, void* function) {
    return reinterpret_cast<void*>(method_setImplementation(
        class_getInstanceMethod(classNamed(owner), selector), reinterpret_cast<IMP>(function)));
}

void addMethods(const char* owner, const char* names, void* function) {
    std::istringstream each(names);
    for (std::string name; each >> name;)
        class_addMethod(classNamed(owner), sel_registerName(name.c_str()), reinterpret_cast<IMP>(function),
                        "@@:");
}

void ignoreMessages(const char* owner, const char* names) {
    static id (*const nothing)() = []() -> id { return nil; };
    addMethods(owner, names, reinterpret_cast<void*>(nothing));
}
