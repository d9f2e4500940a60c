#import "platform/macos/MacPorts.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"

#include "ui/UpdateDialog.h"

/// Says that this copy looks for no updates. A modal alert would keep the keyboard and the mouse from a break
/// that begins meanwhile, so this one is a window like any other.
@interface KelpaNoUpdatesNotice : NSObject
- (void)show;
@end

@implementation KelpaNoUpdatesNotice {
    NSAlert* _alert;
}

- (instancetype)init {
    self = [super init];
    if (self) {
        const kelpa::UpdatePage said = kelpa::noUpdatesPage(kelpa::UpdateSupport::NoFeed);
        _alert = [[NSAlert alloc] init];
        [_alert setMessageText:kelpa::toNSString(said.headline)];
        [_alert setInformativeText:kelpa::toNSString(said.text)];
        NSButton* close = [_alert addButtonWithTitle:kelpa::toNSString(said.buttons.front().text)];
        [close setTarget:self];
        [close setAction:@selector(closeClicked:)];
        [_alert layout];
        [[_alert window] center];
    }
    return self;
}

- (void)show {
    [kelpa::runningApplication() activateIgnoringOtherApps:YES];
    [[_alert window] makeKeyAndOrderFront:nil];
}

- (void)closeClicked:(id)sender {
    [[_alert window] orderOut:nil];
}

@end

namespace kelpa {

namespace {

/// Of a build without the Sparkle framework or without a feed: it checks for nothing and says so when asked.
class NoUpdater final : public Updater {
  public:
    void setAutomaticallyChecks(bool) override {}
    void setCheckInterval(double) override {}
    void setSendsSystemProfile(bool) override {}
    void start() override {}
    void checkForUpdates() override {
        if (!notice_)
            notice_ = [[KelpaNoUpdatesNotice alloc] init];
        [notice_ show];
    }

  private:
    KelpaNoUpdatesNotice* notice_ = nil;
};

} // namespace

std::unique_ptr<Updater> makeMacUpdater() {
    return std::make_unique<NoUpdater>();
}

} // namespace kelpa
