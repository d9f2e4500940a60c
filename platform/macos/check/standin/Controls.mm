// What controls, fonts and pictures have there and not here. What nothing comes of is kept or ignored.
#import "platform/macos/check/standin/StandIns.h"

#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>
#import <CoreText/CoreText.h>
#import <QuartzCore/QuartzCore.h>

#include <algorithm>

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

namespace {

id itself(id self, SEL) {
    return self;
}

id kept(id self, SEL message) {
    return recordOf(self)[NSStringFromSelector(message)];
}

id anyColor(id, SEL) {
    return [NSColor grayColor];
}

} // namespace

@implementation NSView (StandIn)

+ (void)load {
    ignoreMessages("NSView", "layer wantsUpdateLayer updateLayer effectiveAppearance "
                             "viewDidChangeEffectiveAppearance addTrackingArea:");
    addMethods("NSView", "accessibilityLabel accessibilityRole accessibilityHelp accessibilityValue",
               reinterpret_cast<void*>(kept));
    replaceMethod("NSSwitch", @selector(accessibilityLabel), reinterpret_cast<void*>(kept));
    addMethods("+NSColor", "controlAccentColor", reinterpret_cast<void*>(anyColor));
    // Which the toolkit knows by name only.
    for (const SEL color :
         { @selector(systemGrayColor), @selector(systemGreenColor), @selector(systemTealColor) })
        replaceMethod("+NSColor", color, reinterpret_cast<void*>(anyColor));
    ignoreMessages("NSColor", "CGColor");
    addMethods("+NSImageSymbolConfiguration",
               "configurationWithPointSize:weight: configurationWithScale:", reinterpret_cast<void*>(itself));
    addMethods("NSImage", "imageWithSymbolConfiguration:", reinterpret_cast<void*>(itself));
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

@implementation NSImage (StandIn)

+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    NSImage* image = [[NSImage alloc] initWithSize:NSMakeSize(16, 16)];
    recordOf(image)[@"symbol"] = name;
    [recordOf(image) setValue:description forKey:@"accessibilityDescription"];
    return image;
}

@end

@implementation NSControl (StandIn)

/// What a control lacks its cell has.
- (id)forwardingTargetForSelector:(SEL)message {
    return [[self cell] respondsToSelector:message] ? [self cell] : nil;
}

@end

@implementation NSButton (StandIn)

+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
    NSButton* button = [[self alloc] initWithFrame:NSZeroRect];
    [button setTitle:title];
    [button setTarget:target];
    [button setAction:action];
    return button;
}

+ (instancetype)buttonWithImage:(NSImage*)image target:(id)target action:(SEL)action {
    NSButton* button = [self buttonWithTitle:@"" target:target action:action];
    [button setImage:image];
    [button setImagePosition:NSImageOnly];
    return button;
}

@end

@implementation NSTextField (StandIn)

+ (instancetype)textFieldWithString:(NSString*)text {
    NSTextField* field = [[self alloc] initWithFrame:NSZeroRect];
    [field setStringValue:text];
    return field;
}

+ (instancetype)labelWithString:(NSString*)text {
    NSTextField* label = [self textFieldWithString:text];
    [label setEditable:NO];
    [label setSelectable:NO];
    return label;
}

+ (instancetype)wrappingLabelWithString:(NSString*)text {
    return [self labelWithString:text];
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
    const NSInteger digit = [[event characters] integerValue];
    NSDateComponents* time = [[NSCalendar currentCalendar] components:NSCalendarUnitHour
                                                             fromDate:[self dateValue]];
    const NSInteger hours = (second ? [typed[@"digit"] integerValue] * 10 : 0) + digit - [time hour];
    [self setDateValue:[[self dateValue] dateByAddingTimeInterval:static_cast<double>(hours) * 3600]];
    typed[@"digit"] = @(digit);
    [typed setValue:second ? nil : [self dateValue] forKey:@"date"];
    [self sendAction:[self action] to:[self target]];
}

@end

@protocol RowViews
- (NSView*)tableView:(NSTableView*)table viewForTableColumn:(NSTableColumn*)column row:(NSInteger)row;
@end

/// A list whose rows are views, one column of them.
@implementation NSTableView (StandIn)

- (void)setDataSource:(id)source {
    recordOf(self)[@"source"] = [NSValue valueWithNonretainedObject:source];
}

- (id)dataSource {
    return [recordOf(self)[@"source"] nonretainedObjectValue];
}

- (void)reloadData {
    NSArray* before = [[self subviews] copy];
    recordOf(self)[@"spare"] = [before objectEnumerator];
    for (NSView* view in before)
        [view removeFromSuperview];
    constexpr CGFloat height = 20;
    const CGFloat width = [[[self tableColumns] firstObject] width];
    const NSInteger rows = [[self dataSource] numberOfRowsInTableView:self];
    for (NSInteger row = 0; row < rows; ++row) {
        NSView* view = [static_cast<id<RowViews>>([self delegate]) tableView:self
                                                          viewForTableColumn:nil
                                                                         row:row];
        [view setFrame:NSMakeRect(0, static_cast<CGFloat>(row) * height, width, height)];
        [self addSubview:view];
    }
    [self setFrameSize:NSMakeSize(width, std::max<CGFloat>(1, static_cast<CGFloat>(rows)) * height)];
    if ([self selectedRow] >= rows)
        [recordOf(self) removeObjectForKey:@"selection"];
}

- (NSView*)makeViewWithIdentifier:(NSString*)identifier owner:(id)owner {
    return [recordOf(self)[@"spare"] nextObject];
}

- (NSView*)viewAtColumn:(NSInteger)column row:(NSInteger)row makeIfNecessary:(BOOL)make {
    return [self subviews][static_cast<NSUInteger>(row)];
}

- (void)selectRowIndexes:(NSIndexSet*)rows byExtendingSelection:(BOOL)extend {
    recordOf(self)[@"selection"] = [rows copy];
}

- (NSInteger)selectedRow {
    NSIndexSet* selection = recordOf(self)[@"selection"];
    return selection ? static_cast<NSInteger>([selection firstIndex]) : -1;
}

- (void)drawRect:(NSRect)rect {
}

@end

// --- Core Foundation, Core Graphics and Core Text

extern "C" {

/// Truth values are numbers of a class of their own.
CFTypeID CFGetTypeID(CFTypeRef object) {
    return [NSStringFromClass([(__bridge id)object class]) hasSuffix:@"BoolNumber"];
}

CFTypeID CFBooleanGetTypeID(void) {
    return true;
}

Boolean CFNumberIsFloatType(CFNumberRef number) {
    const char type = *[(__bridge NSNumber*)number objCType];
    return type == 'd' || type == 'f';
}

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
