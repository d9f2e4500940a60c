// A layout that is good enough to press and read what is there: each view as large as it wants to be, in the
// row, column or cell that it stands in. Of a constraint only the end that names the view itself counts.
#import "tests/macos/standin/Layout.h"

#include "tests/macos/runtime/Objects.h"

#include <algorithm>
#include <cmath>
#include <vector>

const CGFloat NSViewNoIntrinsicMetric = -1;

namespace {

constexpr CGFloat ample = 10000;

NSMutableDictionary* edges(NSView* view) {
    NSMutableDictionary* record = recordOf(view);
    if (![record objectForKey:@"edges"])
        [record setObject:[NSMutableDictionary dictionary] forKey:@"edges"];
    return [record objectForKey:@"edges"];
}

/// A constraint's constant for an edge of the view, or nothing.
NSNumber* edge(NSView* view, NSString* name) {
    return [edges(view) objectForKey:name];
}

BOOL placedByLayout(NSView* view) {
    return [recordOf(view) objectForKey:@"anchored"] != nil;
}

/// What a constraint to a number says, otherwise what the view itself says, otherwise what its content says.
CGFloat extent(NSString* name, NSView* view, CGFloat own, CGFloat content) {
    if (NSNumber* exact = edge(view, name))
        return [exact doubleValue];
    const CGFloat least = [edge(view, [@"least " stringByAppendingString:name]) doubleValue];
    return std::max(least, own >= 0 ? own : content);
}

NSSize sizeOfContent(NSView* view) {
    NSSize size = NSZeroSize;
    for (NSView* child in [view subviews]) {
        if (!placedByLayout(child))
            continue;
        const NSSize wanted = [child fittingSize];
        const CGFloat beside = std::abs([edge(child, @"leading") doubleValue]) +
                               std::abs([edge(child, @"trailing") doubleValue]);
        const CGFloat above =
            std::abs([edge(child, @"top") doubleValue]) + std::abs([edge(child, @"bottom") doubleValue]);
        size.width = std::max(size.width, wanted.width + beside);
        size.height = std::max(size.height, wanted.height + above);
    }
    return size;
}

struct Span {
    CGFloat start;
    CGFloat length;
};

/// Counted from the leading or top edge of what is around it.
Span place(NSView* view, CGFloat wanted, CGFloat room, NSString* first, NSString* last, NSString* middle,
           NSString* whole) {
    NSNumber* start = edge(view, first);
    NSNumber* end = edge(view, last);
    if (edge(view, middle))
        return {std::round((room - wanted) / 2), wanted};
    if ((start && end) || [[edges(view) objectForKey:whole] isEqual:@"equal"])
        return {[start doubleValue], std::max<CGFloat>(0, room - [start doubleValue] + [end doubleValue])};
    if (end)
        return {room - wanted + [end doubleValue], wanted};
    return {[start doubleValue], wanted};
}

} // namespace

@interface AnchorStandIn : NSObject
@end

/// A constraint, which is there once it is active. It keeps no view alive.
@interface ConstraintStandIn : NSObject {
  @public
    __weak NSView* view;
    NSString* name;
    id value;
}
@end

@implementation ConstraintStandIn

- (void)setPriority:(NSLayoutPriority)priority {
    if (priority < NSLayoutPriorityRequired)
        name = nil;
}

- (void)setActive:(BOOL)active {
    if (active && name && view)
        [edges(view) setObject:value forKey:name];
}

@end

@implementation AnchorStandIn {
    __weak NSView* _view;
    NSString* _name;
}

+ (id)anchorOf:(NSView*)view named:(NSString*)name {
    AnchorStandIn* anchor = [[AnchorStandIn alloc] init];
    anchor->_view = view;
    anchor->_name = name;
    return anchor;
}

- (ConstraintStandIn*)named:(NSString*)name value:(id)value {
    ConstraintStandIn* constraint = [[ConstraintStandIn alloc] init];
    constraint->view = _view;
    constraint->name = name;
    constraint->value = value;
    return constraint;
}

- (BOOL)isLength {
    return [_name isEqual:@"width"] || [_name isEqual:@"height"];
}

- (id)constraintEqualToAnchor:(AnchorStandIn*)anchor constant:(CGFloat)constant {
    (void)anchor;
    return [self named:_name value:@(constant)];
}

- (id)constraintEqualToAnchor:(AnchorStandIn*)anchor {
    if ([self isLength])
        return [self named:[_name stringByAppendingString:@" of parent"] value:@"equal"];
    return [self constraintEqualToAnchor:anchor constant:0];
}

- (id)constraintGreaterThanOrEqualToAnchor:(AnchorStandIn*)anchor {
    if ([self isLength])
        return [self named:[_name stringByAppendingString:@" of parent"] value:@"equal"];
    return [self constraintGreaterThanOrEqualToAnchor:anchor constant:0];
}

- (id)constraintGreaterThanOrEqualToAnchor:(AnchorStandIn*)anchor constant:(CGFloat)constant {
    (void)anchor;
    return [self named:[@"least " stringByAppendingString:_name] value:@(constant)];
}

- (id)constraintLessThanOrEqualToAnchor:(AnchorStandIn*)anchor constant:(CGFloat)constant {
    return [self constraintGreaterThanOrEqualToAnchor:anchor constant:constant];
}

- (id)constraintEqualToConstant:(CGFloat)constant {
    return [self named:_name value:@(constant)];
}

- (id)constraintGreaterThanOrEqualToConstant:(CGFloat)constant {
    return [self named:[@"least " stringByAppendingString:_name] value:@(constant)];
}

@end

@implementation NSLayoutConstraint (StandIn)

+ (void)activateConstraints:(NSArray*)constraints {
    for (NSLayoutConstraint* constraint in constraints)
        [constraint setActive:YES];
}

@end

@implementation NSView (LayoutStandIn)

- (NSLayoutXAxisAnchor*)leadingAnchor {
    return [AnchorStandIn anchorOf:self named:@"leading"];
}

- (NSLayoutXAxisAnchor*)trailingAnchor {
    return [AnchorStandIn anchorOf:self named:@"trailing"];
}

- (NSLayoutXAxisAnchor*)centerXAnchor {
    return [AnchorStandIn anchorOf:self named:@"centerX"];
}

- (NSLayoutYAxisAnchor*)topAnchor {
    return [AnchorStandIn anchorOf:self named:@"top"];
}

- (NSLayoutYAxisAnchor*)bottomAnchor {
    return [AnchorStandIn anchorOf:self named:@"bottom"];
}

- (NSLayoutYAxisAnchor*)centerYAnchor {
    return [AnchorStandIn anchorOf:self named:@"centerY"];
}

- (NSLayoutDimension*)widthAnchor {
    return [AnchorStandIn anchorOf:self named:@"width"];
}

- (NSLayoutDimension*)heightAnchor {
    return [AnchorStandIn anchorOf:self named:@"height"];
}

/// Its anchors are the view's own.
- (NSLayoutGuide*)safeAreaLayoutGuide {
    return static_cast<NSLayoutGuide*>(static_cast<id>(self));
}

- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag {
    if (flag)
        [recordOf(self) removeObjectForKey:@"anchored"];
    else
        [recordOf(self) setObject:@YES forKey:@"anchored"];
}

- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation {
    (void)priority;
    (void)orientation;
}

- (void)setNeedsLayout:(BOOL)needsLayout {
    (void)needsLayout;
}

- (void)invalidateIntrinsicContentSize {
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
    const NSSize room = [self bounds].size;
    for (NSView* child in [self subviews]) {
        if (!placedByLayout(child))
            continue;
        const NSSize wanted = [child fittingSize];
        const Span x =
            place(child, wanted.width, room.width, @"leading", @"trailing", @"centerX", @"width of parent");
        Span y = place(child, wanted.height, room.height, @"top", @"bottom", @"centerY", @"no such edge");
        if ([[edges(child) objectForKey:@"height of parent"] isEqual:@"equal"])
            y = {0, std::max(wanted.height, room.height)};
        const CGFloat up = [self isFlipped] ? y.start : room.height - y.start - y.length;
        [child setFrame:NSMakeRect(x.start, up, x.length, y.length)];
    }
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
    [recordOf(self) setObject:@(width) forKey:@"widest"];
}

- (NSSize)intrinsicContentSize {
    const CGFloat widest = [[recordOf(self) objectForKey:@"widest"] doubleValue];
    NSAttributedString* text = [self attributedStringValue];
    const NSRect box = [text boundingRectWithSize:NSMakeSize(widest > 0 ? widest : ample, ample)
                                          options:NSStringDrawingUsesLineFragmentOrigin];
    return NSMakeSize(std::ceil(NSWidth(box)) + 4,
                      std::max(std::ceil(NSHeight(box)), std::ceil([[self font] ascender])));
}

@end

@implementation NSStackView {
    NSMutableArray<NSView*>* _views;
    NSUserInterfaceLayoutOrientation _orientation;
    NSEdgeInsets _insets;
    CGFloat _spacing;
    NSStackViewDistribution _distribution;
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
    (void)gravity;
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

- (void)setOrientation:(NSUserInterfaceLayoutOrientation)orientation {
    _orientation = orientation;
}

- (void)setAlignment:(NSLayoutAttribute)alignment {
    (void)alignment;
}

- (void)setEdgeInsets:(NSEdgeInsets)insets {
    _insets = insets;
}

- (void)setSpacing:(CGFloat)spacing {
    _spacing = spacing;
}

- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view {
    [recordOf(view) setObject:@(spacing) forKey:@"spacing after"];
}

- (void)setDistribution:(NSStackViewDistribution)distribution {
    _distribution = distribution;
}

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)isUpright {
    return _orientation == NSUserInterfaceLayoutOrientationVertical;
}

- (NSArray<NSView*>*)shown {
    NSMutableArray* shown = [NSMutableArray array];
    for (NSView* view in _views)
        if (![view isHidden])
            [shown addObject:view];
    return shown;
}

- (CGFloat)spacingAfter:(NSView*)view {
    NSNumber* custom = [recordOf(view) objectForKey:@"spacing after"];
    return custom ? [custom doubleValue] : _spacing;
}

- (NSSize)intrinsicContentSize {
    CGFloat along = 0;
    CGFloat across = 0;
    NSArray<NSView*>* shown = [self shown];
    for (NSView* view in shown) {
        const NSSize size = [view fittingSize];
        along += [self isUpright] ? size.height : size.width;
        across = std::max(across, [self isUpright] ? size.width : size.height);
        if (view != [shown lastObject])
            along += [self spacingAfter:view];
    }
    return NSMakeSize(([self isUpright] ? across : along) + _insets.left + _insets.right,
                      ([self isUpright] ? along : across) + _insets.top + _insets.bottom);
}

- (void)layout {
    const NSSize room = [self bounds].size;
    NSArray<NSView*>* shown = [self shown];
    CGFloat at = [self isUpright] ? _insets.top : _insets.left;
    for (NSView* view in shown) {
        NSSize size = [view fittingSize];
        if (_distribution == NSStackViewDistributionFillEqually)
            size.width = (room.width - _spacing * static_cast<CGFloat>([shown count] - 1)) /
                         static_cast<CGFloat>([shown count]);
        if ([[edges(view) objectForKey:@"width of parent"] isEqual:@"equal"])
            size.width = room.width;
        const NSPoint origin =
            [self isUpright] ? NSMakePoint(_insets.left, at) : NSMakePoint(at, _insets.top);
        [view setFrame:NSMakeRect(origin.x, origin.y, size.width, size.height)];
        at += ([self isUpright] ? size.height : size.width) + [self spacingAfter:view];
    }
}

@end

/// A row of a grid, and each of its cells.
@interface GridRowStandIn : NSObject {
  @public
    NSArray<NSView*>* views;
}
@property(nonatomic, getter=isHidden) BOOL hidden;
@end

@implementation GridRowStandIn

/// Its content is out of sight with it.
- (void)setHidden:(BOOL)hidden {
    _hidden = hidden;
    for (NSView* view in views)
        [view setHidden:hidden];
}

- (void)setTopPadding:(CGFloat)padding {
    (void)padding;
}

- (void)mergeCellsInRange:(NSRange)range {
    (void)range;
}

- (id)cellAtIndex:(NSInteger)index {
    (void)index;
    return self;
}

- (id)row {
    return self;
}

- (void)setXPlacement:(NSGridCellPlacement)placement {
    (void)placement;
}

@end

namespace {

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

/// A grid of two columns.
@interface GridStandIn : NSView
@end

@implementation GridStandIn {
    NSMutableArray<GridRowStandIn*>* _rows;
    CGFloat _rowSpacing;
    CGFloat _columnSpacing;
}

+ (void)load {
    setWholeFrame = reinterpret_cast<SetFrame>(
        replaceMethod("NSView", @selector(setFrame:), reinterpret_cast<void*>(setFrame)));
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self)
        _rows = [NSMutableArray array];
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)setRowSpacing:(CGFloat)spacing {
    _rowSpacing = spacing;
}

- (void)setColumnSpacing:(CGFloat)spacing {
    _columnSpacing = spacing;
}

- (void)setRowAlignment:(NSGridRowAlignment)alignment {
    (void)alignment;
}

- (id)columnAtIndex:(NSInteger)index {
    (void)index;
    return [[GridRowStandIn alloc] init];
}

- (id)addRowWithViews:(NSArray<NSView*>*)views {
    GridRowStandIn* row = [[GridRowStandIn alloc] init];
    row->views = views;
    for (NSView* view in views)
        [self addSubview:view];
    [_rows addObject:row];
    return row;
}

- (NSInteger)indexOfRow:(GridRowStandIn*)row {
    return static_cast<NSInteger>([_rows indexOfObjectIdenticalTo:row]);
}

- (id)rowAtIndex:(NSInteger)index {
    return [_rows objectAtIndex:static_cast<NSUInteger>(index)];
}

- (id)cellForView:(NSView*)view {
    for (GridRowStandIn* row in _rows)
        if ([row->views containsObject:view])
            return row;
    return nil;
}

- (CGFloat)widthOfColumn:(NSUInteger)column {
    CGFloat width = 0;
    for (GridRowStandIn* row in _rows)
        if (![row isHidden])
            width = std::max(width, [[row->views objectAtIndex:column] fittingSize].width);
    return width;
}

- (CGFloat)heightOfRow:(GridRowStandIn*)row {
    CGFloat height = 0;
    for (NSView* view in row->views)
        height = std::max(height, [view fittingSize].height);
    return height;
}

- (NSSize)intrinsicContentSize {
    CGFloat height = 0;
    for (GridRowStandIn* row in _rows)
        if (![row isHidden])
            height += [self heightOfRow:row] + _rowSpacing;
    return NSMakeSize([self widthOfColumn:0] + _columnSpacing + [self widthOfColumn:1], height);
}

- (void)layout {
    const CGFloat second = [self widthOfColumn:0] + _columnSpacing;
    CGFloat at = 0;
    for (GridRowStandIn* row in _rows) {
        if ([row isHidden])
            continue;
        CGFloat left = 0;
        for (NSView* view in row->views) {
            const NSSize size = [view fittingSize];
            [view setFrame:NSMakeRect(left, at, size.width, size.height)];
            left += second;
        }
        at += [self heightOfRow:row] + _rowSpacing;
    }
}

@end

@implementation NSGridView (StandIn)

+ (instancetype)gridViewWithNumberOfColumns:(NSInteger)columns rows:(NSInteger)rows {
    (void)columns;
    (void)rows;
    return static_cast<id>([[GridStandIn alloc] initWithFrame:NSZeroRect]);
}

@end

@implementation NSGridCell (StandIn)

+ (NSView*)emptyContentView {
    return [[NSView alloc] initWithFrame:NSZeroRect];
}

@end
