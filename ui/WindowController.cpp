#include "ui/WindowController.h"

#include "base/FatalError.h"
#include "base/Localized.h"
#include "base/Published.h"
#include "prefs/PrefState.h"
#include "prefs/PromptState.h"
#include "ui/BreakView.h"
#include "ui/PanelPlace.h"
#include "ui/PrefAboutView.h"
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

class Panel final : public WaterViewClient {
  public:
    void closeWaterView() override { WindowController::closeWaterView(); }
    void dismissWaterView() override { WindowController::dismissWaterView(); }
    TickerSource& tickers() override;
    Queue& mainQueue() override;
};

struct Shared {
    UiClient& client;
    WindowSystem& system;
    TickerSource& tickers;
    Queue& mainQueue;
    Services services;
    Desktop desktop = {};
    Panel panel = {};
    std::vector<std::unique_ptr<Window>> windows = {};
    PanelPlace waterPlace{WaterView::size};
    std::unique_ptr<PreferencesView> prefView = {};
    bool breakShows = false; ///< from the break's showing to its closing: new screens join it
    Listeners<> breakShowsAssigned = {};
    bool hasUpdater = false;
};

std::unique_ptr<Shared> shared;

Shared& the() {
    if (!shared)
        fatalError("Windows were used before the program was set up");
    return *shared;
}

TickerSource& Panel::tickers() {
    return the().tickers;
}

Queue& Panel::mainQueue() {
    return the().mainQueue;
}

Window* find(const std::string& title) {
    const auto& windows = the().windows;
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [&](const auto& window) { return window->spec().title == title; });
    return found == windows.end() ? nullptr : found->get();
}

Window& make(WindowSpec spec) {
    the().windows.push_back(std::make_unique<Window>(the().system, std::move(spec)));
    return *the().windows.back();
}

Window& breakWindow(const Screen& screen) {
    const std::string title = std::to_string(screen.number);
    if (Window* found = find(title)) {
        found->setFrame(screen.frame, screen.number);
        return *found;
    }
    Window& window =
        make({title, screen.frame, statusWindowLevel, WindowStyle::FullSizeContent, screen.number});
    window.setContent(
        std::make_unique<BreakView>(window.native(), the().client.promptState(), the().client.breakState()));
    return window;
}

const Screen& mainScreen() {
    const Screen* screen = the().system.mainScreen();
    if (!screen)
        fatalError("There is no screen for the water window");
    return *screen;
}

Window& waterWindow() {
    const Screen& screen = mainScreen();
    if (Window* found = find(waterTitle))
        return *found;
    const auto place = the().waterPlace.on(the().system.screens(), screen);
    Window& window = make({waterTitle, place.frame, floatingWindowLevel, WindowStyle::Panel, place.screen});
    window.setContent(std::make_unique<WaterView>(window.native(), the().client.waterState(), the().panel));
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
    const auto screens = the().system.screens();
    const Screen* own = screenOf(window, screens);
    const Screen* home = own ? own : the().system.mainScreen();
    if (!home)
        return;
    const auto place = the().waterPlace.on(screens, *home);
    window.setFrame(place.frame, place.screen);
}

/// A break window goes with its screen; the water panel is still wanted, and moves to where it can be seen.
void leaveLostScreens(const std::vector<Screen>& screens) {
    for (const auto& window : the().windows)
        if (window->spec().style == WindowStyle::Panel)
            placeWaterWindow(*window);
        else if (!screenOf(*window, screens) && window->visible())
            window->withdraw();
}

void Desktop::panelDragged(const Rect& frame) {
    the().waterPlace.dropped(frame, the().system.screens());
    if (Window* window = find(waterTitle))
        placeWaterWindow(*window);
}

void Desktop::screensChanged() {
    const auto screens = the().system.screens();
    leaveLostScreens(screens);
    bool covered = false;
    for (const Screen& screen : screens) {
        Window* known = find(std::to_string(screen.number));
        if (known)
            known->setFrame(screen.frame, screen.number);
        if (!the().breakShows || (known && known->visible()))
            continue;
        breakWindow(screen).show();
        covered = true;
    }
    if (covered)
        the().system.activate();
}

/// Made with the program and never again: a later change of the preference is for the next run.
void makeUpdater() {
    Updater* updater = the().services.updater;
    if (!updater || the().hasUpdater)
        return;
    the().hasUpdater = true;
    updater->setAutomaticallyChecks(the().client.prefState().autoCheckUpdate());
    updater->setCheckInterval(updateCheckSeconds);
    updater->setSendsSystemProfile(true);
    updater->start();
}

} // namespace

void WindowController::wire(UiClient& client, WindowSystem& system, TickerSource& tickers, Queue& mainQueue,
                            const Services& services) {
    shared = std::make_unique<Shared>(Shared{client, system, tickers, mainQueue, services});
    system.setClient(shared->desktop);
}

void WindowController::setup() {
    makeUpdater();
    PrefWaterState& water = the().client.waterState();
    if (!water.enable())
        return;
    if (water.isNewDay())
        water.reset();
    water.schedule();
}

void WindowController::prepareBreak() {
    the().system.prepare();
}

void WindowController::showBreak() {
    the().breakShows = true;
    for (const Screen& screen : the().system.screens())
        breakWindow(screen).show();
    the().system.activate();
    the().breakShowsAssigned.tell();
}

void WindowController::closeBreak() {
    the().breakShows = false;
    for (const Screen& screen : the().system.screens())
        breakWindow(screen).close();
    the().system.deactivate();
    the().breakShowsAssigned.tell();
}

bool WindowController::breakShows() {
    return the().breakShows;
}

Subscription WindowController::observeBreakShows(std::function<void()> told) {
    return the().breakShowsAssigned.add(std::move(told));
}

void WindowController::showWaterView() {
    PrefWaterState& water = the().client.waterState();
    if (water.isNewDay())
        water.reset();
    Window& window = waterWindow();
    placeWaterWindow(window);
    window.show();
    the().system.activate();
}

void WindowController::closeWaterView() {
    waterWindow().close();
    the().system.deactivate();
}

void WindowController::dismissWaterView() {
    waterWindow().withdraw();
    the().system.deactivate();
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
    the().system.activate();
}

PreferencesView* WindowController::prefView() {
    auto& view = the().prefView;
    if (!view && the().services.preferences)
        view = std::make_unique<PreferencesView>(*the().services.preferences, the().client, the().mainQueue);
    return view.get();
}

void WindowController::settlePreferences() {
    if (the().prefView)
        the().prefView->closed();
}

void WindowController::showAbout() {
    if (!the().services.about)
        return;
    const AboutApp about = the().client.about();
    the().services.about->show({about.icon.value_or(""), about.name, PrefAboutView::versionLine(about),
                                about.copyright, localized("Release Notes"), about.releaseNotesLink});
    the().system.activate();
}

void WindowController::showUpdater() {
    if (the().services.updater)
        the().services.updater->checkForUpdates();
}

} // namespace kelpa
