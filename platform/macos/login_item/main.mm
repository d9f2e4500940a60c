#import <AppKit/AppKit.h>

namespace {

/// The application whose bundle this helper lies in:
/// Kelpa.app/Contents/Library/LoginItems/KelpaLoginItem.app.
NSURL* application() {
    NSURL* place = [[NSBundle mainBundle] bundleURL];
    for (int level = 0; level < 4; ++level)
        place = [place URLByDeletingLastPathComponent];
    return place;
}

/// As when the system opened it again itself: to open it once more would ask it for a window.
bool runs(NSURL* place) {
    NSString* identifier = [[NSBundle bundleWithURL:place] bundleIdentifier];
    return identifier &&
           [[NSRunningApplication runningApplicationsWithBundleIdentifier:identifier] count] > 0;
}

} // namespace

/// Starts the application when the user logs in, and ends. Only systems before macOS 13 need it: later ones
/// start the application themselves.
int main() {
    @autoreleasepool {
        if (runs(application()))
            return 0;
        NSApplication* helper = [NSApplication sharedApplication];
        NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
        // Nobody asked for it just now, so that whatever the user does keeps the keyboard.
        [configuration setActivates:NO];
        [[NSWorkspace sharedWorkspace] openApplicationAtURL:application()
                                              configuration:configuration
                                          completionHandler:^(NSRunningApplication*, NSError* error) {
                                            if (error)
                                                NSLog(@"Kelpa could not be started: %@", error);
                                            dispatch_async(dispatch_get_main_queue(), ^{
                                              [helper terminate:nil];
                                            });
                                          }];
        [helper run];
    }
    return 0;
}
