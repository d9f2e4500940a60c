// Time that only tests move on: clocks, timers, queues and the fading of windows. One thing happens at a
// time, so that nothing here needs a lock.
#import "platform/macos/check/standin/StandIns.h"

#import <dispatch/dispatch.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <map>

// --- What is due

namespace {

std::multimap<double, std::function<void()>> due;
double now = 0;

/// Does what falls due, in order.
void passTime(double seconds) {
    constexpr double rounding = 1e-6; // of intervals that were added up
    const double until = now + seconds;
    while (!due.empty() && due.begin()->first <= until + rounding)
        @autoreleasepool {
            auto next = due.extract(due.begin());
            now = std::max(now, next.key());
            next.mapped()();
        }
    now = until;
}

/// Does the work once so many seconds have passed.
void schedule(double seconds, std::function<void()> work) {
    due.emplace(now + seconds, std::move(work));
}

} // namespace

extern "C" {

double CACurrentMediaTime(void) {
    return now;
}

int __real_clock_gettime(clockid_t clock, timespec* time);
int __wrap_clock_gettime(clockid_t clock, timespec* time);

/// The wall clock starts at the second that a test names, and goes on with the other clock.
int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    if (clock != CLOCK_REALTIME)
        return __real_clock_gettime(clock, time);
    constexpr long second = 1'000'000'000;
    const auto nanoseconds = std::atol(std::getenv("KELPA_TEST_START")) * second + std::lround(now * second);
    *time = {nanoseconds / second, nanoseconds % second};
    return 0;
}

} // extern "C"

// --- Timers and sources

@interface SourceStandIn : NSObject <OS_dispatch_source>
@end

@implementation SourceStandIn
@end

@implementation NSRunLoop (StandIn)

/// Only timers that also fire while a menu is open: for those GNUstep has no mode of its run loops. Its own
/// ones, such as that of a cursor that blinks, are kept and never due.
- (void)addTimer:(NSTimer*)timer forMode:(NSString*)mode {
    schedule([mode isEqual:NSRunLoopCommonModes] ? [timer timeInterval] : HUGE_VAL, ^{
      if (![timer isValid])
          return;
      [self addTimer:timer forMode:mode];
      [timer fire];
    });
}

@end

extern "C" {

const struct dispatch_source_type_s { int unused; } _dispatch_source_type_timer = {0};

/// All queues are one.
dispatch_queue_t dispatch_get_main_queue(void) {
    return nil;
}

dispatch_queue_t dispatch_get_global_queue(std::intptr_t, std::uintptr_t) {
    return nil;
}

dispatch_queue_t dispatch_queue_create_with_target(const char*, dispatch_queue_attr_t, dispatch_queue_t) {
    return nil;
}

/// Before all that waits for a time.
void dispatch_async(dispatch_queue_t, dispatch_block_t block) {
    constexpr double longAgo = -1e9;
    schedule(longAgo, block);
}

dispatch_time_t dispatch_time(dispatch_time_t, std::int64_t delta) {
    return static_cast<dispatch_time_t>(delta);
}

/// Nobody sets the clock or lets the machine sleep, so that a time of the wall clock is a delay as well.
dispatch_time_t dispatch_walltime(const timespec* when, std::int64_t delta) {
    timespec present{};
    clock_gettime(CLOCK_REALTIME, &present);
    return static_cast<dispatch_time_t>((when->tv_sec - present.tv_sec) * 1'000'000'000 + when->tv_nsec -
                                        present.tv_nsec + delta);
}

dispatch_source_t dispatch_source_create(dispatch_source_type_t, std::uintptr_t, std::uintptr_t,
                                         dispatch_queue_t) {
    return [[SourceStandIn alloc] init];
}

void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, std::uint64_t,
                               std::uint64_t) {
    recordOf(source)[@"seconds"] = @(static_cast<double>(start) / static_cast<double>(NSEC_PER_SEC));
}

void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler) {
    recordOf(source)[@"handler"] = [handler copy];
}

/// What it is to do owns a source that may still fire.
void dispatch_resume(dispatch_source_t source) {
    __weak NSObject* timer = source;
    schedule([recordOf(source)[@"seconds"] doubleValue], ^{
      if (const dispatch_block_t handler = recordOf(timer)[@"handler"]) // which it may let go of
          handler();
    });
}

/// Lets go of what it was to do in its queue, as the system does.
void dispatch_source_cancel(dispatch_source_t source) {
    dispatch_async(nil, ^{
      [recordOf(source) removeObjectForKey:@"handler"];
    });
}

} // extern "C"

// --- Animations: frames are there at once, and a window's fading is over when its time has passed, unless
// another one took its place

static double duration; ///< of the animation that is being asked for

@implementation NSWindow (FadingStandIn)

- (void)setAlphaValue:(CGFloat)alpha {
    if (duration == 0)
        return [self setValue:@(alpha) forKey:@"_alphaValue"];
    NSObject* fading = recordOf(self)[@"fading"] = [[NSObject alloc] init];
    __weak NSWindow* faded = self;
    schedule(duration, ^{
      if (recordOf(faded)[@"fading"] == fading)
          [faded setValue:@(alpha) forKey:@"_alphaValue"];
    });
}

@end

@implementation NSAnimationContext (StandIn)

+ (void)load {
    answer("NSResponder", "animator", itself);
}

+ (void)runAnimationGroup:(void (^)(NSAnimationContext* context))group
        completionHandler:(dispatch_block_t)done {
    group([[NSAnimationContext alloc] init]);
    if (done)
        schedule(duration, done);
    duration = 0;
}

- (void)setDuration:(NSTimeInterval)seconds {
    duration = seconds;
}

@end

// --- For the driver

void driver::pass(double seconds) {
    passTime(seconds);
    for (int round = 0; round < 3; ++round) {
        dealWithEvents([NSDate distantPast]);
        passTime(0);
    }
    for (NSWindow* window in [NSApp windows])
        if ([window isVisible])
            [[window contentView] layOutAll];
}
