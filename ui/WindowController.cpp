#include "ui/WindowController.h"

#include "base/FatalError.h"
#include "base/Published.h"
#include "base/Text.h"
#include "history/HistoryView.h"
#include "prefs/PrefState.h"
#include "prefs/PromptState.h"
#include "ui/BreakView.h"
#include "ui/PreferencesPanes.h"
#include "ui/PreferencesView.h"
#include "ui/Window.h"
#include "water/PrefWaterState.h"
#include "water/WaterView.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace kelpa {

namespace {

constexpr int floatingWindowLevel = 3;
constexpr int statusWindowLevel = 25;
constexpr const char* waterTitle = "Water Reminder";
constexpr double updateCheckSeconds = 43200;

/// Hands the desktop's changes on to the controller.
class Desktop final : public WindowSystemClient {
  public:
    void screensChanged() override;
    void panelDragged(const Rect& frame) override;
};

struct Windows {
    App& app;
    WindowSystem& system;
    TickerSource& tickers;
    Queue& mainQueue;
    Services services;
    Desktop desktop = {};
    std::vector<std::unique_ptr<Window>> made = {};
    PanelPlace waterPlace{WaterView::size};
    std::unique_ptr<PreferencesView> prefView = {};
    std::unique_ptr<HistoryView> historyView = {};
    bool breakShows = false; ///< from the break's showing to its closing: new screens join it
    Listeners<> breakShowsAssigned = {};
    bool hasUpdater = false;
};

Wired<Windows> windows("Windows were");

Window* find(const std::string& title) {
    const auto& made = windows->made;
    const auto found = std::find_if(made.begin(), made.end(),
                                    [&](const auto& window) { return window->spec().title == title; });
    return found == made.end() ? nullptr : found->get();
}

Window& make(WindowSpec spec) {
    windows->made.push_back(std::make_unique<Window>(windows->system, std::move(spec)));
    return *windows->made.back();
}

Window& breakWindow(const Screen& screen) {
    const std::string title = std::to_string(screen.number);
    if (Window* found = find(title)) {
        found->setFrame(screen.frame, screen.number);
        return *found;
    }
    Window& window =
        make({title, screen.frame, statusWindowLevel, WindowStyle::FullSizeContent, screen.number});
    window.setContent(std::make_unique<BreakView>(window.native(), windows->app));
    return window;
}

const Screen& mainScreen() {
    const Screen* screen = windows->system.mainScreen();
    if (!screen)
        fatalError("There is no screen for the water window");
    return *screen;
}

Window& waterWindow() {
    const Screen& screen = mainScreen();
    if (Window* found = find(waterTitle))
        return *found;
    const auto place = windows->waterPlace.on(windows->system.screens(), screen);
    Window& window = make({waterTitle, place.frame, floatingWindowLevel, WindowStyle::Panel, place.screen});
    window.setContent(
        std::make_unique<WaterView>(window.native(), windows->app, windows->tickers, windows->mainQueue));
    return window;
}

/// The screen that a window stands on; null when that is not there any more.
const Screen* screenOf(const Window& window, const std::vector<Screen>& screens) {
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const Screen& screen) {
        return screen.number == window.spec().screen;
    });
    return found == screens.end() ? nullptr : &*found;
}

/// Screens may have come, gone, moved or shrunk since the panel was placed. It stays on its own as long as
/// that is there.
void placeWaterWindow(Window& window) {
    const auto screens = windows->system.screens();
    const Screen* own = screenOf(window, screens);
    const Screen* home = own ? own : windows->system.mainScreen();
    if (!home)
        return;
    const auto place = windows->waterPlace.on(screens, *home);
    window.setFrame(place.frame, place.screen);
}

/// A break window goes with its screen; the water panel is still wanted, and moves to where it can be seen.
void leaveLostScreens(const std::vector<Screen>& screens) {
    for (const auto& window : windows->made)
        if (window->spec().style == WindowStyle::Panel)
            placeWaterWindow(*window);
        else if (!screenOf(*window, screens) && window->visible())
            window->withdraw();
}

void Desktop::panelDragged(const Rect& frame) {
    windows->waterPlace.dropped(frame, windows->system.screens());
    if (Window* window = find(waterTitle))
        placeWaterWindow(*window);
}

void Desktop::screensChanged() {
    const auto screens = windows->system.screens();
    leaveLostScreens(screens);
    bool covered = false;
    for (const Screen& screen : screens) {
        Window* known = find(std::to_string(screen.number));
        if (known)
            known->setFrame(screen.frame, screen.number);
        if (!windows->breakShows || (known && known->visible()))
            continue;
        breakWindow(screen).show();
        covered = true;
    }
    if (covered)
        windows->system.activate();
}

/// Made with the program and never again: a later change of the preference is for the next run.
void makeUpdater() {
    Updater* updater = windows->services.updater;
    if (!updater || windows->hasUpdater)
        return;
    windows->hasUpdater = true;
    updater->setAutomaticallyChecks(windows->app.prefState().autoCheckUpdate());
    updater->setCheckInterval(updateCheckSeconds);
    updater->setSendsSystemProfile(true);
    updater->start();
}

} // namespace

void WindowController::wire(App& app, WindowSystem& system, TickerSource& tickers, Queue& mainQueue,
                            const Services& services) {
    windows.wire({app, system, tickers, mainQueue, services});
    system.setClient(windows->desktop);
}

void WindowController::setup() {
    makeUpdater();
    PrefWaterState& water = windows->app.waterState();
    if (!water.enable())
        return;
    if (water.isNewDay())
        water.reset();
    water.schedule();
}

void WindowController::prepareBreak() {
    windows->system.prepare();
}

void WindowController::showBreak() {
    windows->breakShows = true;
    for (const Screen& screen : windows->system.screens())
        breakWindow(screen).show();
    windows->system.activate();
    windows->breakShowsAssigned.tell();
}

void WindowController::closeBreak() {
    windows->breakShows = false;
    for (const Screen& screen : windows->system.screens())
        breakWindow(screen).close();
    windows->system.deactivate();
    windows->breakShowsAssigned.tell();
}

bool WindowController::breakShows() {
    return windows->breakShows;
}

Subscription WindowController::observeBreakShows(std::function<void()> told) {
    return windows->breakShowsAssigned.add(std::move(told));
}

void WindowController::showWaterView() {
    PrefWaterState& water = windows->app.waterState();
    if (water.isNewDay())
        water.reset();
    Window& window = waterWindow();
    placeWaterWindow(window);
    window.show();
    windows->system.activate();
}

void WindowController::closeWaterView() {
    waterWindow().close();
    windows->system.deactivate();
}

void WindowController::dismissWaterView() {
    waterWindow().withdraw();
    windows->system.deactivate();
}

void WindowController::toggleWaterView() {
    if (waterWindow().visible())
        closeWaterView();
    else
        showWaterView();
}

void WindowController::showPrefView() {
    PreferencesView* view = prefView();
    if (!view)
        return;
    view->show();
    windows->system.activate();
}

PreferencesView* WindowController::prefView() {
    auto& view = windows->prefView;
    if (!view && windows->services.preferences)
        view = std::make_unique<PreferencesView>(*windows->services.preferences, windows->app,
                                                 windows->mainQueue, windows->services);
    return view.get();
}

void WindowController::settlePreferences() {
    if (windows->prefView)
        windows->prefView->closed();
}

void WindowController::showAbout() {
    if (!windows->services.about)
        return;
    windows->services.about->show(PrefAboutView::content(windows->app.about()));
    windows->system.activate();
}

void WindowController::showHistory() {
    auto& view = windows->historyView;
    if (!view && windows->services.history)
        view = std::make_unique<HistoryView>(*windows->services.history, windows->app);
    if (!view)
        return;
    view->show();
    windows->system.activate();
}

void WindowController::showUpdater() {
    if (windows->services.updater)
        windows->services.updater->checkForUpdates();
}

} // namespace kelpa
