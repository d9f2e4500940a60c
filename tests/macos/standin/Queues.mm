// libdispatch: the main queue, which the driver empties, a thread for each serial queue, and timers on the
// tests' clock.
#import "tests/macos/standin/StandIns.h"

#import <dispatch/dispatch.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

@interface QueueStandIn : NSObject <OS_dispatch_queue>
- (void)add:(dispatch_block_t)block;
/// Does what there is, when it is the main queue; waits until all is done, when it is another. Whether there
/// was anything.
- (BOOL)settle;
@end

@implementation QueueStandIn {
    std::mutex _guard;
    std::condition_variable _changed;
    std::deque<dispatch_block_t> _blocks;
    BOOL _busy;
    BOOL _threaded;
}

- (instancetype)initThreaded:(BOOL)threaded {
    self = [super init];
    _threaded = threaded;
    if (threaded)
        [NSThread detachNewThreadSelector:@selector(work) toTarget:self withObject:nil];
    return self;
}

- (void)add:(dispatch_block_t)block {
    const std::lock_guard lock(_guard);
    _blocks.push_back([block copy]);
    _changed.notify_all();
}

- (void)doNext:(std::unique_lock<std::mutex>&)lock {
    @autoreleasepool {
        dispatch_block_t block = _blocks.front();
        _blocks.pop_front();
        _busy = YES;
        lock.unlock();
        block();
        block = nil;
    }
    lock.lock();
    _busy = NO;
    _changed.notify_all();
}

- (void)work {
    std::unique_lock lock(_guard);
    for (;;) {
        _changed.wait(lock, [self] { return !_blocks.empty(); });
        [self doNext:lock];
    }
}

- (BOOL)settle {
    std::unique_lock lock(_guard);
    const BOOL any = !_blocks.empty() || _busy;
    if (_threaded)
        _changed.wait(lock, [self] { return _blocks.empty() && !_busy; });
    else
        while (!_blocks.empty() && !_busy)
            [self doNext:lock];
    return any;
}

@end

namespace {

/// All of them live as long as the process.
std::vector<QueueStandIn*>& queues() {
    static auto* all = new std::vector<QueueStandIn*>{[[QueueStandIn alloc] initThreaded:NO]};
    return *all;
}

} // namespace

void standin::settleQueues() {
    for (bool any = true; any;) {
        any = false;
        for (std::size_t i = 0; i < queues().size(); ++i)
            any = [queues()[i] settle] || any;
    }
}

@interface SourceStandIn : NSObject <OS_dispatch_source> {
  @public
    QueueStandIn* queue;
    dispatch_block_t handler;
    double due;
    unsigned long number;
}
@end

@implementation SourceStandIn

- (dispatch_block_t)firing {
    SourceStandIn* source = self;
    return ^{
      // It may let go of itself.
      if (dispatch_block_t current = source->handler)
          current();
    };
}

- (dispatch_block_t)lettingGo {
    SourceStandIn* source = self;
    return ^{
      source->handler = nil;
    };
}

@end

extern "C" {

const struct dispatch_source_type_s { int unused; } _dispatch_source_type_timer = {0};

dispatch_queue_t dispatch_get_main_queue(void) {
    return queues().front();
}

/// Only ever the target of others.
dispatch_queue_t dispatch_get_global_queue(std::intptr_t, std::uintptr_t) {
    return nil;
}

dispatch_queue_t dispatch_queue_create_with_target(const char*, dispatch_queue_attr_t, dispatch_queue_t) {
    return queues().emplace_back([[QueueStandIn alloc] initThreaded:YES]);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    [static_cast<QueueStandIn*>(queue) add:block];
}

dispatch_time_t dispatch_time(dispatch_time_t, std::int64_t delta) {
    return static_cast<dispatch_time_t>(delta);
}

dispatch_source_t dispatch_source_create(dispatch_source_type_t, std::uintptr_t, std::uintptr_t,
                                         dispatch_queue_t queue) {
    SourceStandIn* source = [[SourceStandIn alloc] init];
    source->queue = static_cast<QueueStandIn*>(queue);
    return source;
}

void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, std::uint64_t,
                               std::uint64_t) {
    static_cast<SourceStandIn*>(source)->due =
        standin::now() + static_cast<double>(start) / static_cast<double>(NSEC_PER_SEC);
}

void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler) {
    static_cast<SourceStandIn*>(source)->handler = [handler copy];
}

/// The system owns a source that may still fire.
void dispatch_resume(dispatch_source_t source) {
    SourceStandIn* timer = static_cast<SourceStandIn*>(source);
    timer->number = standin::schedule(timer->due, true, [timer] { [timer->queue add:[timer firing]]; });
}

/// Lets go of the handler in its queue, as the system does.
void dispatch_source_cancel(dispatch_source_t source) {
    SourceStandIn* timer = static_cast<SourceStandIn*>(source);
    standin::callOff(timer->number);
    [timer->queue add:[timer lettingGo]];
}

} // extern "C"
