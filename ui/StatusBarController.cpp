#include "ui/StatusBarController.h"

#include "base/FatalError.h"
#include "base/Published.h"
#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "prefs/PrefState.h"
#include "timer/BreakHold.h"
#include "timer/TicktackController.h"
#include "ui/WindowController.h"
#include "water/PrefWaterState.h"

#include <array>

namespace kelpa {

namespace {

/// The water line stands fourth: behind the version line, the separator and the pause line.
constexpr std::size_t waterIndex = StatusBarController::water;

struct StatusItem {
    App& app;
    StatusBar& face;
    ApplicationLoop& application;
    Services services;
    std::unique_ptr<Menu> menu = {};
    bool hasItem = false;
    // Of the work period, as it was told last, which comes before it is stored.
    bool timesUp = false;
    std::string timeString = {};
    Subscription timesUpTold = {}, timeTold = {}, holdTold = {};
};

Wired<StatusItem> bar("The status bar was");

std::string feedbackBody(const AboutApp& about) {
    return localized("Please use Chinese or English in your mail, if you can.") + "\n\n\n\n\n\n\n\n" +
           localized("App version") + ": v" + about.version + "(" + about.build + ")\n" +
           localized("Device model") + ": " + about.model + "\n" + localized("System version") + ": " +
           about.osVersion + "\n";
}

void togglePause() {
    bar->app.setManualPause(!bar->app.manualPause());
}

void composeFeedback() {
    const AboutApp about = bar->app.about();
    const auto& log = logfilePath();
    bar->services.mail->compose({about.name + " " + localized("Feedback"), about.feedbackMailbox,
                                 feedbackBody(about), log ? log->string() : std::string()});
}

void countdownChanged() {
    // The one place where the end of a work period becomes a break. It comes before the title is set, so that
    // the break is on its way however long the status bar takes.
    if (bar->timesUp)
        bar->app.breakHold().breakIsDue();
    static const std::string none;
    bar->face.setTitle(bar->timesUp || !bar->app.prefState().showTime() ? none : bar->timeString);
}

/// Why the title is empty while a break waits.
std::string hint() {
    const auto heldBy = bar->app.breakHold().heldBy();
    constexpr std::array texts = {translatable("A break waits while sound is recorded."),
                                  translatable("A break waits while a camera is in use."),
                                  translatable("A break waits while a window covers the screen."),
                                  translatable("A break waits while a program keeps the session awake.")};
    return heldBy ? localized(texts.at(static_cast<std::size_t>(*heldBy))) : std::string();
}

std::string waterTitle() {
    const PrefWaterState& state = bar->app.waterState();
    return localized("Water") + " (" + std::to_string(wholePercentage(state.finishedPrecent())) + "% " +
           (state.inWorkTime() ? std::string() : localized("Out of hours")) + ")";
}

MenuLine waterItem() {
    return {.title = waterTitle(),
            .image = "drop.triangle",
            .keyEquivalent = "r",
            .tag = StatusBarController::water,
            .action = "didClickWater"};
}

std::string versionTitle(const AboutApp& about) {
    return "    " + about.name + " - v" + about.version + "(" + about.build + ")";
}

/// What a line does whose service this platform has; nothing, which disables the line, where it is missing.
template <class Service>
std::function<void()> with(const Service* service, void (*run)()) {
    return service ? std::function(run) : nullptr;
}

void fill(Menu& menu) {
    const Services& services = bar->services;
    menu.add({.title = versionTitle(bar->app.about())});
    menu.add({.separator = true});
    menu.add({.keyEquivalent = "p", .tag = StatusBarController::pause, .action = "didClickPause"},
             togglePause);
    if (bar->app.waterState().enable())
        menu.add(waterItem(), WindowController::toggleWaterView);
    menu.add({.title = localized("Settings") + "...",
              .image = "gearshape.circle",
              .keyEquivalent = ",",
              .action = "didClickSettings"},
             with(services.preferences, WindowController::showPrefView));
    menu.add({.separator = true});
    menu.add({.title = localized("Check for Updates") + "...",
              .image = "arrow.counterclockwise.icloud",
              .action = "didClickUpdates"},
             with(services.updater, WindowController::showUpdater));
    menu.add({.title = localized("Feedback") + "...", .image = "mail.stack", .action = "didClickFeedback"},
             with(services.mail, composeFeedback));
    menu.add({.title = localized("About") + "...", .image = "info.circle", .action = "didClickAbout"},
             with(services.about, WindowController::showAbout));
    menu.add({.title = localized("Quit"), .image = "escape", .keyEquivalent = "q", .action = "didClickQuit"},
             [] { bar->application.terminate(); });
}

} // namespace

void StatusBarController::wire(App& app, StatusBar& face, ApplicationLoop& application,
                               const Services& services) {
    bar.wire({app, face, application, services});
}

void StatusBarController::item() {
    if (bar->hasItem)
        return;
    bar->hasItem = true;
    bar->face.createItem("kelpa", menu());
    TicktackState& work = bar->app.workState();
    bar->timesUp = work.timesUp.value();
    bar->timeString = work.timeString.value();
    bar->timesUpTold = work.timesUp.subscribe([](bool timesUp) {
        bar->timesUp = timesUp;
        countdownChanged();
    });
    bar->timeTold = work.timeString.subscribe([](const std::string& timeString) {
        bar->timeString = timeString;
        countdownChanged();
    });
    countdownChanged();
    bar->holdTold = bar->app.breakHold().observe([] { bar->face.setHint(hint()); });
}

Menu& StatusBarController::menu() {
    if (!bar->menu) {
        bar->menu = std::make_unique<Menu>(bar->face);
        fill(*bar->menu);
    }
    return *bar->menu;
}

void StatusBarController::showTime(bool show) {
    const TicktackState& work = bar->app.workState();
    bar->face.setTitle(show && !work.timesUp.value() ? work.timeString.value() : std::string());
}

void StatusBarController::insetWaterItem() {
    if (!menu().itemWithTag(water))
        menu().insert(waterIndex, waterItem(), WindowController::toggleWaterView);
}

void StatusBarController::removeWaterItem() {
    if (MenuItem* line = menu().itemWithTag(water))
        menu().remove(*line);
}

void StatusBarController::updateWaterItem() {
    if (MenuItem* line = menu().itemWithTag(water))
        line->setTitle(waterTitle());
}

} // namespace kelpa
