#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/PreferencesWindow.h"

namespace kelpa {

/// What all controls of a window have in common. The layout is looked at while views are made; the client
/// must outlive the controls.
struct FormContext {
    const PreferencesLayout& layout;
    PreferencesClient& client;
};

} // namespace kelpa

/// One control of the preferences window: what its cell shows, and what a person does in it. Each kind of
/// control is a class of its own that makes its views and shows what it can in them.
@interface KelpaControl : NSObject
- (instancetype)initWithControl:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form;

/// What goes into the cell: the control and its unit on one line, hint and problem below.
@property(nonatomic, readonly) NSView* cell;
/// The control's name in the core.
@property(nonatomic, readonly) const std::string& name;
/// Shows a value in a field; the row's visibility is the form's affair.
- (void)show:(kelpa::PreferencesField)field value:(const kelpa::PreferencesValue&)value;

/// For the kinds: the views that make up the control, in their order from left to right.
- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form;

- (void)showValue:(const kelpa::PreferencesValue&)value;
- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries;
- (void)setEnabled:(BOOL)enabled;
/// Makes a view act on the control, and gives it the control's name for who does not see it.
- (void)wire:(NSControl*)view action:(SEL)action as:(const kelpa::PreferencesControl&)control;
/// A button of the control's own that shows a symbol.
- (NSButton*)makeButton:(const kelpa::SymbolButton&)button action:(SEL)action;
/// Tells the core what a person did.
- (void)did:(kelpa::PreferencesAct)act value:(const kelpa::PreferencesValue&)value;
@end

/// On or off, with its label beside it.
@interface KelpaSwitchControl : KelpaControl
@end

/// Something that is done at a press.
@interface KelpaButtonControl : KelpaControl
@end

/// A drop-down list.
@interface KelpaPickerControl : KelpaControl
@end

/// Entries side by side.
@interface KelpaSegmentsControl : KelpaControl
@end

/// Entries in a grid.
@interface KelpaTilesControl : KelpaControl
@end

/// One line of text.
@interface KelpaTextControl : KelpaControl <NSTextFieldDelegate>
@end

/// A field of digits in which a number goes up and down by steps.
@interface KelpaStepsControl : KelpaTextControl
@end

/// With a stepper behind it.
@interface KelpaNumberControl : KelpaStepsControl
@end

/// Between a minus and a plus button.
@interface KelpaAccumulatorControl : KelpaStepsControl
@end

/// Hour and minute, in the user's own way of writing them.
@interface KelpaTimeControl : KelpaControl
@end

/// A grid of times of day, each with its remove button, and a last tile that adds one.
@interface KelpaTimePointsControl : KelpaControl <NSPopoverDelegate>
@end

/// A scrolling list of texts to add to, edit in place, delete from and reset.
@interface KelpaPromptsControl
    : KelpaControl <NSTableViewDataSource, NSTableViewDelegate, NSTextFieldDelegate>
@end

namespace kelpa {

/// A control of the right kind.
[[nodiscard]] KelpaControl* makeControl(const PreferencesControl& control, const FormContext& form);

} // namespace kelpa
