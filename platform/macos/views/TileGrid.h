#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A grid of entries one of which is chosen. A capsule lies beneath the chosen one and slides to the next.
@interface KelpaTileGrid : NSView
/// `chosen` hears of clicks and must not own the grid.
- (instancetype)initWithColumns:(NSInteger)columns chosen:(void (^)(std::int64_t value))chosen;
/// Values and their texts, in order.
- (void)setEntries:(const std::vector<std::pair<std::int64_t, std::string>>&)entries;
/// Shows an entry as the chosen one; a value that is none of them leaves none chosen.
- (void)choose:(std::int64_t)value;
- (void)setEnabled:(BOOL)enabled;
@end
