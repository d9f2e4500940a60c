#import "platform/macos/preferences/ChoiceControls.h"

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

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    (void)layout;
    _switch = [[NSSwitch alloc] initWithFrame:NSZeroRect];
    [_switch setTarget:self];
    [_switch setAction:@selector(switched:)];
    [_switch setAccessibilityLabel:kelpa::toNSString(control.label)];
    return @[ _switch, kelpa::makeLabel(control.label, [NSFont systemFontOfSize:0], [NSColor labelColor]) ];
}

- (void)switched:(id)sender {
    (void)sender;
    const bool on = [_switch state] == NSControlStateValueOn;
    kelpa::callCore([&] { [self client].switched([self name], on); });
}

- (void)setOn:(BOOL)on {
    [_switch setState:on ? NSControlStateValueOn : NSControlStateValueOff];
}

@end

@implementation KelpaPickerControl {
    NSPopUpButton* _picker;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    (void)layout;
    _picker = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
    [_picker setTarget:self];
    [_picker setAction:@selector(picked:)];
    [_picker setAccessibilityLabel:kelpa::toNSString(control.label)];
    [[[_picker widthAnchor] constraintGreaterThanOrEqualToConstant:pickerWidth] setActive:YES];
    return @[ _picker ];
}

- (void)setChoices:(const std::vector<kelpa::PreferencesChoice>&)choices {
    NSInteger chosen = [_picker selectedTag];
    [_picker removeAllItems];
    // Into the menu itself: the list's own way would drop an entry whose text is there twice.
    for (const kelpa::PreferencesChoice& choice : choices) {
        NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:kelpa::toNSString(choice.text)
                                                      action:nullptr
                                               keyEquivalent:@""];
        [item setTag:choice.value];
        [[_picker menu] addItem:item];
    }
    [_picker selectItemWithTag:chosen];
}

- (void)setChosen:(std::int64_t)value {
    if (![_picker selectItemWithTag:value])
        [_picker selectItem:nil];
}

- (void)picked:(id)sender {
    (void)sender;
    const std::int64_t value = [_picker selectedTag];
    kelpa::callCore([&] { [self client].chosen([self name], value); });
}

@end

@implementation KelpaSegmentsControl {
    NSSegmentedControl* _segments;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    (void)layout;
    _segments = [[NSSegmentedControl alloc] initWithFrame:NSZeroRect];
    [_segments setTarget:self];
    [_segments setAction:@selector(picked:)];
    [_segments setAccessibilityLabel:kelpa::toNSString(control.label)];
    return @[ _segments ];
}

- (void)setChoices:(const std::vector<kelpa::PreferencesChoice>&)choices {
    [_segments setSegmentCount:static_cast<NSInteger>(choices.size())];
    NSInteger segment = 0;
    for (const kelpa::PreferencesChoice& choice : choices) {
        [_segments setLabel:kelpa::toNSString(choice.text) forSegment:segment];
        [_segments setTag:choice.value forSegment:segment];
        ++segment;
    }
}

- (void)setChosen:(std::int64_t)value {
    NSInteger chosen = -1;
    for (NSInteger segment = 0; segment < [_segments segmentCount]; ++segment)
        if ([_segments tagForSegment:segment] == value)
            chosen = segment;
    [_segments setSelectedSegment:chosen];
}

- (void)picked:(id)sender {
    (void)sender;
    const std::int64_t value = [_segments tagForSegment:[_segments selectedSegment]];
    kelpa::callCore([&] { [self client].chosen([self name], value); });
}

@end

@implementation KelpaTilesControl {
    KelpaTileGrid* _grid;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    (void)layout;
    __weak KelpaTilesControl* weakSelf = self;
    _grid = [[KelpaTileGrid alloc] initWithColumns:kelpa::measures::tileColumns
                                            chosen:^(std::int64_t value) {
                                              [weakSelf picked:value];
                                            }];
    [_grid setAccessibilityLabel:kelpa::toNSString(control.label)];
    return @[ _grid ];
}

- (void)setChoices:(const std::vector<kelpa::PreferencesChoice>&)choices {
    std::vector<std::pair<std::int64_t, std::string>> entries;
    for (const kelpa::PreferencesChoice& choice : choices)
        entries.emplace_back(choice.value, choice.text);
    [_grid setEntries:entries];
}

- (void)setChosen:(std::int64_t)value {
    [_grid choose:value];
}

- (void)picked:(std::int64_t)value {
    kelpa::callCore([&] { [self client].chosen([self name], value); });
}

@end
