#pragma once

#import <AppKit/AppKit.h>

namespace kelpa {
class Program;
}

/// The actions by which the system asks for the settings window: the first from macOS 13 on, the second
/// before.
@protocol KelpaSettingsActions
- (void)showSettingsWindow:(id)sender;
- (void)showPreferencesWindow:(id)sender;
@end

/// What the system tells the application as a whole.
@interface KelpaDelegate : NSObject <NSApplicationDelegate, KelpaSettingsActions>
/// `program` must outlive the delegate.
- (instancetype)initWithProgram:(kelpa::Program&)program;
@end
