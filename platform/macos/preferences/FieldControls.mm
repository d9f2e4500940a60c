#import "platform/macos/preferences/Control.h"

#import <objc/runtime.h>

#import "platform/macos/Bridge.h"

namespace {

constexpr CGFloat textWidth = 240;
constexpr CGFloat numberWidth = 64;

} // namespace

@implementation KelpaTextControl {
    NSTextField* _field;
    BOOL _leaving;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    return @[ [self makeField:control width:textWidth] ];
}

- (NSTextField*)makeField:(const kelpa::PreferencesControl&)control width:(CGFloat)width {
    _field = [NSTextField textFieldWithString:@""];
    [_field setDelegate:self];
    [_field setAccessibilityLabel:kelpa::toNSString(control.label)];
    [[[_field widthAnchor] constraintEqualToConstant:width] setActive:YES];
    return _field;
}

/// Of a field that is being typed in, the text stands in the window's shared editor. A text that is there
/// already is left alone, and with it the place of the cursor.
- (void)showValue:(const kelpa::PreferencesValue&)value {
    NSString* text = kelpa::toNSString(std::get<std::string>(value));
    // While the field is left the editor may be there still, but what it holds has been taken already.
    NSText* editor = _leaving ? nil : [_field currentEditor];
    if ([text isEqualToString:editor ? [editor string] : [_field stringValue]])
        return;
    if (!editor)
        return [_field setStringValue:text];
    [editor setString:text];
    // What was typed into the text before cannot be taken back out of this one.
    [[editor undoManager] removeAllActions];
}

- (void)controlTextDidChange:(NSNotification*)notification {
    [self did:kelpa::PreferencesAct::Typed value:kelpa::toString([_field stringValue])];
}

- (void)controlTextDidEndEditing:(NSNotification*)notification {
    _leaving = YES;
    [self did:kelpa::PreferencesAct::Entered value:kelpa::toString([_field stringValue])];
    _leaving = NO;
}

@end

@implementation KelpaStepsControl

- (void)step:(int)direction {
    [self did:kelpa::PreferencesAct::Stepped value:direction];
}

/// The arrow keys step.
- (BOOL)control:(NSControl*)control textView:(NSTextView*)textView doCommandBySelector:(SEL)commandSelector {
    const bool up = sel_isEqual(commandSelector, @selector(moveUp:));
    if (!up && !sel_isEqual(commandSelector, @selector(moveDown:)))
        return NO;
    [self step:up ? 1 : -1];
    return YES;
}

@end

@implementation KelpaNumberControl {
    NSStepper* _stepper;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    NSTextField* field = [self makeField:control width:numberWidth];
    [field setAlignment:NSTextAlignmentRight];
    // The core knows the number and its limits: this stepper only tells up from down.
    _stepper = [[NSStepper alloc] initWithFrame:NSZeroRect];
    [_stepper setMinValue:-1];
    [_stepper setMaxValue:1];
    [_stepper setIncrement:1];
    [_stepper setValueWraps:NO];
    [self wire:_stepper action:@selector(stepperClicked:) as:control];
    return @[ field, _stepper ];
}

- (void)stepperClicked:(id)sender {
    const int direction = [_stepper intValue];
    [_stepper setIntValue:0];
    if (direction != 0)
        [self step:direction];
}

@end

@implementation KelpaAccumulatorControl

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    NSTextField* field = [self makeField:control width:numberWidth];
    [field setAlignment:NSTextAlignmentCenter];
    return @[
        [self makeButton:form.layout.decrease action:@selector(minusClicked:)], field,
        [self makeButton:form.layout.increase action:@selector(plusClicked:)]
    ];
}

- (void)minusClicked:(id)sender {
    [self step:-1];
}

- (void)plusClicked:(id)sender {
    [self step:1];
}

@end
