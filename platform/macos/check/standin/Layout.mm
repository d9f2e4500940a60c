// A layout that is good enough to press and read what is there: whatever is laid out stands in a column, each
// as high as it wants to be, or in a row, all of one width. What constraints say is of no matter to that.
#import "platform/macos/check/standin/StandIns.h"

#include <algorithm>
#include <cmath>

const CGFloat NSViewNoIntrinsicMetric = -1;

namespace {

constexpr CGFloat spacing = 4;
constexpr CGFloat ample = 10000;
constexpr NSSize smallestControl = {40, 22};

BOOL isRow(NSView* view) {
    return [view isKindOfClass:[NSStackView class]] &&
           [static_cast<NSStackView*>(view) orientation] == NSUserInterfaceLayoutOrientationHorizontal;
}

NSArray<NSView*>* laidOutIn(NSView* view) {
    NSMutableArray* all = [NSMutableArray array];
    for (NSView* child in [view subviews])
        if ([recordOf(child)[@"laid out"] boolValue] && ![child isHidden])
            [all addObject:child];
    return all;
}

NSSize sizeOfContent(NSView* view) {
    NSSize size = NSZeroSize;
    for (NSView* child in laidOutIn(view)) {
        const NSSize wanted = [child fittingSize];
        if (isRow(view))
            size = NSMakeSize(size.width + wanted.width, std::max(size.height, wanted.height));
        else
            size = NSMakeSize(std::max(size.width, wanted.width), size.height + wanted.height + spacing);
    }
    return size;
}

void (*setWholeFrame)(NSView*, SEL, NSRect);

/// Whoever wants to hear of a new size is told, as there.
void setFrame(NSView* view, SEL selector, NSRect frame) {
    if (![NSStringFromClass([view class]) hasPrefix:@"Kelpa"])
        return setWholeFrame(view, selector, frame);
    [view setFrameOrigin:frame.origin];
    [view setFrameSize:frame.size];
}

} // namespace

/// An edge or a length of a view, and any constraint of it.
@interface AnchorStandIn : NSObject
@end

@implementation AnchorStandIn

static id anchorOf(id, SEL) {
    static AnchorStandIn* all = [[AnchorStandIn alloc] init];
    return all;
}

+ (void)load {
    replace("NSView", @selector(setFrame:), setFrame, setWholeFrame);
    addMethods("NSView",
               "leadingAnchor trailingAnchor centerXAnchor topAnchor bottomAnchor centerYAnchor widthAnchor "
               "heightAnchor safeAreaLayoutGuide",
               reinterpret_cast<void*>(anchorOf));
    addMethods("AnchorStandIn",
               "topAnchor constraintEqualToAnchor: constraintEqualToAnchor:constant: "
               "constraintGreaterThanOrEqualToAnchor: constraintGreaterThanOrEqualToAnchor:constant: "
               "constraintLessThanOrEqualToAnchor:constant: constraintEqualToConstant: "
               "constraintGreaterThanOrEqualToConstant:",
               reinterpret_cast<void*>(anchorOf));
    ignoreMessages("NSView", "invalidateIntrinsicContentSize");
}

@end

@implementation NSView (LayoutStandIn)

- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag {
    recordOf(self)[@"laid out"] = @(!flag);
}

- (NSSize)intrinsicContentSize {
    return NSZeroSize;
}

- (NSSize)fittingSize {
    const NSSize own = [self intrinsicContentSize];
    const NSSize content = sizeOfContent(self);
    return NSMakeSize(std::max(own.width, content.width), std::max(own.height, content.height));
}

- (void)layout {
    const NSSize room = [self bounds].size;
    NSArray<NSView*>* children = laidOutIn(self);
    const CGFloat share = room.width / static_cast<CGFloat>([children count]);
    NSPoint at = NSMakePoint(0, [self isFlipped] ? 0 : room.height);
    for (NSView* child in children) {
        const CGFloat height = [child fittingSize].height;
        if (isRow(self)) {
            [child setFrame:NSMakeRect(at.x, 0, share, room.height)];
            at.x += share;
        } else {
            [child setFrame:NSMakeRect(0, [self isFlipped] ? at.y : at.y - height, room.width, height)];
            at.y += [self isFlipped] ? height + spacing : -height - spacing;
        }
    }
}

- (void)layOutAll {
    [self layout];
    for (NSView* child in [[self subviews] copy])
        if (![child isHidden])
            [child layOutAll];
}

@end

@implementation NSControl (LayoutStandIn)

- (NSSize)intrinsicContentSize {
    const NSSize size = [[self cell] cellSize];
    return NSMakeSize(std::max(size.width, smallestControl.width),
                      std::max(size.height, smallestControl.height));
}

@end

@implementation NSScrollView (LayoutStandIn)

- (NSSize)intrinsicContentSize {
    return NSMakeSize(100, 100);
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
    return NSMakeSize(std::ceil(NSWidth(box)) + spacing,
                      std::ceil(std::max(NSHeight(box), [[self font] defaultLineHeightForFont])));
}

@end

/// Also a grid, as a column of rows, and each of its rows, which stands for all cells in it.
@implementation NSStackView

+ (void)load {
    ignoreMessages("NSStackView", "columnAtIndex: mergeCellsInRange: cellAtIndex:");
}

+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views {
    NSStackView* stack = [[self alloc] initWithFrame:NSZeroRect];
    for (NSView* view in views)
        [stack addArrangedSubview:view];
    return stack;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)addArrangedSubview:(NSView*)view {
    recordOf(view)[@"laid out"] = @YES;
    [self addSubview:view];
}

- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity {
    [self addArrangedSubview:view];
}

- (NSArray<NSView*>*)arrangedSubviews {
    return [[self subviews] copy];
}

- (id)addRowWithViews:(NSArray<NSView*>*)views {
    [self addArrangedSubview:[NSStackView stackViewWithViews:views]];
    return [[self subviews] lastObject];
}

- (NSInteger)indexOfRow:(id)row {
    return static_cast<NSInteger>([[self subviews] indexOfObjectIdenticalTo:row]);
}

- (id)rowAtIndex:(NSInteger)index {
    return [self subviews][static_cast<NSUInteger>(index)];
}

- (id)cellForView:(NSView*)view {
    return [view superview];
}

- (id)row {
    return self;
}

@end

@implementation NSGridView (StandIn)

+ (id)gridViewWithNumberOfColumns:(NSInteger)columns rows:(NSInteger)rows {
    NSStackView* grid = [[NSStackView alloc] initWithFrame:NSZeroRect];
    [grid setOrientation:NSUserInterfaceLayoutOrientationVertical];
    return static_cast<id>(grid);
}

@end
