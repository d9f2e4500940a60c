#pragma once

#import <AppKit/AppKit.h>

namespace kelpa {

/// The views in `parent`, the last one on top, to be placed by their anchors.
void add(NSArray<NSView*>* views, NSView* parent);
/// Makes `frame` as large as `content`, and so much room around it.
void surround(NSView* content, NSView* frame, NSEdgeInsets room = {});
/// A view in the middle of `parent`.
void addCentred(NSView* view, NSView* parent);
void fixSize(NSView* view, NSSize size);
/// Has a stack's views stand one below the other; gives the stack.
NSStackView* asColumn(NSStackView* stack, NSLayoutAttribute alignment, CGFloat spacing);

} // namespace kelpa
