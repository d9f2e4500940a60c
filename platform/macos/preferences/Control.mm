#import "platform/macos/preferences/Control.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"

namespace {

constexpr CGFloat spacing = 4;
/// Explanations go on to the next line rather than make the window wider.
constexpr CGFloat explanationWidth = 240;

NSTextField* smallText(NSColor* color) {
    NSTextField* label = [NSTextField wrappingLabelWithString:@""];
    [label setFont:[NSFont systemFontOfSize:[NSFont smallSystemFontSize]]];
    [label setTextColor:color];
    [label setSelectable:NO];
    [label setPreferredMaxLayoutWidth:explanationWidth];
    [label setHidden:YES];
    return label;
}

/// An empty text takes no room.
void explain(NSTextField* label, const kelpa::PreferencesValue& value) {
    NSString* text = kelpa::toNSString(std::get<std::string>(value));
    [label setStringValue:text];
    [label setHidden:[text length] == 0];
}

} // namespace

/// A line of views above the lines that explain it. Its baseline, at which the caption beside it stands, is
/// that of the words in the first line, which stand in the middle of it; stacks promise none of their own.
@interface KelpaControlCell : NSStackView
@end

@implementation KelpaControlCell

- (CGFloat)firstBaselineOffsetFromTop {
    NSStackView* line = static_cast<NSStackView*>([[self arrangedSubviews] firstObject]);
    const CGFloat height = [line fittingSize].height;
    for (NSView* view in [line arrangedSubviews])
        if (const CGFloat baseline = [view firstBaselineOffsetFromTop]; baseline > 0)
            return (height - [view fittingSize].height) / 2 + baseline;
    return 0;
}

@end

@implementation KelpaControl {
    std::string _name;
    kelpa::PreferencesClient* _client;
    NSArray<NSView*>* _views;
    NSTextField* _hint;
    NSTextField* _problem;
    NSStackView* _cell;
}

- (instancetype)initWithControl:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    self = [super init];
    if (self) {
        _name = control.id;
        _client = &form.client;
        _hint = smallText([NSColor secondaryLabelColor]);
        _problem = smallText([NSColor systemRedColor]);
        _views = [self makeViews:control in:form];
        [self fillCell:control];
    }
    return self;
}

- (void)fillCell:(const kelpa::PreferencesControl&)control {
    NSStackView* line = [NSStackView stackViewWithViews:_views];
    [line setSpacing:spacing];
    if (!control.unit.empty())
        [line addArrangedSubview:kelpa::makeLabel(control.unit)];
    _cell = [KelpaControlCell stackViewWithViews:@[ line, _hint, _problem ]];
    kelpa::asColumn(_cell, NSLayoutAttributeLeading, spacing);
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    return @[];
}

- (NSView*)cell {
    return _cell;
}

- (const std::string&)name {
    return _name;
}

- (void)show:(kelpa::PreferencesField)field value:(const kelpa::PreferencesValue&)value {
    switch (field) {
    case kelpa::PreferencesField::Entries:
        return [self showEntries:std::get<std::vector<kelpa::PreferencesEntry>>(value)];
    case kelpa::PreferencesField::Value:
        return [self showValue:value];
    case kelpa::PreferencesField::Hint:
        return explain(_hint, value);
    case kelpa::PreferencesField::Problem:
        return explain(_problem, value);
    case kelpa::PreferencesField::Enabled:
        return [self setEnabled:std::get<bool>(value)];
    case kelpa::PreferencesField::Visible:
        return;
    }
}

- (void)showValue:(const kelpa::PreferencesValue&)value {
}

- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries {
}

- (void)wire:(NSControl*)view action:(SEL)action as:(const kelpa::PreferencesControl&)control {
    [view setTarget:self];
    [view setAction:action];
    [view setAccessibilityLabel:kelpa::toNSString(control.label)];
}

- (NSButton*)makeButton:(const kelpa::SymbolButton&)button action:(SEL)action {
    NSImage* image = [NSImage imageWithSystemSymbolName:kelpa::toNSString(button.symbol)
                               accessibilityDescription:kelpa::toNSString(button.name)];
    return [NSButton buttonWithImage:image target:self action:action];
}

- (void)did:(kelpa::PreferencesAct)act value:(const kelpa::PreferencesValue&)value {
    kelpa::callCore([&] { _client->did(_name, act, value); });
}

- (void)setEnabled:(BOOL)enabled {
    for (NSView* view in _views)
        if ([view respondsToSelector:@selector(setEnabled:)])
            [static_cast<NSControl*>(view) setEnabled:enabled];
}

@end

namespace kelpa {

namespace {

Class classOf(PreferencesControlKind kind) {
    switch (kind) {
    case PreferencesControlKind::Switch:
        return [KelpaSwitchControl class];
    case PreferencesControlKind::Number:
        return [KelpaNumberControl class];
    case PreferencesControlKind::Accumulator:
        return [KelpaAccumulatorControl class];
    case PreferencesControlKind::Text:
        return [KelpaTextControl class];
    case PreferencesControlKind::Button:
        return [KelpaButtonControl class];
    case PreferencesControlKind::Picker:
        return [KelpaPickerControl class];
    case PreferencesControlKind::Segments:
        return [KelpaSegmentsControl class];
    case PreferencesControlKind::TimeOfDay:
        return [KelpaTimeControl class];
    case PreferencesControlKind::Tiles:
        return [KelpaTilesControl class];
    case PreferencesControlKind::TimePoints:
        return [KelpaTimePointsControl class];
    case PreferencesControlKind::Prompts:
        return [KelpaPromptsControl class];
    }
    fatalError("A control of the preferences window has no kind");
}

} // namespace

KelpaControl* makeControl(const PreferencesControl& control, const FormContext& form) {
    return [[classOf(control.kind) alloc] initWithControl:control in:form];
}

} // namespace kelpa
