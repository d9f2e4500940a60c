#pragma once

#import <AppKit/AppKit.h>

/// Lays a view out and all within it.
void layOutWithin(NSView* view);
