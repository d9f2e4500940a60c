#import "platform/macos/views/HistoryColumn.h"

#import "platform/macos/Bridge.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr CGFloat labelHeight = 15;
constexpr CGFloat widestBar = 30;
constexpr CGFloat corner = 3;

NSDate* dateOf(const std::string& text) {
    int year = 1970, month = 1, day = 1;
    std::sscanf(text.c_str(), "%d-%d-%d", &year, &month, &day);
    NSDateComponents* parts = [[NSDateComponents alloc] init];
    [parts setYear:year];
    [parts setMonth:month];
    [parts setDay:day];
    NSCalendar* calendar = [[NSCalendar alloc] initWithCalendarIdentifier:NSCalendarIdentifierGregorian];
    return [calendar dateFromComponents:parts];
}

NSString* written(const std::string& date, NSDateFormatterStyle style) {
    return [NSDateFormatter localizedStringFromDate:dateOf(date)
                                          dateStyle:style
                                          timeStyle:NSDateFormatterNoStyle];
}

NSString* part(const std::string& date, NSString* format) {
    NSDateFormatter* formatter = [[NSDateFormatter alloc] init];
    [formatter setDateFormat:format];
    return [formatter stringFromDate:dateOf(date)];
}

void fill(NSRect rect, CGFloat radius, NSColor* color) {
    [color set];
    [[NSBezierPath bezierPathWithRoundedRect:rect xRadius:radius yRadius:radius] fill];
}

/// One part stands on the other.
void drawBar(const kelpa::HistoryBar& bar, NSRect room, NSArray<NSColor*>* colors) {
    CGFloat bottom = NSMaxY(room);
    NSUInteger number = 0;
    for (const double share : bar.parts) {
        NSColor* color = colors[std::min(number++, [colors count] - 1)];
        const CGFloat height = std::min(share, 1.0) * NSHeight(room);
        const CGFloat gap = number > 1 && bottom < NSMaxY(room) ? 2 : 0;
        if (height > 0)
            fill(NSMakeRect(NSMinX(room), bottom - height, NSWidth(room), std::max<CGFloat>(height - gap, 2)),
                 corner, color);
        bottom -= height;
    }
    if (bar.goal > 0)
        fill(NSMakeRect(NSMinX(room) - 4, NSMaxY(room) - std::min(bar.goal, 1.0) * NSHeight(room) - 1,
                        NSWidth(room) + 8, 2),
             0, [NSColor labelColor]);
}

} // namespace

@implementation KelpaHistoryColumn {
    NSUInteger _index;
    __unsafe_unretained NSView<KelpaHistoryColumns>* _columns;
}

- (instancetype)initWithIndex:(NSUInteger)index columns:(NSView<KelpaHistoryColumns>*)columns {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _index = index;
        _columns = columns;
        const NSTrackingAreaOptions options =
            NSTrackingMouseEnteredAndExited | NSTrackingActiveInActiveApp | NSTrackingInVisibleRect;
        [self addTrackingArea:[[NSTrackingArea alloc] initWithRect:NSZeroRect
                                                           options:options
                                                             owner:self
                                                          userInfo:nil]];
        [self setAccessibilityElement:YES];
        // One of several, of which one is chosen.
        [self setAccessibilityRole:NSAccessibilityRadioButtonRole];
    }
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)acceptsFirstResponder {
    return YES;
}

/// Tab goes to the chosen one, and past all others.
- (BOOL)canBecomeKeyView {
    return [_columns shows:_index] && [super canBecomeKeyView];
}

- (BOOL)becomeFirstResponder {
    [_columns choose:_index];
    return YES;
}

- (BOOL)resignFirstResponder {
    [self setNeedsDisplay:YES];
    return YES;
}

- (BOOL)accessibilityPerformPress {
    [_columns choose:_index];
    return YES;
}

- (void)mouseEntered:(NSEvent*)event {
    [_columns pointAt:_index];
}

- (void)mouseExited:(NSEvent*)event {
    [_columns pointAt:NSNotFound];
}

- (void)mouseDown:(NSEvent*)event {
    [_columns goTo:static_cast<NSInteger>(_index)];
}

- (void)keyDown:(NSEvent*)event {
    NSString* keys = [event charactersIgnoringModifiers];
    const auto index = static_cast<NSInteger>(_index);
    switch ([keys length] == 1 ? [keys characterAtIndex:0] : 0) {
    case NSLeftArrowFunctionKey:
        return [_columns goTo:index - 1];
    case NSRightArrowFunctionKey:
        return [_columns goTo:index + 1];
    case NSHomeFunctionKey:
        return [_columns goTo:0];
    case NSEndFunctionKey:
        return [_columns goTo:NSIntegerMax];
    default:
        [super keyDown:event];
    }
}

- (void)drawRect:(NSRect)dirty {
    const kelpa::HistoryPicture& picture = [_columns picture];
    const NSSize size = [self bounds].size;
    const CGFloat thickness = std::clamp<CGFloat>(size.width * 0.56, 4, widestBar);
    NSUInteger number = 0;
    for (const kelpa::HistoryChart& chart : picture.charts) {
        const NSRect area = [_columns areaOfChart:number inColumn:size];
        if ([_columns shows:_index])
            fill(NSInsetRect(area, 1, 0), corner + 2, [NSColor quaternaryLabelColor]);
        const NSRect room = NSMakeRect((size.width - thickness) / 2, NSMinY(area), thickness, NSHeight(area));
        drawBar(chart.bars.at(_index), room, kelpa::historyColors(number++));
    }
    [self drawLabels:picture];
    if ([[self window] firstResponder] == self) {
        [[NSColor keyboardFocusIndicatorColor] set];
        NSFrameRectWithWidth([self bounds], 2);
    }
}

- (void)drawLabels:(const kelpa::HistoryPicture&)picture {
    const std::string& day = picture.periods.at(_index).first;
    const bool weeks = picture.range == kelpa::HistoryRange::Weeks;
    const bool sameMonth = _index > 0 && picture.periods[_index - 1].first.substr(0, 7) == day.substr(0, 7);
    const CGFloat bottom = NSHeight([self bounds]);
    [self draw:part(day, @"d") at:bottom - 2 * labelHeight bold:[_columns shows:_index]];
    if (!weeks || !sameMonth)
        [self draw:part(day, weeks ? @"MMM" : @"EEE") at:bottom - labelHeight bold:NO];
}

- (void)draw:(NSString*)text at:(CGFloat)top bold:(BOOL)bold {
    const CGFloat points = [NSFont smallSystemFontSize];
    NSDictionary* look = @{
        NSFontAttributeName : bold ? [NSFont boldSystemFontOfSize:points] : [NSFont systemFontOfSize:points],
        NSForegroundColorAttributeName : bold ? [NSColor labelColor] : [NSColor secondaryLabelColor],
    };
    const CGFloat width = [text sizeWithAttributes:look].width;
    [text drawAtPoint:NSMakePoint((NSWidth([self bounds]) - width) / 2, top) withAttributes:look];
}

@end

namespace kelpa {

NSArray<NSColor*>* historyColors(NSUInteger chart) {
    switch (chart) {
    case 0:
        return @[ [NSColor controlAccentColor] ];
    case 1:
        return @[ [NSColor systemGreenColor], [NSColor systemGrayColor] ];
    default:
        return @[ [NSColor systemTealColor] ];
    }
}

NSString* historyPeriodName(const HistoryPeriod& period) {
    if (period.first == period.last)
        return written(period.first, NSDateFormatterFullStyle);
    return [NSString stringWithFormat:@"%@ – %@", written(period.first, NSDateFormatterMediumStyle),
                                      written(period.last, NSDateFormatterMediumStyle)];
}

} // namespace kelpa
