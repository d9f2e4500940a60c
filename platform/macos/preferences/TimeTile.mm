#import "platform/macos/preferences/TimeTile.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

namespace {

constexpr CGFloat padding = 8;
constexpr CGFloat capsuleOpacity = 0.8;
/// How far the button stands out of the capsule.
constexpr CGFloat overhang = 6;

KelpaCapsule* makeCapsule() {
    KelpaCapsule* capsule = [[KelpaCapsule alloc] initWithColor:[NSColor controlBackgroundColor]];
    [capsule castShadow:kelpa::measures::selectionShadow];
    [capsule setAlphaValue:capsuleOpacity];
    return capsule;
}

/// Makes the capsule as large as what stands on it, and some room.
void surround(NSView* content, NSView* capsule, CGFloat beside, CGFloat above) {
    [NSLayoutConstraint activateConstraints:@[
        [[content leadingAnchor] constraintEqualToAnchor:[capsule leadingAnchor] constant:beside],
        [[content trailingAnchor] constraintEqualToAnchor:[capsule trailingAnchor] constant:-beside],
        [[content topAnchor] constraintEqualToAnchor:[capsule topAnchor] constant:above],
        [[content bottomAnchor] constraintEqualToAnchor:[capsule bottomAnchor] constant:-above],
    ]];
}

/// The views in `parent`, the last one on top, to be placed by their anchors.
void add(NSArray<NSView*>* views, NSView* parent) {
    for (NSView* view in views) {
        [view setTranslatesAutoresizingMaskIntoConstraints:NO];
        [parent addSubview:view];
    }
}

} // namespace

@implementation KelpaTimeTile {
    void (^_removed)(void);
}

- (instancetype)initWithPoint:(const kelpa::PreferencesEntry&)point
                       symbol:(NSString*)symbol
                      removed:(void (^)(void))removed {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _removed = [removed copy];
        NSString* name = kelpa::toNSString(point.removal);
        NSImage* cross = [NSImage imageWithSystemSymbolName:symbol accessibilityDescription:name];
        NSButton* button = [NSButton buttonWithImage:cross target:self action:@selector(clicked:)];
        [button setBordered:NO];
        [button setAccessibilityLabel:name];
        [self layOut:kelpa::makeLabel(point.text, [NSFont systemFontOfSize:0], [NSColor labelColor])
              button:button];
    }
    return self;
}

/// A view hears of clicks only within its parent, so that the tile is as large as both together.
- (void)layOut:(NSTextField*)label button:(NSButton*)button {
    KelpaCapsule* capsule = makeCapsule();
    add(@[ capsule, label, button ], self);
    surround(label, capsule, 2 * padding, padding);
    [NSLayoutConstraint activateConstraints:@[
        [[capsule leadingAnchor] constraintEqualToAnchor:[self leadingAnchor]],
        [[capsule bottomAnchor] constraintEqualToAnchor:[self bottomAnchor]],
        [[capsule topAnchor] constraintEqualToAnchor:[self topAnchor] constant:overhang],
        [[capsule trailingAnchor] constraintEqualToAnchor:[self trailingAnchor] constant:-overhang],
        [[button topAnchor] constraintEqualToAnchor:[self topAnchor]],
        [[button trailingAnchor] constraintEqualToAnchor:[self trailingAnchor]],
    ]];
}

- (void)clicked:(id)sender {
    (void)sender;
    // The tile goes with its time, and the block with it.
    void (^const removed)(void) = _removed;
    removed();
}

@end

namespace kelpa {

NSView* makePlusTile(NSButton* plus) {
    NSView* tile = [[NSView alloc] initWithFrame:NSZeroRect];
    KelpaCapsule* capsule = makeCapsule();
    add(@[ capsule, plus ], tile);
    surround(plus, capsule, padding, padding);
    surround(capsule, tile, 0, 0);
    return tile;
}

} // namespace kelpa
