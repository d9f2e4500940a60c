// What controls, fonts and pictures have there and not here. What nothing comes of is kept or ignored.
#import "platform/macos/check/standin/StandIns.h"

#import <CoreGraphics/CoreGraphics.h>
#import <CoreText/CoreText.h>

NSString* const NSAccessibilityRadioButtonRole = @"AXRadioButton";
NSString* const NSAccessibilityRadioGroupRole = @"AXRadioGroup";
NSString* const NSAccessibilityLinkRole = @"AXLink";
// The styles' values are their sizes.
NSFontTextStyle const NSFontTextStyleLargeTitle = @"26";
NSFontTextStyle const NSFontTextStyleTitle1 = @"22";
NSFontTextStyle const NSFontTextStyleTitle3 = @"15";
NSFontTextStyle const NSFontTextStyleHeadline = @"14";
NSFontTextStyle const NSFontTextStyleBody = @"13";
NSFontTextStyle const NSFontTextStyleFootnote = @"10";
const NSFontWeight NSFontWeightRegular = 0;
const NSFontWeight NSFontWeightBold = 0.4;

@implementation NSView (StandIn)

+ (void)load {
    answer("NSView",
           "layer wantsUpdateLayer updateLayer effectiveAppearance viewDidChangeEffectiveAppearance "
           "addTrackingArea:",
           nothing);
    // Some of which the toolkit knows by name only.
    answer("+NSColor", "controlAccentColor systemGrayColor systemGreenColor systemTealColor",
           [](id) -> id { return [NSColor grayColor]; });
    answer("NSColor", "CGColor", nothing);
    answer("NSImage", "imageWithSymbolConfiguration:", itself);
}

@end

@implementation NSFont (StandIn)

+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options {
    return [NSFont systemFontOfSize:[style doubleValue]];
}

+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    return [NSFont systemFontOfSize:size];
}

@end

@implementation NSImageSymbolConfiguration
@end

@implementation NSControl (StandIn)

/// What a control lacks its cell has.
- (id)forwardingTargetForSelector:(SEL)message {
    return [[self cell] respondsToSelector:message] ? [self cell] : nil;
}

@end

@implementation NSTextField (StandIn)

+ (instancetype)labelWithString:(NSString*)text {
    NSTextField* label = [self textFieldWithString:text];
    [label setEditable:NO];
    [label setSelectable:NO];
    return label;
}

+ (instancetype)wrappingLabelWithString:(NSString*)text {
    return [self labelWithString:text];
}

/// What it is made with.
- (void)setString:(NSString*)text {
    [self setStringValue:text];
}

@end

@implementation NSTextView (StandIn)

/// What Escape means here. There it asks for the end of what is going on.
- (void)complete:(id)sender {
    [self doCommandBySelector:@selector(cancelOperation:)];
}

@end

@implementation NSSwitch (StandIn)

/// Here one that is off would be grey.
- (BOOL)isEnabled {
    return YES;
}

- (NSString*)accessibilityLabel {
    return recordOf(self)[@"accessibilityLabel"];
}

@end

@implementation NSScroller (StandIn)

+ (CGFloat)scrollerWidthForControlSize:(NSControlSize)size scrollerStyle:(NSScrollerStyle)style {
    return 15;
}

@end

@implementation NSDatePicker (StandIn)

- (BOOL)acceptsFirstResponder {
    return YES;
}

/// A digit into the hour, which has the keyboard first. The second one of two belongs to the first, unless
/// another date was set meanwhile.
- (void)keyDown:(NSEvent*)event {
    NSMutableDictionary* typed = recordOf(self);
    const BOOL second = typed[@"date"] && typed[@"date"] == [self dateValue];
    const NSInteger before = [[[NSCalendar currentCalendar] components:NSCalendarUnitHour
                                                              fromDate:[self dateValue]] hour];
    const NSInteger hour = (second ? before * 10 : 0) + [[event characters] integerValue];
    [self setDateValue:[[self dateValue] dateByAddingTimeInterval:static_cast<double>(hour - before) * 3600]];
    [typed setValue:second ? nil : [self dateValue] forKey:@"date"];
    [self sendAction:[self action] to:[self target]];
}

@end

@protocol RowViews
- (NSView*)tableView:(NSTableView*)table viewForTableColumn:(NSTableColumn*)column row:(NSInteger)row;
@end

@implementation NSTableView (StandIn)

/// Also makes views of the rows, in one column.
- (void)reloadData {
    NSArray* before = [[self subviews] copy];
    recordOf(self)[@"spare"] = [before objectEnumerator];
    for (NSView* view in before)
        [view removeFromSuperview];
    [self noteNumberOfRowsChanged];
    for (NSInteger row = 0; row < [self numberOfRows]; ++row) {
        NSView* view = [static_cast<id<RowViews>>([self delegate]) tableView:self
                                                          viewForTableColumn:nil
                                                                         row:row];
        [view setFrame:[self frameOfCellAtColumn:0 row:row]];
        [self addSubview:view];
    }
}

- (NSView*)makeViewWithIdentifier:(NSString*)identifier owner:(id)owner {
    return [recordOf(self)[@"spare"] nextObject];
}

- (NSView*)viewAtColumn:(NSInteger)column row:(NSInteger)row makeIfNecessary:(BOOL)make {
    return [self subviews][static_cast<NSUInteger>(row)];
}

@end

// --- Core Graphics and Core Text

extern "C" {

CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data) {
    return reinterpret_cast<CGDataProviderRef>(const_cast<__CFData*>(data));
}

CGFontRef CGFontCreateWithDataProvider(CGDataProviderRef provider) {
    return reinterpret_cast<CGFontRef>(provider);
}

bool CTFontManagerRegisterGraphicsFont(CGFontRef, CFErrorRef*) {
    return true;
}

void CGDataProviderRelease(CGDataProviderRef) {}
void CGFontRelease(CGFontRef) {}

} // extern "C"
