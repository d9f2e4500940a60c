// Sparkle, as far as it is asked to do something.
#import <Sparkle/Sparkle.h>

#import "platform/macos/check/standin/StandIns.h"

@implementation SPUUpdater

- (void)setAutomaticallyChecksForUpdates:(BOOL)checks {
    note(@"automatic checks", @{@"on" : @(checks)});
}

- (void)setUpdateCheckInterval:(NSTimeInterval)interval {
    note(@"check interval", @{@"seconds" : @(interval)});
}

- (void)setSendsSystemProfile:(BOOL)sends {
    note(@"system profile", @{@"on" : @(sends)});
}

- (void)checkForUpdates {
    note(@"check", @{});
}

@end

@implementation SPUStandardUpdaterController

- (instancetype)initWithStartingUpdater:(BOOL)start
                        updaterDelegate:(id)delegate
                     userDriverDelegate:(id)driver {
    self = [super init];
    _updater = [[SPUUpdater alloc] init];
    note(@"updater", @{@"started" : @(start)});
    return self;
}

@end
