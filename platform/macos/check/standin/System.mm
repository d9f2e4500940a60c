// What the program asks of the rest of the system. It is noted, and goes no further.
#import "platform/macos/check/standin/StandIns.h"

#import <ServiceManagement/ServiceManagement.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

NSString* const NSSharingServiceNameComposeEmail = @"compose email";

namespace {

NSMutableArray* notes;

/// As a number with one decimal; 14.2 unless a test names another one.
double systemVersion() {
    const char* version = std::getenv("KELPA_TEST_MACOS");
    return version ? std::atof(version) : 14.2;
}

} // namespace

void note(NSString* what, NSDictionary* with) {
    NSMutableDictionary* all = [with mutableCopy];
    all[@"what"] = what;
    if (!notes)
        notes = [NSMutableArray array];
    [notes addObject:all];
}

bool standin::systemIs(const char* needed) {
    return systemVersion() >= std::atof(std::strchr(needed, ' '));
}

@implementation NSProcessInfo (StandIn)

- (NSOperatingSystemVersion)operatingSystemVersion {
    const double version = systemVersion();
    const auto major = static_cast<NSInteger>(version);
    return {major, static_cast<NSInteger>((version - static_cast<double>(major)) * 10 + 0.5), 1};
}

@end

// --- Services

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
    return YES;
}

@end

extern "C" Boolean SMLoginItemSetEnabled(CFStringRef identifier, Boolean enabled) {
    note(
        @"login item",
        @{@"identifier" : (__bridge NSString*)identifier,
          @"enabled" : @(enabled != 0)});
    return true;
}

@implementation NSSharingService (StandIn)

+ (NSSharingService*)sharingServiceNamed:(NSString*)name {
    return [name isEqual:NSSharingServiceNameComposeEmail] ? [[self alloc] init] : nil;
}

- (void)performWithItems:(NSArray*)items {
    recordOf(self)[@"items"] = [items valueForKey:@"description"];
    note(@"mail", recordOf(self));
}

@end

@implementation NSRunningApplication (StandIn)

+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    const char* running = std::getenv("KELPA_TEST_RUNS");
    return running && [identifier isEqual:@(running)] ? @[ @"it" ] : @[];
}

@end

@implementation NSWorkspaceOpenConfiguration

+ (instancetype)configuration {
    return [[self alloc] init];
}

@end

@implementation NSWorkspace (StandIn)

- (void)openApplicationAtURL:(NSURL*)place
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))done {
    // Said and not noted: who asks for it ends at once.
    std::fprintf(stderr, "start %s%s\n", [[place path] UTF8String],
                 [configuration activates] ? ", to the front" : "");
    done(nil, std::getenv("KELPA_TEST_NO_LOGIN_ITEM") ? [NSError errorWithDomain:@"It is damaged"
                                                                            code:1
                                                                        userInfo:nil]
                                                      : nil);
}

- (BOOL)openURL:(NSURL*)address {
    note(@"open", @{@"address" : [address absoluteString]});
    return YES;
}

@end

// --- What happens elsewhere

namespace {

void (^watchElsewhere)(NSEvent*);
NSEventMask watchedElsewhere;

id (*observe)(id, SEL, NSString*, id, NSOperationQueue*, GSNotificationBlock);

/// Told at once by whoever posts. Here another thread would be, although the main queue was asked for.
id observeAtOnce(id center, SEL selector, NSString* name, id object, NSOperationQueue*,
                 GSNotificationBlock block) {
    return observe(center, selector, name, object, nil, block);
}

} // namespace

@implementation Driver (System)

/// What was noted since the last time.
+ (id)notes:(NSDictionary*)asked {
    id taken = notes ? notes : @[];
    notes = nil;
    return taken;
}

+ (id)live:(NSDictionary*)asked {
    return liveObjects();
}

+ (id)elsewhere:(NSDictionary*)asked {
    const auto type = static_cast<NSEventType>([asked[@"type"] integerValue]);
    if (watchElsewhere && (watchedElsewhere & (1ull << type)))
        watchElsewhere(nil); // of which nobody asks more
    return nil;
}

+ (id)post:(NSDictionary*)asked {
    [[NSDistributedNotificationCenter defaultCenter] postNotificationName:asked[@"name"] object:nil];
    return nil;
}

@end

@implementation NSEvent (StandIn)

+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block {
    watchElsewhere = [block copy];
    watchedElsewhere = mask;
    return @"monitor";
}

@end

@implementation NSNotificationCenter (StandIn)

/// GNUstep's own helpers, which it starts as tasks, would write into the user's home, and stay behind.
+ (void)load {
    static void (*const launchNothing)(NSTask*, SEL) = [](NSTask*, SEL) {};
    replaceMethod("NSConcreteUnixTask", @selector(launch), reinterpret_cast<void*>(launchNothing));
    replace("NSNotificationCenter", @selector(addObserverForName:object:queue:usingBlock:), observeAtOnce,
            observe);
}

- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(NSString*)name
                object:(NSString*)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)behavior {
    if (behavior == NSNotificationSuspensionBehaviorDeliverImmediately)
        [self addObserver:observer selector:selector name:name object:object];
}

@end

@implementation NSDistributedNotificationCenter (StandIn)

/// Within the process alone: the real one starts a daemon that stays.
+ (id)defaultCenter {
    static id center = [[NSNotificationCenter alloc] init];
    return center;
}

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
    std::fprintf(stderr, "NSException %s\n", [[exception description] UTF8String]);
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
