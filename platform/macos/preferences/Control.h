#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/PreferencesWindow.h"

/// One control of the preferences window: what its cell shows, and what a person does in it. Each kind of
/// control is a class of its own that overrides what it can show; told of anything else it does nothing.
@interface KelpaControl : NSObject
/// `client` must outlive the control.
- (instancetype)initWithControl:(const kelpa::PreferencesControl&)control
                         layout:(const kelpa::PreferencesLayout&)layout
                         client:(kelpa::PreferencesClient&)client;

/// What goes into the cell: the control and its unit on one line, hint and problem below.
@property(nonatomic, readonly) NSView* cell;
/// The control's name in the core.
@property(nonatomic, readonly) const std::string& name;
@property(nonatomic, readonly) kelpa::PreferencesClient& client;

/// For the kinds: the views that make up the control, in their order from left to right.
- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout;

- (void)setOn:(BOOL)on;
- (void)setText:(NSString*)text;
- (void)setChoices:(const std::vector<kelpa::PreferencesChoice>&)choices;
- (void)setChosen:(std::int64_t)value;
- (void)setHour:(int)hour minute:(int)minute;
- (void)setTimePoints:(const std::vector<kelpa::TimePoint>&)points;
- (void)setPrompts:(const std::vector<std::string>&)prompts;
- (void)setHint:(NSString*)hint;
- (void)setProblem:(NSString*)problem;
- (void)setEnabled:(BOOL)enabled;
@end

namespace kelpa {

/// A control of the right kind.
[[nodiscard]] KelpaControl* makeControl(const PreferencesControl& control, const PreferencesLayout& layout,
                                        PreferencesClient& client);

} // namespace kelpa
