// Time that only tests move on: clocks, timers, queues and the fading of windows. One thing happens at a
// time, so that nothing here needs a lock.
#import "platform/macos/check/standin/StandIns.h"

#import <dispatch/dispatch.h>

#include <cstdlib>
#include <ctime>
#include <map>
#include <thread>

// --- What is due

namespace standin {

namespace {

std::map<Ticket, std::function<void()>> schedule_;
double now_ = 0;

} // namespace

Ticket schedule(double seconds, std::function<void()> work) {
    static unsigned long number = 0;
    const Ticket ticket{now_ + seconds, ++number};
    schedule_.emplace(ticket, std::move(work));
    return ticket;
}

void callOff(const Ticket& ticket) {
    schedule_.extract(ticket);
}

void pass(double seconds) {
    constexpr double rounding = 1e-6; // of intervals that were added up
    const double until = now_ + seconds;
    while (!schedule_.empty() && schedule_.begin()->first.first <= until + rounding)
        @autoreleasepool {
            auto next = schedule_.extract(schedule_.begin());
            now_ = std::max(now_, next.key().first);
            next.mapped()();
        }
    now_ = until;
}

} // namespace standin

extern "C" {

double CACurrentMediaTime(void) {
    return standin::now_;
}

int __real_clock_gettime(clockid_t clock, timespec* time);
int __wrap_clock_gettime(clockid_t clock, timespec* time);

/// The wall clock starts at the second that a test names, and goes on with the other clock.
int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    const char* start = std::getenv("KELPA_TEST_START");
    if (clock != CLOCK_REALTIME || !start)
        return __real_clock_gettime(clock, time);
    const double seconds = std::atof(start) + standin::now_;
    time->tv_sec = static_cast<time_t>(seconds);
    time->tv_nsec = static_cast<long>((seconds - static_cast<double>(time->tv_sec)) * 1e9);
    return 0;
}

} // extern "C"

// --- Timers and sources

/// What a timer or a source waits for.
@interface SourceStandIn : NSObject <OS_dispatch_source> {
  @public
    dispatch_queue_t queue;
    dispatch_block_t handler;
    double seconds;
    standin::Ticket ticket;
}
@end

namespace {

void waitFor(NSTimer* timer) {
    SourceStandIn* waiting = [[SourceStandIn alloc] init];
    waiting->ticket = standin::schedule([timer timeInterval], [timer] {
        waitFor(timer);
        [timer fire];
    });
    recordOf(timer)[@"waiting"] = waiting;
}

void (*addRealTimer)(id, SEL, NSTimer*, NSString*);
void (*invalidate)(NSTimer*, SEL);

/// Only timers that also fire while a menu is open: for those GNUstep has no mode of its run loops.
void addTimer(id loop, SEL selector, NSTimer* timer, NSString* mode) {
    if ([mode isEqual:NSRunLoopCommonModes])
        waitFor(timer);
    else
        addRealTimer(loop, selector, timer, mode);
}

void invalidateTimer(NSTimer* timer, SEL selector) {
    if (SourceStandIn* waiting = recordOf(timer)[@"waiting"])
        standin::callOff(waiting->ticket);
    invalidate(timer, selector);
}

} // namespace

@implementation SourceStandIn

+ (void)load {
    replace("NSRunLoop", @selector(addTimer:forMode:), addTimer, addRealTimer);
    replace("NSTimer", @selector(invalidate), invalidateTimer, invalidate);
}

@end

extern "C" {

const struct dispatch_source_type_s { int unused; } _dispatch_source_type_timer = {0};

dispatch_queue_t dispatch_get_main_queue(void) {
    static id queue = [[NSObject alloc] init];
    return queue;
}

dispatch_queue_t dispatch_get_global_queue(std::intptr_t, std::uintptr_t) {
    return nil;
}

dispatch_queue_t dispatch_queue_create_with_target(const char*, dispatch_queue_attr_t, dispatch_queue_t) {
    id queue = [[NSObject alloc] init];
    return queue;
}

/// Before all that waits for a time; on a thread of its own for any other queue than the main one.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    constexpr double longAgo = -1e9;
    standin::schedule(longAgo, [queue, block] {
        if (queue == dispatch_get_main_queue())
            return block();
        std::thread([block] {
            @autoreleasepool {
                block();
            }
        }).join();
    });
}

dispatch_time_t dispatch_time(dispatch_time_t, std::int64_t delta) {
    return static_cast<dispatch_time_t>(delta);
}

/// Nobody sets the clock or lets the machine sleep, so that a time of the wall clock is a delay as well.
dispatch_time_t dispatch_walltime(const timespec* when, std::int64_t delta) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<dispatch_time_t>((when->tv_sec - now.tv_sec) * 1'000'000'000 + when->tv_nsec -
                                        now.tv_nsec + delta);
}

dispatch_source_t dispatch_source_create(dispatch_source_type_t, std::uintptr_t, std::uintptr_t,
                                         dispatch_queue_t queue) {
    SourceStandIn* source = [[SourceStandIn alloc] init];
    source->queue = queue;
    return source;
}

void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, std::uint64_t,
                               std::uint64_t) {
    static_cast<SourceStandIn*>(source)->seconds =
        static_cast<double>(start) / static_cast<double>(NSEC_PER_SEC);
}

void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler) {
    static_cast<SourceStandIn*>(source)->handler = [handler copy];
}

/// The system owns a source that may still fire.
void dispatch_resume(dispatch_source_t source) {
    SourceStandIn* timer = static_cast<SourceStandIn*>(source);
    timer->ticket = standin::schedule(timer->seconds, [timer] {
        dispatch_async(timer->queue, ^{
          if (dispatch_block_t handler = timer->handler) // which it may let go of
              handler();
        });
    });
}

/// Lets go of the handler in its queue, as the system does.
void dispatch_source_cancel(dispatch_source_t source) {
    SourceStandIn* timer = static_cast<SourceStandIn*>(source);
    standin::callOff(timer->ticket);
    dispatch_async(timer->queue, ^{
      timer->handler = nil;
    });
}

} // extern "C"

// --- Animations: frames are there at once, and a window's fading is over when its time has passed, unless
// another one took its place

static NSTimeInterval duration;

@interface FadingStandIn : NSObject
@property(nonatomic, weak) NSWindow* window;
@end

@implementation FadingStandIn

- (void)setAlphaValue:(CGFloat)alpha {
    recordOf([self window])[@"fading"] = self;
    standin::schedule(duration, [self, alpha] {
        if (recordOf([self window])[@"fading"] == self)
            [[self window] setAlphaValue:alpha];
    });
}

@end

@implementation NSView (TimeStandIn)

- (id)animator {
    return self;
}

@end

@implementation NSWindow (TimeStandIn)

- (id)animator {
    FadingStandIn* fading = [[FadingStandIn alloc] init];
    [fading setWindow:self];
    return fading;
}

@end

@implementation NSAnimationContext (StandIn)

+ (void)runAnimationGroup:(void (^)(NSAnimationContext* context))group
        completionHandler:(dispatch_block_t)done {
    group([[NSAnimationContext alloc] init]);
    if (done)
        standin::schedule(duration, done);
}

- (void)setDuration:(NSTimeInterval)seconds {
    duration = seconds;
}

@end

// --- For the driver

void driver::pass(double seconds) {
    standin::pass(seconds);
    for (int round = 0; round < 3; ++round) {
        while (NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                   untilDate:[NSDate distantPast]
                                                      inMode:NSDefaultRunLoopMode
                                                     dequeue:YES])
            [NSApp sendEvent:event];
        standin::pass(0);
    }
    for (NSWindow* window in [NSApp windows])
        if ([window isVisible])
            [[window contentView] layOutAll];
}
