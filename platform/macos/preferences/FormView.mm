#import "platform/macos/preferences/PaneViews.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

#include <cmath>
#include <vector>

namespace {

constexpr CGFloat margin = 20;
constexpr CGFloat rowSpacing = 10;
constexpr CGFloat sectionGap = 8;

/// A title's row in the grid, if there is one, and the rows that stand under it.
struct Section {
    NSGridRow* title = nil;
    std::vector<NSGridRow*> rows;
};

} // namespace

@implementation KelpaFormView {
    NSGridView* _grid;
    NSMutableArray<KelpaControl*>* _controls;
    std::vector<Section> _sections;
}

- (instancetype)initWithPane:(const kelpa::PreferencesPane&)pane in:(const kelpa::FormContext&)form {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _controls = [NSMutableArray array];
        [self makeGrid];
        for (const kelpa::PreferencesSection& section : pane.sections)
            [self addSection:section in:form];
        [[_grid columnAtIndex:0] setXPlacement:NSGridCellPlacementTrailing];
    }
    return self;
}

/// Counted from the top, so that a pane that does not fit begins with its first row.
- (BOOL)isFlipped {
    return YES;
}

- (NSArray<KelpaControl*>*)controls {
    return _controls;
}

- (void)makeGrid {
    _grid = [NSGridView gridViewWithNumberOfColumns:2 rows:0];
    [_grid setRowSpacing:rowSpacing];
    [_grid setColumnSpacing:kelpa::measures::padding];
    [_grid setRowAlignment:NSGridRowAlignmentFirstBaseline];
    [_grid setTranslatesAutoresizingMaskIntoConstraints:NO];
    [self addSubview:_grid];
    // As wide as its content, in the middle; what room is left stays below.
    [NSLayoutConstraint activateConstraints:@[
        [[_grid topAnchor] constraintEqualToAnchor:[self topAnchor] constant:margin],
        [[_grid centerXAnchor] constraintEqualToAnchor:[self centerXAnchor]],
        [[_grid leadingAnchor] constraintGreaterThanOrEqualToAnchor:[self leadingAnchor] constant:margin],
        [[_grid bottomAnchor] constraintLessThanOrEqualToAnchor:[self bottomAnchor] constant:-margin],
    ]];
}

- (void)addSection:(const kelpa::PreferencesSection&)section in:(const kelpa::FormContext&)form {
    Section place;
    if (!section.title.empty())
        place.title = [self addTitle:section.title];
    for (const kelpa::PreferencesRow& row : section.rows) {
        KelpaControl* control = kelpa::makeControl(row.control, form);
        [_controls addObject:control];
        place.rows.push_back([self addCaption:row.caption cell:[control cell]]);
    }
    _sections.push_back(place);
}

- (NSGridRow*)addTitle:(const std::string&)title {
    NSFont* font = [NSFont boldSystemFontOfSize:kelpa::measures::sectionTitleSize];
    NSTextField* label = kelpa::makeLabel(title, font);
    NSGridRow* row = [_grid addRowWithViews:@[ label, [NSGridCell emptyContentView] ]];
    [row setTopPadding:sectionGap];
    [row mergeCellsInRange:NSMakeRange(0, 2)];
    [[row cellAtIndex:0] setXPlacement:NSGridCellPlacementLeading];
    return row;
}

- (NSGridRow*)addCaption:(const std::string&)caption cell:(NSView*)cell {
    NSView* label = caption.empty() ? [NSGridCell emptyContentView] : kelpa::makeLabel(caption);
    return [_grid addRowWithViews:@[ label, cell ]];
}

- (void)setControl:(KelpaControl*)control visible:(BOOL)visible {
    [[[_grid cellForView:[control cell]] row] setHidden:!visible];
    for (const Section& section : _sections)
        [self updateTitle:section];
}

- (CGFloat)neededWidth {
    const CGFloat scroller = [NSScroller scrollerWidthForControlSize:NSControlSizeRegular
                                                       scrollerStyle:NSScrollerStyleLegacy];
    return std::ceil([_grid fittingSize].width) + 2 * margin + scroller;
}

- (void)updateTitle:(const Section&)section {
    BOOL anyVisible = NO;
    for (NSGridRow* row : section.rows)
        anyVisible = anyVisible || ![row isHidden];
    [section.title setHidden:!anyVisible];
}

@end
