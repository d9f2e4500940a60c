// Sparkle, as far as it is asked to do something.
#import <Sparkle/Sparkle.h>

#import "platform/macos/check/standin/StandIns.h"

@implementation SPUUpdater

- (void)checkForUpdates {
    note(@"check", recordOf(self));
}

@end

@implementation SPUStandardUpdaterController

- (instancetype)initWithStartingUpdater:(BOOL)start
                        updaterDelegate:(id)delegate
                     userDriverDelegate:(id)driver {
    self = [super init];
    _updater = [[SPUUpdater alloc] init];
    recordOf(_updater)[@"started"] = @(start);
    return self;
}

@end
