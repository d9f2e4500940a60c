#pragma once

#import "platform/macos/preferences/Control.h"

/// One pane of the preferences window: sections of rows in one grid, so that the captions of all sections
/// form one right-aligned column and the controls a left-aligned one.
@interface KelpaFormView : NSView
- (instancetype)initWithPane:(const kelpa::PreferencesPane&)pane in:(const kelpa::FormContext&)form;
/// The pane's controls, in order.
@property(nonatomic, readonly) NSArray<KelpaControl*>* controls;
/// Shows or hides a row; a section whose rows are all hidden is hidden with its title.
- (void)setControl:(KelpaControl*)control visible:(BOOL)visible;
/// In points, the room beside it for what scrolls it up and down included.
- (CGFloat)neededWidth;
@end

/// What the program says of itself: its picture beside name, version, copyright and a link.
@interface KelpaAboutView : NSView
- (instancetype)initWithContent:(const kelpa::AboutContent&)content;
- (void)setCopyright:(const std::string&)line;
@end
