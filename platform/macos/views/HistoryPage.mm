#import "platform/macos/views/HistoryPage.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/HistoryColumn.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

#include <algorithm>

namespace {

constexpr CGFloat padding = kelpa::measures::padding;
constexpr CGFloat headHeight = 24;
constexpr CGFloat lineHeight = 18;
constexpr CGFloat gutter = 72; ///< beside the charts, for their scales
constexpr CGFloat labelsHeight = 36;
constexpr CGFloat aboveBars = 30; ///< in a chart, for its name and the figures
constexpr CGFloat belowBars = 10;
constexpr CGFloat footHeight = 32;
constexpr CGFloat rangesWidth = 190;

/// The figures with a mark in the colour of their part before each.
NSAttributedString* figures(const kelpa::HistoryBar& bar, NSArray<NSColor*>* colors) {
    NSMutableAttributedString* all = [[NSMutableAttributedString alloc] init];
    NSMutableParagraphStyle* right = [[NSMutableParagraphStyle alloc] init];
    [right setAlignment:NSTextAlignmentRight];
    NSUInteger number = 0;
    for (const std::string& text : bar.texts) {
        NSColor* color = colors[std::min(number++, [colors count] - 1)];
        [all appendAttributedString:[[NSAttributedString alloc]
                                        initWithString:number > 1 ? @"   ■ " : @"■ "
                                            attributes:@{NSForegroundColorAttributeName : color}]];
        NSDictionary* look = @{
            NSForegroundColorAttributeName : [NSColor labelColor],
            NSFontAttributeName : [NSFont boldSystemFontOfSize:0],
        };
        [all appendAttributedString:[[NSAttributedString alloc] initWithString:kelpa::toNSString(text)
                                                                    attributes:look]];
    }
    [all addAttribute:NSParagraphStyleAttributeName value:right range:NSMakeRange(0, [all length])];
    return all;
}

NSTextField* smallLabel() {
    return kelpa::makeLabel("", [NSFont systemFontOfSize:[NSFont smallSystemFontSize]],
                            [NSColor secondaryLabelColor]);
}

} // namespace

@interface KelpaHistoryPage () <KelpaHistoryColumns>
@end

@implementation KelpaHistoryPage {
    kelpa::HistoryTexts _texts;
    kelpa::HistoryWindowClient* _client;
    kelpa::HistoryPicture _picture;
    NSUInteger _chosen;
    NSUInteger _pointed; ///< NSNotFound for none
    BOOL _asking;
    NSTextField* _heading;
    NSSegmentedControl* _ranges;
    NSTextField* _note;
    NSButton* _forget;
    NSButton* _cancel;
    NSButton* _confirm;
    NSMutableArray<NSTextField*>* _names;
    NSMutableArray<NSTextField*>* _figures;
    NSMutableArray<NSTextField*>* _scales;
    NSMutableArray<KelpaHistoryColumn*>* _columns;
}

- (instancetype)initWithTexts:(const kelpa::HistoryTexts&)texts client:(kelpa::HistoryWindowClient&)client {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _texts = texts;
        _client = &client;
        _pointed = NSNotFound;
        _names = [NSMutableArray array];
        _figures = [NSMutableArray array];
        _scales = [NSMutableArray array];
        _columns = [NSMutableArray array];
        [self makeHead];
        [self makeFoot];
    }
    return self;
}

- (void)makeHead {
    _heading = kelpa::makeLabel("", kelpa::boldFont(NSFontTextStyleTitle3));
    _ranges = [[NSSegmentedControl alloc] initWithFrame:NSZeroRect];
    [_ranges setSegmentCount:2];
    [_ranges setLabel:kelpa::toNSString(_texts.days) forSegment:0];
    [_ranges setLabel:kelpa::toNSString(_texts.weeks) forSegment:1];
    [_ranges setTarget:self];
    [_ranges setAction:@selector(rangePicked:)];
    [_ranges setAccessibilityLabel:kelpa::toNSString(_texts.title)];
    [self addSubview:_heading];
    [self addSubview:_ranges];
}

- (void)makeFoot {
    _note = [NSTextField wrappingLabelWithString:@""];
    [_note setSelectable:NO];
    const auto button = [self](const std::string& text, SEL action) {
        return [NSButton buttonWithTitle:kelpa::toNSString(text) target:self action:action];
    };
    _forget = button(_texts.forget, @selector(forgetPressed:));
    _cancel = button(_texts.cancel, @selector(cancelPressed:));
    _confirm = button(_texts.confirm, @selector(confirmPressed:));
    for (NSView* part in @[ _note, _forget, _cancel, _confirm ])
        [self addSubview:part];
    [self ask:NO];
}

- (BOOL)isFlipped {
    return YES;
}

- (const kelpa::HistoryPicture&)picture {
    return _picture;
}

- (void)setPicture:(const kelpa::HistoryPicture&)picture {
    const bool others = picture.periods.size() != _picture.periods.size();
    _picture = picture;
    if (others)
        [self makeColumns];
    [self makeCharts];
    for (NSUInteger index = 0; index < [_columns count]; ++index)
        [_columns[index] setAccessibilityLabel:[self tell:index]];
    [_ranges setSelectedSegment:static_cast<NSInteger>(picture.range)];
    [self ask:_asking];
    [self place];
    [self showFigures];
}

- (void)makeColumns {
    for (KelpaHistoryColumn* column in _columns)
        [column removeFromSuperview];
    [_columns removeAllObjects];
    for (NSUInteger index = 0; index < _picture.periods.size(); ++index) {
        KelpaHistoryColumn* column = [[KelpaHistoryColumn alloc] initWithIndex:index columns:self];
        [_columns addObject:column];
        [self addSubview:column];
    }
    _chosen = std::max<NSUInteger>([_columns count], 1) - 1;
    _pointed = NSNotFound;
}

- (void)makeCharts {
    while ([_names count] < _picture.charts.size()) {
        [_names addObject:smallLabel()];
        [_figures addObject:kelpa::makeLabel("", [NSFont boldSystemFontOfSize:0])];
        [_scales addObject:smallLabel()];
        for (NSMutableArray<NSTextField*>* labels in @[ _names, _figures, _scales ])
            [self addSubview:[labels lastObject]];
        [[_scales lastObject] setAlignment:NSTextAlignmentRight];
    }
    NSUInteger number = 0;
    for (const kelpa::HistoryChart& chart : _picture.charts) {
        [_names[number] setStringValue:kelpa::toNSString(chart.name)];
        [_scales[number++] setStringValue:kelpa::toNSString(chart.scale)];
    }
}

// Where everything stands

- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    // The first size comes before there is anything to place.
    if (_confirm)
        [self place];
}

- (NSRect)stage {
    const NSSize size = [self bounds].size;
    const CGFloat top = padding + headHeight + padding;
    return NSMakeRect(padding + gutter, top, std::max<CGFloat>(size.width - 2 * padding - gutter, 1),
                      std::max<CGFloat>(size.height - top - footHeight - 2 * padding, labelsHeight + 1));
}

- (NSRect)areaOfChart:(NSUInteger)chart inColumn:(NSSize)size {
    const CGFloat height =
        (size.height - labelsHeight) / static_cast<CGFloat>(std::max<std::size_t>(_picture.charts.size(), 1));
    return NSMakeRect(0, static_cast<CGFloat>(chart) * height + aboveBars, size.width,
                      std::max<CGFloat>(height - aboveBars - belowBars, 1));
}

- (void)place {
    const NSSize size = [self bounds].size;
    [_heading setFrame:NSMakeRect(padding, padding, size.width - 3 * padding - rangesWidth, headHeight)];
    [_ranges setFrame:NSMakeRect(size.width - padding - rangesWidth, padding, rangesWidth, headHeight)];
    const NSRect stage = [self stage];
    const CGFloat width = NSWidth(stage) / static_cast<CGFloat>(std::max<NSUInteger>([_columns count], 1));
    CGFloat left = NSMinX(stage);
    for (KelpaHistoryColumn* column in _columns) {
        [column setFrame:NSMakeRect(left, NSMinY(stage), width, NSHeight(stage))];
        left += width;
    }
    for (NSUInteger chart = 0; chart < [_names count]; ++chart)
        [self placeChart:chart in:stage];
    [self placeFoot];
    [self setNeedsDisplay:YES];
}

- (void)placeChart:(NSUInteger)chart in:(NSRect)stage {
    const NSRect area = [self areaOfChart:chart inColumn:stage.size];
    const CGFloat top = NSMinY(stage) + NSMinY(area);
    const CGFloat line = top - aboveBars + 4;
    const CGFloat half = (NSMaxX(stage) - padding) / 2;
    [_names[chart] setFrame:NSMakeRect(padding, line, half, lineHeight)];
    [_figures[chart] setFrame:NSMakeRect(NSMaxX(stage) - half, line, half, lineHeight)];
    [_scales[chart] setFrame:NSMakeRect(padding, top - lineHeight / 2, gutter - 8, lineHeight)];
}

- (void)placeFoot {
    const NSSize size = [self bounds].size;
    CGFloat right = size.width - padding;
    for (NSButton* button in @[ _confirm, _cancel, _forget ]) {
        if ([button isHidden])
            continue;
        const CGFloat width = std::max<CGFloat>([button intrinsicContentSize].width, 80);
        right -= width;
        [button setFrame:NSMakeRect(right, size.height - padding - footHeight, width, footHeight)];
        right -= padding / 2;
    }
    [_note setFrame:NSMakeRect(padding, size.height - padding - footHeight,
                               std::max<CGFloat>(right - padding, 1), footHeight)];
}

- (void)drawRect:(NSRect)dirty {
    const NSRect stage = [self stage];
    [[NSColor quaternaryLabelColor] set];
    for (NSUInteger chart = 0; chart < [_names count]; ++chart) {
        const NSRect area = [self areaOfChart:chart inColumn:stage.size];
        for (const CGFloat line : {NSMinY(area), NSMaxY(area)})
            NSRectFill(NSMakeRect(NSMinX(stage), NSMinY(stage) + line, NSWidth(stage), 1));
    }
}

// Which column's figures are shown

- (NSUInteger)current {
    return _pointed == NSNotFound ? _chosen : _pointed;
}

- (BOOL)shows:(NSUInteger)column {
    return column == [self current];
}

- (void)pointAt:(NSUInteger)column {
    _pointed = column;
    [self showFigures];
}

- (void)choose:(NSUInteger)column {
    _chosen = column;
    _pointed = NSNotFound;
    [self showFigures];
}

- (void)goTo:(NSInteger)column {
    const auto last = static_cast<NSInteger>([_columns count]) - 1;
    const auto index = static_cast<NSUInteger>(std::clamp<NSInteger>(column, 0, last));
    [self choose:index];
    [[self window] makeFirstResponder:_columns[index]];
}

- (void)showFigures {
    const NSUInteger current = [self current];
    if (current >= [_columns count])
        return;
    [_heading setStringValue:kelpa::historyPeriodName(_picture.periods[current])];
    for (NSUInteger chart = 0; chart < [_figures count]; ++chart)
        [_figures[chart] setAttributedStringValue:figures(_picture.charts[chart].bars.at(current),
                                                          kelpa::historyColors(chart))];
    for (NSUInteger index = 0; index < [_columns count]; ++index) {
        KelpaHistoryColumn* column = _columns[index];
        [column setAccessibilityValue:@(index == current)];
        [column setNeedsDisplay:YES];
    }
}

/// All of a column in words.
- (NSString*)tell:(NSUInteger)index {
    NSMutableArray* all = [NSMutableArray arrayWithObject:kelpa::historyPeriodName(_picture.periods[index])];
    for (const kelpa::HistoryChart& chart : _picture.charts)
        for (const std::string& text : chart.bars.at(index).texts)
            [all addObject:[NSString stringWithFormat:@"%@ %@", kelpa::toNSString(chart.name),
                                                      kelpa::toNSString(text)]];
    return [all componentsJoinedByString:@", "];
}

// What a person does

- (void)rangePicked:(id)sender {
    const auto range = static_cast<kelpa::HistoryRange>([_ranges selectedSegment]);
    kelpa::callCore([&] { _client->rangeChosen(range); });
}

- (void)ask:(BOOL)asking {
    _asking = asking;
    [_forget setHidden:asking];
    [_cancel setHidden:!asking];
    [_confirm setHidden:!asking];
    [_note setStringValue:kelpa::toNSString(asking ? _texts.question : _picture.note)];
    [_note setTextColor:asking ? [NSColor labelColor] : [NSColor secondaryLabelColor]];
    [self placeFoot];
}

- (void)forgetPressed:(id)sender {
    [self ask:YES];
    [[self window] makeFirstResponder:_cancel];
}

- (void)cancelPressed:(id)sender {
    [self ask:NO];
}

- (void)confirmPressed:(id)sender {
    [self ask:NO];
    kelpa::callCore([&] { _client->forgetConfirmed(); });
}

/// Escape answers the question, or closes the window.
- (void)cancelOperation:(id)sender {
    if (_asking)
        [self ask:NO];
    else
        [[self window] performClose:sender];
}

- (void)keyDown:(NSEvent*)event {
    if ([[event characters] isEqual:@"\x1b"])
        [self cancelOperation:nil];
    else
        [super keyDown:event];
}

@end
