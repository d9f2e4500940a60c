#import "platform/macos/Menus.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/MacPorts.h"

#include <map>

/// What the windows of text fields answer without saying so in a header.
@protocol KelpaEditActions
- (void)undo:(id)sender;
- (void)redo:(id)sender;
@end

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

namespace kelpa {

namespace {

/// The name of an action with the colon of its one argument; none for a line that does nothing.
SEL selectorOf(const MenuLine& line) {
    return line.action.empty() ? nullptr : NSSelectorFromString(toNSString(line.action + ":"));
}

NSImage* symbolOf(const MenuLine& line) {
    if (line.image.empty())
        return nil;
    NSString* name = toNSString(line.image);
    return [NSImage imageWithSystemSymbolName:name accessibilityDescription:name];
}

void show(NSMenuItem* item, const MenuLine& line) {
    [item setTitle:toNSString(line.title)];
    [item setImage:symbolOf(line)];
    [item setEnabled:line.enabled];
}

/// The menu bar's font with figures of one width, so that the other items there do not move every second.
NSFont* titleFont() {
    return [NSFont monospacedDigitSystemFontOfSize:[[NSFont menuBarFontOfSize:0] pointSize]
                                            weight:NSFontWeightRegular];
}

NSMenuItem* newItem(const MenuLine& line) {
    if (line.separator)
        return static_cast<NSMenuItem*>([NSMenuItem separatorItem]);
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:@""
                                                  action:selectorOf(line)
                                           keyEquivalent:toNSString(line.keyEquivalent)];
    [item setTarget:[MenuAction class]];
    [item setTag:line.tag];
    [item setRepresentedObject:@(line.id)];
    show(item, line);
    return item;
}

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

class MacStatusBar final : public StatusBar {
  public:
    void lineInserted(std::size_t index, const MenuLine& line) override {
        if (!menu_) {
            menu_ = [[NSMenu alloc] initWithTitle:@""];
            // Which lines can be chosen is the core's decision.
            [menu_ setAutoenablesItems:NO];
        }
        NSMenuItem* item = newItem(line);
        lines_[line.id] = item;
        [menu_ insertItem:item atIndex:static_cast<NSInteger>(index)];
    }

    void lineRemoved(int lineId) override {
        const auto found = lines_.find(lineId);
        if (found == lines_.end())
            return;
        [menu_ removeItem:found->second];
        lines_.erase(found);
    }

    void lineChanged(const MenuLine& line) override {
        if (const auto found = lines_.find(line.id); found != lines_.end())
            show(found->second, line);
    }

    void createItem(const std::string& image, MenuClicks& clicks) override {
        theClicks = &clicks;
        item_ = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
        NSImage* icon = [NSImage imageNamed:toNSString(image)];
        // A template takes the menu bar's colour, light or dark.
        [icon setTemplate:YES];
        [[item_ button] setImage:icon];
        [[item_ button] setImagePosition:NSImageLeading];
        [[item_ button] setFont:titleFont()];
        [item_ setMenu:menu_];
    }

    void setTitle(const std::string& title) override {
        if (title == title_)
            return;
        title_ = title;
        [[item_ button] setTitle:toNSString(title)];
    }

    void setHint(const std::string& hint) override {
        [[item_ button] setToolTip:hint.empty() ? nil : toNSString(hint)];
    }

  private:
    NSMenu* menu_ = nil; ///< made with its first line
    std::map<int, NSMenuItem*> lines_;
    NSStatusItem* item_ = nil;
    std::string title_;
};

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

std::unique_ptr<StatusBar> makeMacStatusBar() {
    return std::make_unique<MacStatusBar>();
}

} // namespace kelpa
