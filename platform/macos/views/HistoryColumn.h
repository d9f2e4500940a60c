#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/HistoryWindow.h"

/// Whoever keeps the columns of the history's charts.
@protocol KelpaHistoryColumns
@property(nonatomic, readonly) const kelpa::HistoryPicture& picture;
/// Where the bars of a chart stand in a column.
- (NSRect)areaOfChart:(NSUInteger)chart inColumn:(NSSize)size;
/// Whether the figures are those of this column.
- (BOOL)shows:(NSUInteger)column;
/// The pointer is on this column; on none, where it is NSNotFound.
- (void)pointAt:(NSUInteger)column;
- (void)choose:(NSUInteger)column;
/// The same, and gives it the keyboard. A number beyond the ends means the nearer end.
- (void)goTo:(NSInteger)column;
@end

/// A period of the history, through all charts: its bars, its labels below them, and what the pointer, the
/// keyboard and VoiceOver meet.
@interface KelpaHistoryColumn : NSView
/// `columns` must outlive the view.
- (instancetype)initWithIndex:(NSUInteger)index columns:(NSView<KelpaHistoryColumns>*)columns;
@end

namespace kelpa {

/// The colours of a chart's parts, from the bottom up.
[[nodiscard]] NSArray<NSColor*>* historyColors(NSUInteger chart);
/// The days of a column as people write them: one with its weekday, several from the first to the last.
[[nodiscard]] NSString* historyPeriodName(const HistoryPeriod& period);

} // namespace kelpa
