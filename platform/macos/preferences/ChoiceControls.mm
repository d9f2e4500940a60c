#import "platform/macos/preferences/Control.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/TileGrid.h"

#include "platform/ports/Measures.h"

namespace {

constexpr CGFloat pickerWidth = 100;

} // namespace

@implementation KelpaSwitchControl {
    NSSwitch* _switch;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    _switch = [[NSSwitch alloc] initWithFrame:NSZeroRect];
    [self wire:_switch action:@selector(switched:) as:control];
    return @[ _switch, kelpa::makeLabel(control.label) ];
}

- (void)switched:(id)sender {
    [self did:kelpa::PreferencesAct::Entered value:[_switch state] == NSControlStateValueOn];
}

- (void)showValue:(const kelpa::PreferencesValue&)value {
    [_switch setState:std::get<bool>(value) ? NSControlStateValueOn : NSControlStateValueOff];
}

@end

@implementation KelpaButtonControl

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    return @[ [NSButton buttonWithTitle:kelpa::toNSString(control.label)
                                 target:self
                                 action:@selector(pressed:)] ];
}

- (void)pressed:(id)sender {
    [self did:kelpa::PreferencesAct::Pressed value:kelpa::PreferencesValue()];
}

@end

@implementation KelpaPickerControl {
    NSPopUpButton* _picker;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    _picker = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
    [self wire:_picker action:@selector(picked:) as:control];
    [[[_picker widthAnchor] constraintGreaterThanOrEqualToConstant:pickerWidth] setActive:YES];
    return @[ _picker ];
}

- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries {
    NSInteger chosen = [_picker selectedTag];
    [_picker removeAllItems];
    // Into the menu itself: the list's own way would drop an entry whose text is there twice.
    for (const kelpa::PreferencesEntry& choice : entries) {
        NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:kelpa::toNSString(choice.text)
                                                      action:nullptr
                                               keyEquivalent:@""];
        [item setTag:choice.value];
        [[_picker menu] addItem:item];
    }
    [_picker selectItemWithTag:chosen];
}

- (void)showValue:(const kelpa::PreferencesValue&)value {
    if (![_picker selectItemWithTag:std::get<std::int64_t>(value)])
        [_picker selectItem:nil];
}

- (void)picked:(id)sender {
    [self did:kelpa::PreferencesAct::Entered value:std::int64_t{[_picker selectedTag]}];
}

@end

@implementation KelpaSegmentsControl {
    NSSegmentedControl* _segments;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    _segments = [[NSSegmentedControl alloc] initWithFrame:NSZeroRect];
    [self wire:_segments action:@selector(picked:) as:control];
    return @[ _segments ];
}

- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries {
    [_segments setSegmentCount:static_cast<NSInteger>(entries.size())];
    NSInteger segment = 0;
    for (const kelpa::PreferencesEntry& choice : entries) {
        [_segments setLabel:kelpa::toNSString(choice.text) forSegment:segment];
        [_segments setTag:choice.value forSegment:segment];
        ++segment;
    }
}

- (void)showValue:(const kelpa::PreferencesValue&)value {
    NSInteger chosen = -1;
    for (NSInteger segment = 0; segment < [_segments segmentCount]; ++segment)
        if ([_segments tagForSegment:segment] == std::get<std::int64_t>(value))
            chosen = segment;
    [_segments setSelectedSegment:chosen];
}

- (void)picked:(id)sender {
    const std::int64_t value = [_segments tagForSegment:[_segments selectedSegment]];
    [self did:kelpa::PreferencesAct::Entered value:value];
}

@end

@implementation KelpaTilesControl {
    KelpaTileGrid* _grid;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    __weak KelpaTilesControl* weakSelf = self;
    _grid = [[KelpaTileGrid alloc] initWithColumns:kelpa::measures::tileColumns
                                            chosen:^(std::int64_t value) {
                                              [weakSelf picked:value];
                                            }];
    [_grid setAccessibilityLabel:kelpa::toNSString(control.label)];
    return @[ _grid ];
}

- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries {
    std::vector<std::pair<std::int64_t, std::string>> tiles;
    for (const kelpa::PreferencesEntry& choice : entries)
        tiles.emplace_back(choice.value, choice.text);
    [_grid setEntries:tiles];
}

- (void)showValue:(const kelpa::PreferencesValue&)value {
    [_grid choose:std::get<std::int64_t>(value)];
}

- (void)picked:(std::int64_t)value {
    [self did:kelpa::PreferencesAct::Entered value:value];
}

@end
