#import "platform/macos/MacStatusBar.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/MenuAction.h"

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

} // namespace

void MacStatusBar::lineInserted(std::size_t index, const MenuLine& line) {
    if (!menu_) {
        menu_ = [[NSMenu alloc] initWithTitle:@""];
        // Which lines can be chosen is the core's decision.
        [menu_ setAutoenablesItems:NO];
    }
    NSMenuItem* item = newItem(line);
    lines_[line.id] = item;
    [menu_ insertItem:item atIndex:static_cast<NSInteger>(index)];
}

void MacStatusBar::lineRemoved(int lineId) {
    const auto found = lines_.find(lineId);
    if (found == lines_.end())
        return;
    [menu_ removeItem:found->second];
    lines_.erase(found);
}

void MacStatusBar::lineChanged(const MenuLine& line) {
    if (const auto found = lines_.find(line.id); found != lines_.end())
        show(found->second, line);
}

void MacStatusBar::createItem(const std::string& image, MenuClicks& clicks) {
    [MenuAction setClicks:&clicks];
    item_ = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    NSImage* icon = [NSImage imageNamed:toNSString(image)];
    // A template takes the menu bar's colour, light or dark.
    [icon setTemplate:YES];
    [[item_ button] setImage:icon];
    [[item_ button] setImagePosition:NSImageLeading];
    [[item_ button] setFont:titleFont()];
    [item_ setMenu:menu_];
}

void MacStatusBar::setTitle(const std::string& title) {
    if (title == title_)
        return;
    title_ = title;
    [[item_ button] setTitle:toNSString(title)];
}

} // namespace kelpa
