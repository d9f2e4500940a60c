// A layout that is good enough to press and read what is there: whatever is laid out stands in a column, each
// as high as it wants to be, or in a row, each as wide. What constraints say is of no matter to that.
#import "platform/macos/check/standin/StandIns.h"

#include <algorithm>

const CGFloat NSViewNoIntrinsicMetric = -1;

namespace {

constexpr CGFloat spacing = 4;
constexpr CGFloat ample = 10000;
constexpr NSSize smallest = {40, 22};

/// Places what is laid out in a view, or only measures it. Gives the room that it takes.
NSSize arrange(NSView* view, bool placing) {
    const NSSize room = [view bounds].size;
    const bool row =
        [view isKindOfClass:[NSStackView class]] &&
        [static_cast<NSStackView*>(view) orientation] == NSUserInterfaceLayoutOrientationHorizontal;
    NSSize used = NSZeroSize;
    for (NSView* child in [view subviews]) {
        if (!recordOf(child)[@"translatesAutoresizingMaskIntoConstraints"] || [child isHidden])
            continue;
        const NSSize wanted = [child fittingSize];
        const CGFloat y = [view isFlipped] ? used.height : room.height - used.height - wanted.height;
        if (placing)
            [child setFrame:row ? NSMakeRect(used.width, 0, wanted.width, room.height)
                                : NSMakeRect(0, y, room.width, wanted.height)];
        used = row ? NSMakeSize(used.width + wanted.width, std::max(used.height, wanted.height))
                   : NSMakeSize(std::max(used.width, wanted.width), used.height + wanted.height + spacing);
    }
    return used;
}

} // namespace

@implementation NSView (LayoutStandIn)

/// An edge or a length of a view, and any constraint of it, is the view. So is a row that it is.
+ (void)load {
    answer("NSView",
           "leadingAnchor trailingAnchor centerXAnchor topAnchor bottomAnchor centerYAnchor "
           "widthAnchor heightAnchor safeAreaLayoutGuide constraintEqualToAnchor: "
           "constraintEqualToAnchor:constant: constraintGreaterThanOrEqualToAnchor: "
           "constraintGreaterThanOrEqualToAnchor:constant: constraintLessThanOrEqualToAnchor:constant: "
           "constraintEqualToConstant: constraintGreaterThanOrEqualToConstant: row",
           itself);
    answer("NSView",
           "invalidateIntrinsicContentSize columnAtIndex: mergeCellsInRange: cellAtIndex:", nothing);
}

- (NSSize)intrinsicContentSize {
    return smallest;
}

- (NSSize)fittingSize {
    const NSSize own = [self intrinsicContentSize];
    const NSSize content = arrange(self, false);
    return NSMakeSize(std::max(own.width, content.width), std::max(own.height, content.height));
}

- (void)layout {
    arrange(self, true);
}

- (void)layOutAll {
    [self setFrameSize:[self frame].size]; // of which those are to hear who were given a whole frame
    [self layout];
    for (NSView* child in [[self subviews] copy])
        if (![child isHidden])
            [child layOutAll];
}

@end

@implementation NSScrollView (LayoutStandIn)

- (NSSize)intrinsicContentSize {
    return NSMakeSize(400, 100);
}

@end

@implementation NSTextField (LayoutStandIn)

- (NSSize)intrinsicContentSize {
    const CGFloat widest = [recordOf(self)[@"preferredMaxLayoutWidth"] doubleValue];
    const NSRect box =
        [[self attributedStringValue] boundingRectWithSize:NSMakeSize(widest > 0 ? widest : ample, ample)
                                                   options:NSStringDrawingUsesLineFragmentOrigin];
    return NSMakeSize(std::max(NSWidth(box), smallest.width),
                      std::max(NSHeight(box), [[self font] defaultLineHeightForFont]));
}

@end

/// Also a grid, as a column of rows, and each of its rows, which stands for all cells in it.
@implementation NSStackView

/// What it is made with.
- (void)setViews:(NSArray<NSView*>*)views {
    for (NSView* view in views)
        [self addArrangedSubview:view];
}

- (void)addArrangedSubview:(NSView*)view {
    [view setTranslatesAutoresizingMaskIntoConstraints:NO];
    [self addSubview:view];
}

- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity {
    [self addArrangedSubview:view];
}

- (NSArray<NSView*>*)arrangedSubviews {
    return [[self subviews] copy];
}

- (id)addRowWithViews:(NSArray<NSView*>*)views {
    NSStackView* row = [NSStackView stackViewWithViews:views];
    [self addArrangedSubview:row];
    return row;
}

- (id)cellForView:(NSView*)view {
    return [view superview];
}

@end

@implementation NSGridView (StandIn)

+ (id)gridViewWithNumberOfColumns:(NSInteger)columns rows:(NSInteger)rows {
    NSStackView* grid = [[NSStackView alloc] init];
    [grid setOrientation:NSUserInterfaceLayoutOrientationVertical];
    return static_cast<id>(grid);
}

@end
