#pragma once

#include "base/Published.h"
#include "platform/ports/Services.h"
#include "platform/ports/Timers.h"
#include "platform/ports/WindowSystem.h"
#include "prefs/App.h"

#include <functional>

namespace kelpa {

class PreferencesView;

/// The one place that makes, shows and hides the program's windows. A window is found again by its title and
/// kept until the program ends.
class WindowController {
  public:
    /// All must outlive the process's last use of windows. Call before anything else.
    static void wire(App& app, WindowSystem& system, TickerSource& tickers, Queue& mainQueue,
                     const Services& services);

    /// The start of the updater and, where it is on, of the water reminder.
    static void setup();
    /// A break comes in some seconds: what takes long to load may be loaded now.
    static void prepareBreak();
    static void showBreak();
    static void closeBreak();
    /// Whether a break is on the screens: from its showing to its closing.
    [[nodiscard]] static bool breakShows();
    /// Calls `told` after each showing and each closing, until the handle ends.
    static Subscription observeBreakShows(std::function<void()> told);
    static void showWaterView();
    static void closeWaterView();
    /// Takes the water panel off the screen at once and without an answer.
    static void dismissWaterView();
    static void toggleWaterView();
    static void showPrefView();
    /// What the preferences window shows and does, laid out on first use; null where there is no such window.
    [[nodiscard]] static PreferencesView* prefView();
    /// What is being typed in the preferences counts as entered; does nothing where they were never shown.
    static void settlePreferences();
    static void showAbout();
    /// Does nothing where the platform has no window for the history.
    static void showHistory();
    static void showUpdater();
};

} // namespace kelpa
