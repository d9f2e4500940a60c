#import "platform/macos/preferences/MacPreferencesWindow.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/windows/WindowWatch.h"

#include <algorithm>

namespace kelpa {

namespace {

NSTabViewItem* makeTab(NSViewController* content, const PreferencesPane& pane) {
    NSString* label = toNSString(pane.label);
    NSTabViewItem* tab = [NSTabViewItem tabViewItemWithViewController:content];
    [tab setLabel:label];
    [tab setImage:[NSImage imageWithSystemSymbolName:toNSString(pane.symbol) accessibilityDescription:label]];
    return tab;
}

/// Small screens must still reach the last row.
NSView* scrolling(KelpaFormView* form) {
    NSScrollView* scroll = [[NSScrollView alloc] initWithFrame:NSZeroRect];
    [scroll setDrawsBackground:NO];
    [scroll setHasVerticalScroller:YES];
    [scroll setAutohidesScrollers:YES];
    [scroll setDocumentView:form];
    [form setTranslatesAutoresizingMaskIntoConstraints:NO];
    NSView* clip = [scroll contentView];
    [NSLayoutConstraint activateConstraints:@[
        [[form topAnchor] constraintEqualToAnchor:[clip topAnchor]],
        [[form leadingAnchor] constraintEqualToAnchor:[clip leadingAnchor]],
        [[form widthAnchor] constraintEqualToAnchor:[clip widthAnchor]],
        [[form heightAnchor] constraintGreaterThanOrEqualToAnchor:[clip heightAnchor]],
    ]];
    // And no higher than it needs to be.
    NSLayoutConstraint* height = [[form heightAnchor] constraintEqualToAnchor:[clip heightAnchor]];
    [height setPriority:NSLayoutPriorityDefaultLow];
    [height setActive:YES];
    return scroll;
}

} // namespace

void MacPreferencesWindow::setLayout(const PreferencesLayout& layout, PreferencesClient& client) {
    NSTabViewController* tabs = [[NSTabViewController alloc] init];
    [tabs setTabStyle:NSTabViewControllerTabStyleToolbar];
    // The window keeps its own title, whichever pane is chosen.
    [tabs setCanPropagateSelectedChildViewControllerTitle:NO];
    for (const PreferencesPane& pane : layout.panes) {
        NSViewController* content = makePane(pane, {layout, client});
        [[content view] setFrameSize:NSMakeSize(layout.minimumWidth, layout.minimumHeight)];
        [tabs addTabViewItem:makeTab(content, pane)];
    }
    makeWindow(tabs, layout, client);
}

NSViewController* MacPreferencesWindow::makePane(const PreferencesPane& pane, const FormContext& context) {
    NSViewController* controller = [[NSViewController alloc] init];
    if (pane.about) {
        about_ = [[KelpaAboutView alloc] initWithContent:*pane.about];
        [controller setView:about_];
        return controller;
    }
    KelpaFormView* form = [[KelpaFormView alloc] initWithPane:pane in:context];
    for (KelpaControl* control in [form controls])
        places_[[control name]] = {control, form};
    [forms_ addObject:form];
    [controller setView:scrolling(form)];
    return controller;
}

void MacPreferencesWindow::makeWindow(NSTabViewController* tabs, const PreferencesLayout& layout,
                                      PreferencesClient& client) {
    const NSSize least = NSMakeSize(layout.minimumWidth, layout.minimumHeight);
    window_ = [NSWindow windowWithContentViewController:tabs];
    [window_ setTitle:toNSString(layout.title)];
    [window_ setToolbarStyle:NSWindowToolbarStylePreference];
    // Another pane brings other fields for Tab to go to.
    [window_ setAutorecalculatesKeyViewLoop:YES];
    [window_ setReleasedWhenClosed:NO];
    [window_ setContentMinSize:least];
    [window_ setContentSize:least];
    watch_ = [[KelpaWindowWatch alloc] initWithFront:[&client] { client.cameToFront(); }
        closing:[this, &client] {
            // What is being typed counts as entered.
            [window_ makeFirstResponder:nil];
            client.closed();
        }];
    [window_ setDelegate:watch_];
    [window_ center];
}

void MacPreferencesWindow::show() {
    presented_ = false;
    if (@available(macOS 13.0, *))
        [NSApp sendAction:@selector(showSettingsWindow:) to:nil from:nil];
    else
        [NSApp sendAction:@selector(showPreferencesWindow:) to:nil from:nil];
    // The application's delegate is asked last, and whoever took the action before it may have no window.
    if (!presented_)
        present();
}

void MacPreferencesWindow::present() {
    presented_ = true;
    widen();
    [window_ makeKeyAndOrderFront:nil];
}

void MacPreferencesWindow::widen() {
    NSSize least = [window_ contentMinSize];
    for (KelpaFormView* form in forms_)
        least.width = std::max(least.width, [form neededWidth]);
    [window_ setContentMinSize:least];
    const NSSize size = [[window_ contentView] frame].size;
    if (size.width < least.width)
        [window_ setContentSize:NSMakeSize(least.width, size.height)];
}

void MacPreferencesWindow::retire() {
    [window_ close];
    [window_ setDelegate:nil];
}

void MacPreferencesWindow::show(const std::string& id, PreferencesField field,
                                const PreferencesValue& value) {
    if (id == copyrightLine)
        return [about_ setCopyright:std::get<std::string>(value)];
    const auto found = places_.find(id);
    if (found == places_.end())
        return;
    const auto [control, form] = found->second;
    if (field != PreferencesField::Visible)
        return [control show:field value:value];
    [form setControl:control visible:std::get<bool>(value)];
    if ([window_ isVisible])
        widen();
}

} // namespace kelpa
