#import "platform/macos/windows/WindowWatch.h"

#import "platform/macos/Bridge.h"

@implementation KelpaWindowWatch {
    std::function<void()> _cameToFront;
    std::function<void()> _closing;
}

- (instancetype)initWithFront:(std::function<void()>)cameToFront closing:(std::function<void()>)closing {
    self = [super init];
    if (self) {
        _cameToFront = std::move(cameToFront);
        _closing = std::move(closing);
    }
    return self;
}

- (void)windowDidBecomeKey:(NSNotification*)notification {
    kelpa::callCore(_cameToFront);
}

- (void)windowWillClose:(NSNotification*)notification {
    kelpa::callCore(_closing);
}

@end
