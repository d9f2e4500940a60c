#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/preferences/PaneViews.h"

#include <map>
#include <string>

@class KelpaAboutView;
@class KelpaWindowWatch;

/// The actions by which the system asks for the settings window: the first from macOS 13 on, the second
/// before.
@protocol KelpaSettingsActions
- (void)showSettingsWindow:(id)sender;
- (void)showPreferencesWindow:(id)sender;
@end

namespace kelpa {

/// The preferences window: tabs in the toolbar, a form under each.
class MacPreferencesWindow final : public PreferencesWindow {
  public:
    void setLayout(const PreferencesLayout& layout, PreferencesClient& client) override;
    /// Asks for the window as the system's own Settings line does; whoever answers that calls `present`.
    void show() override;
    void show(const std::string& id, PreferencesField field, const PreferencesValue& value) override;
    void present();
    /// Takes what is being typed for entered and the window off the screen. Nothing is reported any more: the
    /// core's end comes before the window's.
    void retire();

  private:
    /// A control and the form that it stands in.
    struct Place {
        KelpaControl* control = nil;
        KelpaFormView* form = nil;
    };
    NSViewController* makePane(const PreferencesPane& pane, const FormContext& context);
    void makeWindow(NSTabViewController* tabs, const PreferencesLayout& layout, PreferencesClient& client);
    /// Makes the window as wide as the widest pane.
    void widen();

    NSWindow* window_ = nil;
    KelpaAboutView* about_ = nil;
    NSMutableArray<KelpaFormView*>* forms_ = [NSMutableArray array];
    bool presented_ = false;        ///< since `show` asked for it
    KelpaWindowWatch* watch_ = nil; ///< the window's delegate, which it does not own
    std::map<std::string, Place, std::less<>> places_;
};

} // namespace kelpa
