// What the compiler's code asks of a run-time library beyond what GCC's has: messages in its form, ownership
// that it counts by itself, weak references, and blocks that are objects. Compiled without that counting, on
// which it is built.
#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>

#include "platform/macos/check/runtime/Objects.h"

#include <objc/message.h>
#include <objc/runtime.h>

#include <cstring>
#include <sstream>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <unwind.h>

extern "C" {

extern void* _NSConcreteGlobalBlock[];
extern void* _NSConcreteStackBlock[];
extern void* _NSConcreteMallocBlock[];
_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, unsigned long, _Unwind_Exception*,
                                         _Unwind_Context*);

} // extern "C"

namespace {

/// What is known of an object beyond its instance variables.
struct Known {
    std::unordered_set<id*> weakPlaces;
    NSMutableDictionary* record = nil;
};

/// It outlives everything that runs at the end. Nothing guards it: the program has one thread.
std::unordered_map<id, Known>& known() {
    static auto* all = new std::unordered_map<id, Known>;
    return *all;
}

/// "title" of "setTitle", and of a message that makes something "identifier" of "requestWithIdentifier".
NSString* keyOf(NSString* part) {
    const NSRange before = [part rangeOfString:[part hasPrefix:@"set"] ? @"set" : @"With"];
    if (before.length == 0)
        return part;
    NSString* first = [part substringWithRange:NSMakeRange(NSMaxRange(before), 1)];
    return [[first lowercaseString] stringByAppendingString:[part substringFromIndex:NSMaxRange(before) + 1]];
}

/// Keeps what comes with a message that nobody has, each part under its name.
void keepArguments(id keeper, NSInvocation* asked) {
    union {
        id object;
        SEL action;
        double number;
        BOOL flag;
    } value;
    NSArray* parts = [NSStringFromSelector([asked selector]) componentsSeparatedByString:@":"];
    for (NSUInteger i = 0; i + 1 < [parts count]; ++i) {
        const char type = *[[asked methodSignature] getArgumentTypeAtIndex:i + 2];
        if (!std::strchr("@:dC", type))
            continue;
        [asked getArgument:&value atIndex:i + 2];
        if (type == ':')
            [keeper setAction:value.action];
        else
            [keeper setValue:type == '@'   ? value.object
                             : type == 'd' ? @(value.number)
                                           : @(value.flag)
                      forKey:keyOf([parts objectAtIndex:i])];
    }
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

Slot* objc_slot_lookup_super(objc_super* receiver, SEL selector) {
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

void* objc_autoreleasePoolPush() {
    return [[NSAutoreleasePool alloc] init];
}

void objc_autoreleasePoolPop(void* pool) {
    [static_cast<NSAutoreleasePool*>(pool) drain];
}

/// What stands in a place that is new to it is of no matter.
id objc_storeWeak(id* place, id object) {
    if (const auto before = known().find(*place); before != known().end())
        before->second.weakPlaces.erase(place);
    if (object)
        known()[object].weakPlaces.insert(place);
    return *place = object;
}
id objc_initWeak(id* place, id object) __attribute__((alias("objc_storeWeak")));

void objc_destroyWeak(id* place) {
    objc_storeWeak(place, nil);
}

id objc_loadWeakRetained(id* place) {
    return [*place retain];
}

void objc_copyWeak(id* to, id* from) {
    objc_initWeak(to, *from);
}

} // extern "C"

/// Here, because no class of a library may get a method any more once blocks have theirs.
@implementation NSObject (Records)

- (oneway void)release {
    if (!NSDecrementExtraRefCountWasZero(self))
        return;
    if (const auto found = known().extract(self)) {
        for (id* place : found.mapped().weakPlaces)
            *place = nil;
        [found.mapped().record release];
    }
    [self dealloc];
}

/// What nobody has is of the types that it is sent with.
- (NSMethodSignature*)methodSignatureForSelector:(SEL)message {
    const Method method = class_getInstanceMethod(object_getClass(self), message);
    const char* types = method ? method_getTypeEncoding(method) : sel_getTypeEncoding(message);
    return [NSMethodSignature signatureWithObjCTypes:types];
}

/// What can be set there and not here is kept.
- (void)forwardInvocation:(NSInvocation*)asked {
    if (id target = [self forwardingTargetForSelector:[asked selector]])
        return [asked invokeWithTarget:target];
    NSString* name = NSStringFromSelector([asked selector]);
    if ([name hasPrefix:@"set"])
        return keepArguments(recordOf(self), asked);
    id kept = [recordOf(self) objectForKey:name];
    if (!kept)
        return [self doesNotRecognizeSelector:[asked selector]];
    [asked setReturnValue:&kept];
}

/// A class makes an object that keeps what it is made with. One that is made without anything is always the
/// same.
+ (void)forwardInvocation:(NSInvocation*)asked {
    NSString* name = NSStringFromSelector([asked selector]);
    id made = [recordOf(self) objectForKey:name];
    if (!made)
        made = [[[self alloc] init] autorelease];
    keepArguments(made, asked);
    if (![name hasSuffix:@":"])
        [recordOf(self) setObject:made forKey:name];
    [asked setReturnValue:&made];
}

- (void)setValue:(id)value forUndefinedKey:(NSString*)key {
    [recordOf(self) setValue:value forKey:key];
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
    GSDebugAllocationActive(YES);
    answer("BlockObject", "copy copyWithZone: retain", objc_retainBlock);
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
    NSMutableDictionary*& record = known()[object].record;
    if (!record)
        record = [[NSMutableDictionary alloc] init];
    return record;
}

void answer(const char* owner, const char* names, id (*method)(id object)) {
    const Class all = *owner == '+' ? objc_getMetaClass(owner + 1) : objc_lookUpClass(owner);
    std::istringstream each(names);
    for (std::string name; each >> name;)
        class_replaceMethod(all, sel_registerName(name.c_str()),
                            reinterpret_cast<IMP>(reinterpret_cast<void*>(method)), "@@:");
}
