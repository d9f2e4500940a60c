// Clocks and timers that only tests move on.
#import "tests/macos/standin/StandIns.h"

#import <Foundation/Foundation.h>

#include "tests/macos/runtime/Objects.h"

#include <cstdlib>
#include <ctime>
#include <map>
#include <mutex>
#include <optional>

namespace standin {

namespace {

struct Due {
    double when;
    bool common;
    std::function<void()> work;
};

std::mutex guard;
std::map<unsigned long, Due> schedule_;
unsigned long lastNumber = 0;
double now_ = 0;
bool menuOpen = false;

/// The earliest that is due until then; of two at the same time the one that was asked for first.
std::optional<Due> takeNext(double until) {
    constexpr double rounding = 1e-6; // of intervals that were added up
    const std::lock_guard lock(guard);
    auto next = schedule_.end();
    for (auto each = schedule_.begin(); each != schedule_.end(); ++each)
        if (each->second.when <= until + rounding && (each->second.common || !menuOpen) &&
            (next == schedule_.end() || each->second.when < next->second.when))
            next = each;
    if (next == schedule_.end())
        return std::nullopt;
    Due due = std::move(next->second);
    schedule_.erase(next);
    now_ = std::max(now_, due.when);
    return due;
}

} // namespace

double now() {
    const std::lock_guard lock(guard);
    return now_;
}

unsigned long schedule(double due, bool common, std::function<void()> work) {
    const std::lock_guard lock(guard);
    schedule_.emplace(++lastNumber, Due{due, common, std::move(work)});
    return lastNumber;
}

void callOff(unsigned long number) {
    std::function<void()> work; // what it owns goes without the lock
    const std::lock_guard lock(guard);
    if (const auto found = schedule_.find(number); found != schedule_.end()) {
        work = std::move(found->second.work);
        schedule_.erase(found);
    }
}

void pass(double seconds) {
    const double until = now() + seconds;
    settleQueues();
    while (auto due = takeNext(until)) {
        @autoreleasepool {
            due->work();
            due.reset();
            settleQueues();
        }
    }
    const std::lock_guard lock(guard);
    now_ = until;
}

void setMenuOpen(bool open) {
    menuOpen = open;
}

} // namespace standin

extern "C" {

double CACurrentMediaTime(void) {
    return standin::now();
}

int __real_clock_gettime(clockid_t clock, timespec* time);
int __wrap_clock_gettime(clockid_t clock, timespec* time);

/// The wall clock starts at the second that a test names, and goes on with the other clock.
int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    const char* start = std::getenv("KELPA_TEST_START");
    if (clock != CLOCK_REALTIME || !start)
        return __real_clock_gettime(clock, time);
    const double seconds = std::atof(start) + standin::now();
    time->tv_sec = static_cast<time_t>(seconds);
    time->tv_nsec = static_cast<long>((seconds - static_cast<double>(time->tv_sec)) * 1e9);
    return 0;
}

} // extern "C"

@interface TimerStandIn : NSObject
- (void)waitIn:(NSString*)mode;
@end

namespace {

using AddTimer = void (*)(id, SEL, id, id);
AddTimer addRealTimer = nullptr;

void addTimer(id loop, SEL selector, id timer, id mode) {
    if ([timer isKindOfClass:[TimerStandIn class]])
        [static_cast<TimerStandIn*>(timer) waitIn:mode];
    else
        addRealTimer(loop, selector, timer, mode);
}

} // namespace

@implementation TimerStandIn {
    NSTimeInterval _interval;
    void (^_block)(NSTimer*);
    BOOL _repeats;
    BOOL _common;
    double _due;
    unsigned long _number;
}

+ (void)load {
    addRealTimer = reinterpret_cast<AddTimer>(
        replaceMethod("NSRunLoop", @selector(addTimer:forMode:), reinterpret_cast<void*>(addTimer)));
}

- (instancetype)initWithInterval:(NSTimeInterval)interval
                         repeats:(BOOL)repeats
                           block:(void (^)(NSTimer*))block {
    self = [super init];
    if (self) {
        _interval = interval;
        _repeats = repeats;
        _block = [block copy];
        _due = standin::now() + interval;
    }
    return self;
}

- (void)setTolerance:(NSTimeInterval)tolerance {
}

/// A run loop owns its timers.
- (void)waitIn:(NSString*)mode {
    _common = [mode isEqual:NSRunLoopCommonModes];
    [self wait];
}

- (void)wait {
    TimerStandIn* timer = self;
    _number = standin::schedule(_due, _common, [timer] { [timer fire]; });
}

- (void)fire {
    _due += _interval;
    if (_repeats)
        [self wait];
    if (void (^const block)(NSTimer*) = _block)
        block(reinterpret_cast<NSTimer*>(self));
}

- (void)invalidate {
    standin::callOff(_number);
    _block = nil;
}

@end

@implementation NSTimer (StandIn)

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block {
    return static_cast<NSTimer*>(static_cast<id>([[TimerStandIn alloc] initWithInterval:interval
                                                                                repeats:repeats
                                                                                  block:block]));
}

@end
