#import "platform/macos/MainMenu.h"

/// What the windows of text fields answer without saying so in a header.
@protocol KelpaEditActions
- (void)undo:(id)sender;
- (void)redo:(id)sender;
@end

namespace kelpa {

namespace {

NSMenu* addMenu(NSMenu* bar) {
    NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
    NSMenuItem* holder = [[NSMenuItem alloc] initWithTitle:@"" action:nullptr keyEquivalent:@""];
    [holder setSubmenu:menu];
    [bar addItem:holder];
    return menu;
}

/// Without a target the action goes to whatever has the keyboard.
void addKey(NSMenu* menu, SEL action, NSString* key) {
    [menu addItem:[[NSMenuItem alloc] initWithTitle:@"" action:action keyEquivalent:key]];
}

} // namespace

void installMainMenu() {
    NSMenu* bar = [[NSMenu alloc] initWithTitle:@""];
    addMenu(bar); // the first one is the application's own, whatever stands in it
    NSMenu* edit = addMenu(bar);
    addKey(edit, @selector(undo:), @"z");
    addKey(edit, @selector(redo:), @"Z");
    addKey(edit, @selector(cut:), @"x");
    addKey(edit, @selector(copy:), @"c");
    addKey(edit, @selector(paste:), @"v");
    addKey(edit, @selector(selectAll:), @"a");
    NSMenu* windows = addMenu(bar);
    addKey(windows, @selector(performClose:), @"w");
    [NSApp setMainMenu:bar];
    [NSApp setWindowsMenu:windows];
}

} // namespace kelpa
