// What the program asks of the rest of the system. It is noted, and goes no further.
#import "platform/macos/check/standin/StandIns.h"

#import <Foundation/NSDebug.h>
#import <ServiceManagement/ServiceManagement.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

NSString* const NSSharingServiceNameComposeEmail = @"compose email";

void note(NSString* what, NSDictionary* with) {
    NSMutableDictionary* all = [with mutableCopy];
    all[@"what"] = what;
    NSArray* before = recordOf(NSApp)[@"notes"];
    recordOf(NSApp)[@"notes"] = before ? [before arrayByAddingObject:all] : @[ all ];
}

bool standin::systemIs(const char* needed) {
    return std::atof(std::getenv("KELPA_TEST_MACOS")) >= std::atof(std::strchr(needed, ' '));
}

@implementation NSProcessInfo (StandIn)

- (NSOperatingSystemVersion)operatingSystemVersion {
    NSOperatingSystemVersion version{};
    std::sscanf(std::getenv("KELPA_TEST_MACOS"), "%ld.%ld.%ld", &version.majorVersion, &version.minorVersion,
                &version.patchVersion);
    return version;
}

@end

// --- Services

@implementation SMAppService

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

- (void)performWithItems:(NSArray*)items {
    recordOf(self)[@"items"] = items;
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
@end

@implementation NSWorkspace (StandIn)

- (void)openApplicationAtURL:(NSURL*)place
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))done {
    // Said and not noted: who asks for it ends at once.
    std::fprintf(stderr, "start %s%s\n", [[place path] UTF8String],
                 [configuration activates] ? ", to the front" : "");
    NSError* damage = [NSError errorWithDomain:@"It is damaged" code:1 userInfo:nil];
    done(nil, std::getenv("KELPA_TEST_NO_LOGIN_ITEM") ? damage : nil);
}

- (BOOL)openURL:(NSURL*)address {
    note(@"open", @{@"address" : address});
    return YES;
}

@end

// --- What happens elsewhere

static void (^watchElsewhere)(NSEvent*);
static NSEventMask watchedElsewhere;

@implementation Driver (System)

/// How many objects of each class there are, by the names of the classes.
+ (id)live:(NSDictionary*)asked {
    NSMutableDictionary* all = [NSMutableDictionary dictionary];
    for (Class* each = GSDebugAllocationClassList(); *each; ++each)
        if (const int count = GSDebugAllocationCount(*each))
            all[NSStringFromClass(*each)] = @(count);
    return all;
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
    answer("NSConcreteUnixTask", "launch", nothing);
    answer("+NSPasteboard", "_pbs", nothing); // there is no server to keep what is copied
    // Whoever asks for it is told at once by whoever posts, and not by another thread.
    answer("+NSOperationQueue", "mainQueue", nothing);
    // Within the process alone: the real one starts a daemon that stays.
    answer("+NSDistributedNotificationCenter", "defaultCenter",
           [](id) -> id { return [NSNotificationCenter defaultCenter]; });
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
NSString* NSHomeDirectoryForUser(NSString*) {
    return [NSString stringWithUTF8String:std::getenv("HOME")];
}

} // extern "C"
