#import "platform/macos/views/Layout.h"

namespace kelpa {

void add(NSArray<NSView*>* views, NSView* parent) {
    for (NSView* view in views) {
        [view setTranslatesAutoresizingMaskIntoConstraints:NO];
        [parent addSubview:view];
    }
}

void surround(NSView* content, NSView* frame, NSEdgeInsets room) {
    [NSLayoutConstraint activateConstraints:@[
        [[content leadingAnchor] constraintEqualToAnchor:[frame leadingAnchor] constant:room.left],
        [[content trailingAnchor] constraintEqualToAnchor:[frame trailingAnchor] constant:-room.right],
        [[content topAnchor] constraintEqualToAnchor:[frame topAnchor] constant:room.top],
        [[content bottomAnchor] constraintEqualToAnchor:[frame bottomAnchor] constant:-room.bottom],
    ]];
}

void addCentred(NSView* view, NSView* parent) {
    add(@[ view ], parent);
    [[[view centerXAnchor] constraintEqualToAnchor:[parent centerXAnchor]] setActive:YES];
    [[[view centerYAnchor] constraintEqualToAnchor:[parent centerYAnchor]] setActive:YES];
}

void fixSize(NSView* view, NSSize size) {
    [[[view widthAnchor] constraintEqualToConstant:size.width] setActive:YES];
    [[[view heightAnchor] constraintEqualToConstant:size.height] setActive:YES];
}

NSStackView* asColumn(NSStackView* stack, NSLayoutAttribute alignment, CGFloat spacing) {
    [stack setOrientation:NSUserInterfaceLayoutOrientationVertical];
    [stack setAlignment:alignment];
    [stack setSpacing:spacing];
    return stack;
}

} // namespace kelpa
