// What the program asks of the rest of the system. It is noted, and goes no further.
#import "tests/macos/standin/StandIns.h"

#import <ServiceManagement/ServiceManagement.h>

#include "tests/macos/runtime/Objects.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

NSString* const NSSharingServiceNameComposeEmail = @"compose email";

namespace {

NSMutableArray* notes = nil;

/// 14.2.1, unless a test names another one.
double systemVersion() {
    const char* version = std::getenv("KELPA_TEST_MACOS");
    return version ? std::atof(version) : 14.2;
}

} // namespace

void note(NSString* what, NSDictionary* with) {
    NSMutableDictionary* all = [with mutableCopy];
    [all setObject:what forKey:@"what"];
    if (!notes)
        notes = [[NSMutableArray alloc] init];
    [notes addObject:all];
}

NSArray* takeNotes() {
    NSArray* taken = notes ? notes : @[];
    notes = nil;
    return taken;
}

bool standin::systemIs(const char* needed) {
    return systemVersion() >= std::atof(std::strchr(needed, ' '));
}

@implementation NSProcessInfo (StandIn)

- (NSOperatingSystemVersion)operatingSystemVersion {
    const auto major = static_cast<NSInteger>(systemVersion());
    return {major, static_cast<NSInteger>((systemVersion() - static_cast<double>(major)) * 10 + 0.5), 1};
}

@end

@implementation SMAppService

+ (SMAppService*)mainAppService {
    return [[self alloc] init];
}

- (BOOL)registerAndReturnError:(NSError**)error {
    note(@"register", @{});
    return std::getenv("KELPA_TEST_NO_LOGIN_ITEM") == nullptr;
}

- (BOOL)unregisterAndReturnError:(NSError**)error {
    note(@"unregister", @{});
    return std::getenv("KELPA_TEST_NO_LOGIN_ITEM") == nullptr;
}

@end

extern "C" Boolean SMLoginItemSetEnabled(CFStringRef identifier, Boolean enabled) {
    note(
        @"login item",
        @{@"identifier" : (__bridge NSString*)identifier,
          @"enabled" : @(enabled != 0)});
    return true;
}

@interface SharingStandIn : NSObject
@property(nonatomic) NSString* subject;
@property(nonatomic) NSArray* recipients;
@end

@implementation SharingStandIn

- (void)performWithItems:(NSArray*)items {
    note(@"mail", @{
        @"subject" : [self subject],
        @"recipients" : [self recipients],
        @"items" : [items valueForKey:@"description"],
    });
}

@end

@implementation NSSharingService (StandIn)

+ (NSSharingService*)sharingServiceNamed:(NSString*)name {
    if (![name isEqual:NSSharingServiceNameComposeEmail])
        return nil;
    return static_cast<NSSharingService*>(static_cast<id>([[SharingStandIn alloc] init]));
}

@end

@implementation NSWorkspace (StandIn)

- (BOOL)openURL:(NSURL*)address {
    note(@"open", @{@"address" : [address absoluteString]});
    return YES;
}

@end

namespace {

void (^watchElsewhere)(NSEvent*) = nil;
NSEventMask watchedElsewhere = 0;

} // namespace

@implementation NSEvent (StandIn)

+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block {
    watchElsewhere = [block copy];
    watchedElsewhere = mask;
    return [[NSObject alloc] init];
}

@end

void standin::happenElsewhere(NSEvent* event) {
    if (watchElsewhere && (watchedElsewhere & (1ull << [event type])))
        watchElsewhere(event);
}

/// Told at once by whoever posts. Here another thread would be, although the main queue was asked for.
@interface ObserverStandIn : NSObject {
  @public
    void (^block)(NSNotification*);
}
@end

@implementation ObserverStandIn

- (void)heard:(NSNotification*)notification {
    block(notification);
}

@end

@implementation NSNotificationCenter (StandIn)

- (id)addObserverForName:(NSString*)name
                  object:(id)object
                   queue:(NSOperationQueue*)queue
              usingBlock:(GSNotificationBlock)block {
    ObserverStandIn* observer = [[ObserverStandIn alloc] init];
    observer->block = [block copy];
    [self addObserver:observer selector:@selector(heard:) name:name object:object];
    return observer;
}

@end

/// Within the process alone: the real one starts a daemon that stays.
@interface DistributedCenterStandIn : NSNotificationCenter
@end

namespace {

/// GNUstep's own helpers would write into the user's home, and stay behind.
void launchNothing(NSTask* task, SEL) {
    note(@"task", @{@"path" : [task launchPath]});
}

} // namespace

@implementation DistributedCenterStandIn

+ (void)load {
    replaceMethod("NSConcreteUnixTask", @selector(launch), reinterpret_cast<void*>(launchNothing));
}

- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(NSString*)name
                object:(NSString*)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)behavior {
    if (behavior == NSNotificationSuspensionBehaviorDeliverImmediately)
        [self addObserver:observer selector:selector name:name object:object];
}

- (void)postNotificationName:(NSString*)name
                      object:(NSString*)object
                    userInfo:(NSDictionary*)info
          deliverImmediately:(BOOL)now {
    [self postNotificationName:name object:object userInfo:info];
}

@end

@implementation NSDistributedNotificationCenter (StandIn)

+ (id)defaultCenter {
    static id center = [[DistributedCenterStandIn alloc] init];
    return center;
}

@end

@interface NSPasteboard (Private)
+ (id)_pbs;
@end

@implementation NSPasteboard (StandIn)

/// There is no server to keep what is copied.
+ (id)_pbs {
    return nil;
}

@end

extern "C" {

/// Each one is said, whoever deals with it.
void objc_exception_throw(id exception) {
    thread_local bool saying = false;
    if (!saying) {
        saying = true;
        std::fprintf(stderr, "NSException %s\n", [[exception description] UTF8String]);
        saying = false;
    }
    static const auto library = reinterpret_cast<void (*)(id)>(dlsym(RTLD_NEXT, "objc_exception_throw"));
    library(exception);
    std::abort();
}

/// Would be known all over the machine.
void NSRegisterServicesProvider(id, NSString*) {}

/// GNUstep would take it from the list of users.
NSString* NSHomeDirectory(void) {
    return [NSString stringWithUTF8String:std::getenv("HOME")];
}

NSString* NSHomeDirectoryForUser(NSString*) {
    return NSHomeDirectory();
}

} // extern "C"
