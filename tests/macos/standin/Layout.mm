// A layout that is good enough to press and read what is there: each view as large as it wants to be, in the
// row, column or cell that it stands in. Of a constraint only the end that names the view itself counts.
#import "tests/macos/standin/StandIns.h"

#include "tests/macos/runtime/Objects.h"

#include <algorithm>
#include <cmath>

const CGFloat NSViewNoIntrinsicMetric = -1;

namespace {

constexpr CGFloat ample = 10000;

/// The constants of the view's active constraints, by the names of its anchors.
NSMutableDictionary* edges(NSView* view) {
    NSMutableDictionary* record = recordOf(view);
    if (!record[@"edges"])
        record[@"edges"] = [NSMutableDictionary dictionary];
    return record[@"edges"];
}

BOOL placedByLayout(NSView* view) {
    return [recordOf(view)[@"anchored"] boolValue];
}

/// What a constraint to a number says, otherwise what the view itself says, otherwise what its content says.
CGFloat extent(NSString* name, NSView* view, CGFloat own, CGFloat content) {
    if (NSNumber* exact = edges(view)[name])
        return [exact doubleValue];
    const CGFloat least = [edges(view)[[@"least " stringByAppendingString:name]] doubleValue];
    return std::max(least, own >= 0 ? own : content);
}

CGFloat margins(NSView* view, NSString* first, NSString* last) {
    return std::abs([edges(view)[first] doubleValue]) + std::abs([edges(view)[last] doubleValue]);
}

NSSize sizeOfContent(NSView* view) {
    NSSize size = NSZeroSize;
    for (NSView* child in [view subviews])
        if (placedByLayout(child)) {
            const NSSize wanted = [child fittingSize];
            size.width = std::max(size.width, wanted.width + margins(child, @"leading", @"trailing"));
            size.height = std::max(size.height, wanted.height + margins(child, @"top", @"bottom"));
        }
    return size;
}

struct Span {
    CGFloat start;
    CGFloat length;
};

/// Counted from the leading or top edge of what is around it.
Span place(NSDictionary* edges, CGFloat wanted, CGFloat room, NSString* first, NSString* last,
           NSString* middle) {
    NSNumber* start = edges[first];
    NSNumber* end = edges[last];
    if (edges[middle])
        return {std::round((room - wanted) / 2), wanted};
    if (start && end)
        return {[start doubleValue], std::max<CGFloat>(0, room - [start doubleValue] + [end doubleValue])};
    return {end ? room - wanted + [end doubleValue] : [start doubleValue], wanted};
}

NSRect frameWithin(NSSize room, BOOL flipped, NSView* child) {
    const NSSize wanted = [child fittingSize];
    Span x = place(edges(child), wanted.width, room.width, @"leading", @"trailing", @"centerX");
    Span y = place(edges(child), wanted.height, room.height, @"top", @"bottom", @"centerY");
    if (edges(child)[@"same width"])
        x = {0, room.width};
    if (edges(child)[@"same height"])
        y = {0, std::max(wanted.height, room.height)};
    return NSMakeRect(x.start, flipped ? y.start : room.height - y.start - y.length, x.length, y.length);
}

/// Views or rows of views.
NSArray* shown(NSArray* all) {
    NSMutableArray* shown = [NSMutableArray array];
    for (id each in all)
        if (![each isHidden])
            [shown addObject:each];
    return shown;
}

using SetFrame = void (*)(id, SEL, NSRect);
SetFrame setWholeFrame = nullptr;

/// Whoever wants to hear of a new size is told, as there.
void setFrame(NSView* view, SEL selector, NSRect frame) {
    if (![NSStringFromClass([view class]) hasPrefix:@"Kelpa"])
        return setWholeFrame(view, selector, frame);
    [view setFrameOrigin:frame.origin];
    [view setFrameSize:frame.size];
}

} // namespace

/// An edge or a length of a view; with a value a constraint of it, which counts once it is active. It keeps
/// no view alive.
@interface AnchorStandIn : NSObject
@end

@implementation AnchorStandIn {
    __weak NSView* _view;
    NSString* _name;
    NSNumber* _value;
}

/// By the name of the message that asks for it: "leadingAnchor".
static id anchorOf(NSView* view, SEL selector) {
    AnchorStandIn* anchor = [[AnchorStandIn alloc] init];
    anchor->_view = view;
    anchor->_name = [NSStringFromSelector(selector) stringByReplacingOccurrencesOfString:@"Anchor"
                                                                              withString:@""];
    return anchor;
}

+ (void)load {
    setWholeFrame = reinterpret_cast<SetFrame>(
        replaceMethod("NSView", @selector(setFrame:), reinterpret_cast<void*>(setFrame)));
    addMethods("NSView",
               "leadingAnchor trailingAnchor centerXAnchor topAnchor bottomAnchor centerYAnchor widthAnchor "
               "heightAnchor",
               reinterpret_cast<void*>(anchorOf));
    ignoreMessages("NSView", "setNeedsLayout: invalidateIntrinsicContentSize "
                             "setContentCompressionResistancePriority:forOrientation:");
}

- (id)prefixed:(NSString*)prefix value:(CGFloat)value {
    AnchorStandIn* constraint = [[AnchorStandIn alloc] init];
    constraint->_view = _view;
    constraint->_name = [prefix stringByAppendingString:_name];
    constraint->_value = @(value);
    return constraint;
}

- (NSString*)prefixToAnchor {
    return [@[ @"width", @"height" ] containsObject:_name] ? @"same " : @"";
}

- (id)constraintEqualToAnchor:(AnchorStandIn*)anchor {
    return [self prefixed:[self prefixToAnchor] value:0];
}

- (id)constraintEqualToAnchor:(AnchorStandIn*)anchor constant:(CGFloat)constant {
    return [self prefixed:@"" value:constant];
}

- (id)constraintGreaterThanOrEqualToAnchor:(AnchorStandIn*)anchor {
    return [self prefixed:[self prefixToAnchor] value:0];
}

- (id)constraintGreaterThanOrEqualToAnchor:(AnchorStandIn*)anchor constant:(CGFloat)constant {
    return [self prefixed:@"least " value:constant];
}

- (id)constraintLessThanOrEqualToAnchor:(AnchorStandIn*)anchor constant:(CGFloat)constant {
    return [self prefixed:@"most " value:constant];
}

- (id)constraintEqualToConstant:(CGFloat)constant {
    return [self prefixed:@"" value:constant];
}

- (id)constraintGreaterThanOrEqualToConstant:(CGFloat)constant {
    return [self prefixed:@"least " value:constant];
}

- (void)setPriority:(NSLayoutPriority)priority {
    if (priority < NSLayoutPriorityRequired)
        _view = nil;
}

- (void)setActive:(BOOL)active {
    if (NSView* view = _view)
        edges(view)[_name] = _value;
}

@end

@implementation NSLayoutConstraint (StandIn)

+ (void)activateConstraints:(NSArray*)constraints {
    for (NSLayoutConstraint* constraint in constraints)
        [constraint setActive:YES];
}

@end

@implementation NSView (LayoutStandIn)

/// Its anchors are the view's own.
- (NSLayoutGuide*)safeAreaLayoutGuide {
    return static_cast<NSLayoutGuide*>(static_cast<id>(self));
}

- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag {
    recordOf(self)[@"anchored"] = @(!flag);
}

- (NSSize)intrinsicContentSize {
    return NSMakeSize(NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric);
}

- (CGFloat)firstBaselineOffsetFromTop {
    return 0;
}

- (NSSize)fittingSize {
    const NSSize own = [self intrinsicContentSize];
    const NSSize content = sizeOfContent(self);
    return NSMakeSize(extent(@"width", self, own.width, content.width),
                      extent(@"height", self, own.height, content.height));
}

- (void)layout {
    for (NSView* child in [self subviews])
        if (placedByLayout(child))
            [child setFrame:frameWithin([self bounds].size, [self isFlipped], child)];
}

@end

void layOutWithin(NSView* view) {
    if ([view isHidden])
        return;
    [view layout];
    for (NSView* child in [[view subviews] copy])
        layOutWithin(child);
}

@implementation NSControl (LayoutStandIn)

- (NSSize)intrinsicContentSize {
    const NSSize size = [[self cell] cellSize];
    return NSMakeSize(std::ceil(size.width), std::ceil(size.height));
}

- (CGFloat)firstBaselineOffsetFromTop {
    return [[self font] ascender];
}

@end

@implementation NSTextField (LayoutStandIn)

- (void)setPreferredMaxLayoutWidth:(CGFloat)width {
    recordOf(self)[@"widest"] = @(width);
}

- (NSSize)intrinsicContentSize {
    const CGFloat widest = [recordOf(self)[@"widest"] doubleValue];
    const NSRect box =
        [[self attributedStringValue] boundingRectWithSize:NSMakeSize(widest > 0 ? widest : ample, ample)
                                                   options:NSStringDrawingUsesLineFragmentOrigin];
    return NSMakeSize(std::ceil(NSWidth(box)) + 4,
                      std::max(std::ceil(NSHeight(box)), std::ceil([[self font] ascender])));
}

@end

@interface NSStackView ()
@property(nonatomic) NSUserInterfaceLayoutOrientation orientation;
@property(nonatomic) NSLayoutAttribute alignment;
@property(nonatomic) NSEdgeInsets edgeInsets;
@property(nonatomic) CGFloat spacing;
@property(nonatomic) NSStackViewDistribution distribution;
@end

@implementation NSStackView {
    NSMutableArray<NSView*>* _views;
}

+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views {
    NSStackView* stack = [[self alloc] initWithFrame:NSZeroRect];
    for (NSView* view in views)
        [stack addArrangedSubview:view];
    return stack;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self) {
        _views = [NSMutableArray array];
        _spacing = 8;
        _orientation = NSUserInterfaceLayoutOrientationHorizontal;
    }
    return self;
}

- (void)addArrangedSubview:(NSView*)view {
    [_views addObject:view];
    [self addSubview:view];
}

- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity {
    [self addArrangedSubview:view];
}

/// A view that leaves the stack is no longer arranged in it.
- (void)willRemoveSubview:(NSView*)view {
    [_views removeObjectIdenticalTo:view];
    [super willRemoveSubview:view];
}

- (NSArray<NSView*>*)arrangedSubviews {
    return [_views copy];
}

- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view {
    recordOf(view)[@"spacing after"] = @(spacing);
}

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)isUpright {
    return _orientation == NSUserInterfaceLayoutOrientationVertical;
}

- (CGFloat)spacingAfter:(NSView*)view {
    NSNumber* custom = recordOf(view)[@"spacing after"];
    return custom ? [custom doubleValue] : _spacing;
}

- (NSSize)intrinsicContentSize {
    CGFloat along = 0;
    CGFloat across = 0;
    NSArray<NSView*>* arranged = shown(_views);
    for (NSView* view in arranged) {
        const NSSize size = [view fittingSize];
        along += ([self isUpright] ? size.height : size.width) +
                 (view == [arranged lastObject] ? 0 : [self spacingAfter:view]);
        across = std::max(across, [self isUpright] ? size.width : size.height);
    }
    return NSMakeSize(([self isUpright] ? across : along) + _edgeInsets.left + _edgeInsets.right,
                      ([self isUpright] ? along : across) + _edgeInsets.top + _edgeInsets.bottom);
}

- (void)layout {
    const CGFloat width = NSWidth([self bounds]);
    NSArray<NSView*>* arranged = shown(_views);
    const auto count = static_cast<CGFloat>([arranged count]);
    NSPoint at = NSMakePoint(_edgeInsets.left, _edgeInsets.top);
    for (NSView* view in arranged) {
        NSSize size = [view fittingSize];
        if (_distribution == NSStackViewDistributionFillEqually)
            size.width = (width - _spacing * (count - 1)) / count;
        if (edges(view)[@"same width"])
            size.width = width;
        [view setFrame:NSMakeRect(at.x, at.y, size.width, size.height)];
        if ([self isUpright])
            at.y += size.height + [self spacingAfter:view];
        else
            at.x += size.width + [self spacingAfter:view];
    }
}

@end

/// A row of a grid, and each of its cells.
@interface GridRowStandIn : NSObject
@property(nonatomic) NSArray<NSView*>* views;
@property(nonatomic, getter=isHidden) BOOL hidden;
@property(nonatomic) CGFloat topPadding;
@property(nonatomic) NSGridCellPlacement XPlacement;
@end

@implementation GridRowStandIn

/// Its content is out of sight with it.
- (void)setHidden:(BOOL)hidden {
    _hidden = hidden;
    for (NSView* view in _views)
        [view setHidden:hidden];
}

- (void)mergeCellsInRange:(NSRange)range {
}

- (id)cellAtIndex:(NSInteger)index {
    return self;
}

- (id)row {
    return self;
}

- (NSSize)size {
    NSSize size = NSZeroSize;
    for (NSView* view in _views)
        size.height = std::max(size.height, [view fittingSize].height);
    return size;
}

@end

/// A grid of two columns.
@interface GridStandIn : NSView
@property(nonatomic) CGFloat rowSpacing;
@property(nonatomic) CGFloat columnSpacing;
@property(nonatomic) NSGridRowAlignment rowAlignment;
@end

@implementation GridStandIn {
    NSMutableArray<GridRowStandIn*>* _rows;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    _rows = [NSMutableArray array];
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (id)columnAtIndex:(NSInteger)index {
    return [[GridRowStandIn alloc] init];
}

- (id)addRowWithViews:(NSArray<NSView*>*)views {
    GridRowStandIn* row = [[GridRowStandIn alloc] init];
    [row setViews:views];
    for (NSView* view in views)
        [self addSubview:view];
    [_rows addObject:row];
    return row;
}

- (NSInteger)indexOfRow:(GridRowStandIn*)row {
    return static_cast<NSInteger>([_rows indexOfObjectIdenticalTo:row]);
}

- (id)rowAtIndex:(NSInteger)index {
    return _rows[static_cast<NSUInteger>(index)];
}

- (id)cellForView:(NSView*)view {
    for (GridRowStandIn* row in _rows)
        if ([[row views] containsObject:view])
            return row;
    return nil;
}

- (CGFloat)widthOfColumn:(NSUInteger)column {
    CGFloat width = 0;
    for (GridRowStandIn* row in shown(_rows))
        width = std::max(width, [[row views][column] fittingSize].width);
    return width;
}

- (NSSize)intrinsicContentSize {
    CGFloat height = 0;
    for (GridRowStandIn* row in shown(_rows))
        height += [row size].height + _rowSpacing;
    return NSMakeSize([self widthOfColumn:0] + _columnSpacing + [self widthOfColumn:1], height);
}

- (void)layout {
    const CGFloat second = [self widthOfColumn:0] + _columnSpacing;
    NSPoint at = NSZeroPoint;
    for (GridRowStandIn* row in shown(_rows)) {
        at.x = 0;
        for (NSView* view in [row views]) {
            const NSSize size = [view fittingSize];
            [view setFrame:NSMakeRect(at.x, at.y, size.width, size.height)];
            at.x += second;
        }
        at.y += [row size].height + _rowSpacing;
    }
}

@end

@implementation NSGridView (StandIn)

+ (instancetype)gridViewWithNumberOfColumns:(NSInteger)columns rows:(NSInteger)rows {
    return static_cast<id>([[GridStandIn alloc] initWithFrame:NSZeroRect]);
}

@end

@implementation NSGridCell (StandIn)

+ (NSView*)emptyContentView {
    return [[NSView alloc] initWithFrame:NSZeroRect];
}

@end
