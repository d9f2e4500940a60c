#pragma once

#import <AppKit/AppKit.h>

/// The actions by which the system asks for the settings window: the first from macOS 13 on, the second
/// before.
@protocol KelpaSettingsActions
- (void)showSettingsWindow:(id)sender;
- (void)showPreferencesWindow:(id)sender;
@end
