// What the compiler's code asks of a run-time library beyond what GCC's has: messages in its form, ownership
// that it counts by itself, weak references, and blocks that are objects. Compiled without that counting, on
// which it is built.
#import <Foundation/Foundation.h>

#include "tests/macos/runtime/Objects.h"

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
void* _Block_copy(const void*);
void _Block_release(const void*);
extern void* _NSConcreteGlobalBlock[];
extern void* _NSConcreteStackBlock[];
extern void* _NSConcreteMallocBlock[];
_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, unsigned long, _Unwind_Exception*,
                                         _Unwind_Context*);

} // extern "C"

namespace {

/// As the compiler reads the answer to a lookup.
struct Slot {
    void* owner;
    void* cachedFor;
    const char* types;
    int version;
    IMP method;
};

/// Guards everything below, and that no object is taken over a weak reference while it goes.
std::recursive_mutex& guard() {
    static auto* mutex = new std::recursive_mutex;
    return *mutex;
}

std::unordered_map<id, std::unordered_set<id*>>& weakReferences() {
    static auto* references = new std::unordered_map<id, std::unordered_set<id*>>;
    return *references;
}

std::unordered_map<id, NSMutableDictionary*>& records() {
    static auto* all = new std::unordered_map<id, NSMutableDictionary*>;
    return *all;
}

std::unordered_map<Class, long>& counts() {
    static auto* all = new std::unordered_map<Class, long>;
    return *all;
}

void forget(id* place) {
    if (!*place)
        return;
    const auto found = weakReferences().find(*place);
    if (found == weakReferences().end())
        return;
    found->second.erase(place);
    if (found->second.empty())
        weakReferences().erase(found);
}

/// Gives back what the object's record holds, to be let go of without the lock.
NSMutableDictionary* dissolve(id object) {
    if (const auto found = weakReferences().find(object); found != weakReferences().end()) {
        for (id* place : found->second)
            *place = nil;
        weakReferences().erase(found);
    }
    if (const auto counted = counts().find([object class]); counted != counts().end())
        --counted->second;
    const auto found = records().find(object);
    if (found == records().end())
        return nil;
    NSMutableDictionary* record = found->second;
    records().erase(found);
    return record;
}

void release(id self, SEL) {
    NSMutableDictionary* record = nil;
    {
        const std::lock_guard lock(guard());
        if (!NSDecrementExtraRefCountWasZero(self))
            return;
        record = dissolve(self);
    }
    [record release];
    [self dealloc];
}

id allocate(id self, SEL, NSZone* zone) {
    const std::lock_guard lock(guard());
    ++counts()[static_cast<Class>(self)];
    return NSAllocateObject(static_cast<Class>(self), 0, zone);
}

} // namespace

extern "C" {

Slot* objc_msg_lookup_sender(id* receiver, SEL selector, id) {
    // Read at once and never kept, so that one a thread is enough.
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

void objc_release(id object) {
    [object release];
}

id objc_autorelease(id object) {
    return [object autorelease];
}

id objc_retainAutorelease(id object) {
    return [[object retain] autorelease];
}

id objc_retainAutoreleaseReturnValue(id object) {
    return [[object retain] autorelease];
}

id objc_autoreleaseReturnValue(id object) {
    return [object autorelease];
}

id objc_retainAutoreleasedReturnValue(id object) {
    return [object retain];
}

id objc_unsafeClaimAutoreleasedReturnValue(id object) {
    return object;
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
    const std::lock_guard lock(guard());
    forget(place);
    *place = object;
    if (object)
        weakReferences()[object].insert(place);
    return object;
}

id objc_initWeak(id* place, id object) {
    *place = nil;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(id* place) {
    objc_storeWeak(place, nil);
}

id objc_loadWeakRetained(id* place) {
    const std::lock_guard lock(guard());
    return [*place retain];
}

id objc_loadWeak(id* place) {
    return [objc_loadWeakRetained(place) autorelease];
}

void objc_copyWeak(id* to, id* from) {
    const std::lock_guard lock(guard());
    objc_initWeak(to, *from);
}

void objc_moveWeak(id* to, id* from) {
    objc_copyWeak(to, from);
    objc_destroyWeak(from);
}

} // extern "C"

/// What a block answers as an object.
@interface BlockObject : NSObject
@end

@implementation BlockObject

/// The classes of blocks are empty in the blocks' own library. This one must have taken a message before it
/// stands in for them, because its table of methods is made then.
+ (void)load {
    replaceMethod("NSObject", @selector(release), reinterpret_cast<void*>(release));
    method_setImplementation(
        class_getInstanceMethod(objc_getMetaClass("NSObject"), @selector(allocWithZone:)),
        reinterpret_cast<IMP>(reinterpret_cast<void*>(allocate)));
    [[[self alloc] init] dealloc];
    constexpr std::size_t size = 13 * sizeof(void*);
    for (void** kind : {_NSConcreteGlobalBlock, _NSConcreteStackBlock, _NSConcreteMallocBlock})
        std::memcpy(kind, self, size);
}

- (id)copy {
    return static_cast<id>(_Block_copy(self));
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self copy];
}

- (id)retain {
    return [self copy];
}

- (oneway void)release {
    _Block_release(self);
}

@end

NSMutableDictionary* recordOf(id object) {
    const std::lock_guard lock(guard());
    NSMutableDictionary*& record = records()[object];
    if (!record)
        record = [[NSMutableDictionary alloc] init];
    return record;
}

NSDictionary* liveObjects() {
    const std::lock_guard lock(guard());
    NSMutableDictionary* all = [NSMutableDictionary dictionary];
    for (const auto& [owner, count] : std::unordered_map<Class, long>(counts()))
        if (count > 0)
            [all setObject:[NSNumber numberWithLong:count] forKey:NSStringFromClass(owner)];
    return all;
}

void* replaceMethod(const char* owner, SEL selector, void* function) {
    Method method = class_getInstanceMethod(objc_lookUpClass(owner), selector);
    return reinterpret_cast<void*>(method_setImplementation(method, reinterpret_cast<IMP>(function)));
}

void addMethods(const char* owner, const char* names, void* function) {
    std::istringstream each(names);
    for (std::string name; each >> name;)
        class_addMethod(objc_lookUpClass(owner), sel_registerName(name.c_str()),
                        reinterpret_cast<IMP>(function), "@@:");
}

void ignoreMessages(const char* owner, const char* names) {
    static id (*const nothing)() = []() -> id { return nil; };
    addMethods(owner, names, reinterpret_cast<void*>(nothing));
}
