#import "platform/macos/MenuAction.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"

namespace {

kelpa::MenuClicks* theClicks = nullptr;
id theSender = nil;

void clicked(id sender) {
    const int line = [[static_cast<NSMenuItem*>(sender) representedObject] intValue];
    theSender = sender;
    if (theClicks)
        kelpa::callCore([line] { theClicks->didClick(line); });
    theSender = nil;
}

} // namespace

@implementation MenuAction

+ (void)setClicks:(kelpa::MenuClicks*)clicks {
    theClicks = clicks;
}

+ (id)sender {
    return theSender;
}

+ (void)didClickPause:(id)sender {
    clicked(sender);
}

+ (void)didClickWater:(id)sender {
    clicked(sender);
}

+ (void)didClickSettings:(id)sender {
    clicked(sender);
}

+ (void)didClickUpdates:(id)sender {
    clicked(sender);
}

+ (void)didClickFeedback:(id)sender {
    clicked(sender);
}

+ (void)didClickAbout:(id)sender {
    clicked(sender);
}

+ (void)didClickQuit:(id)sender {
    clicked(sender);
}

@end
