#include "ui/StatusBarController.h"

#include "base/FatalError.h"
#include "base/Localized.h"
#include "base/Published.h"
#include "prefs/PrefState.h"
#include "prefs/PromptState.h"
#include "timer/TicktackState.h"
#include "ui/MenuAction.h"
#include "water/PrefWaterState.h"

#include <memory>

namespace kelpa {

namespace {

/// The water line stands fourth: behind the version line, the separator and the pause line.
constexpr std::size_t waterIndex = StatusBarController::water;

struct Shared {
    UiClient& client;
    StatusBar& face;
    Services services;
    MenuAction action;
    std::unique_ptr<Menu> menu = {};
    bool hasItem = false;
    Subscription cancellable = {};
};

std::unique_ptr<Shared> shared;

Shared& the() {
    if (!shared)
        fatalError("The status bar was used before the program was set up");
    return *shared;
}

void countdownChanged(bool timesUp, const std::string& timeString) {
    // The one place where the end of a work period becomes a break. It comes before the title is set, so that
    // the break is on its way however long the status bar takes.
    if (timesUp)
        the().client.promptState().showBreak();
    static const std::string none;
    the().face.setTitle(timesUp || !the().client.prefState().showTime() ? none : timeString);
}

std::string waterTitle() {
    const PrefWaterState& state = the().client.waterState();
    return localized("Water") + " (" + std::to_string(wholePercentage(state.finishedPrecent())) + "% " +
           (state.inWorkTime() ? std::string() : localized("Out of hours")) + ")";
}

MenuCommand command(const char* name, void (MenuAction::*action)() const) {
    return {name, [action] { (the().action.*action)(); }};
}

MenuItemSpec waterItem() {
    return {"drop.triangle", waterTitle(), "r", StatusBarController::water,
            command("didClickWater", &MenuAction::didClickWater)};
}

std::string versionTitle(const AboutApp& about) {
    return "    " + about.name + " - v" + about.version + "(" + about.build + ")";
}

/// The action of a line whose service this platform has; none, which disables the line, where it is missing.
template <class Service>
MenuCommand actionIf(const Service* service, const char* name, void (MenuAction::*action)() const) {
    return service ? command(name, action) : MenuCommand{};
}

void fill(Menu& menu) {
    const Services& services = the().services;
    menu.add({"", versionTitle(the().client.about()), "", 0, {}});
    menu.addSeparator();
    menu.add({"", "", "p", StatusBarController::pause, command("didClickPause", &MenuAction::didClickPause)});
    if (the().client.waterState().enable())
        menu.add(waterItem());
    menu.add({"gearshape.circle", localized("Settings") + "...", ",", 0,
              actionIf(services.preferences, "didClickSettings", &MenuAction::didClickSettings)});
    menu.addSeparator();
    menu.add({"arrow.counterclockwise.icloud", localized("Check for Updates") + "...", "", 0,
              actionIf(services.updater, "didClickUpdates", &MenuAction::didClickUpdates)});
    menu.add({"mail.stack", localized("Feedback") + "...", "", 0,
              actionIf(services.mail, "didClickFeedback", &MenuAction::didClickFeedback)});
    menu.add({"info.circle", localized("About") + "...", "", 0,
              actionIf(services.about, "didClickAbout", &MenuAction::didClickAbout)});
    menu.add({"escape", localized("Quit"), "q", 0, command("didClickQuit", &MenuAction::didClickQuit)});
}

} // namespace

void StatusBarController::wire(UiClient& client, StatusBar& face, ApplicationLoop& application,
                               const Services& services) {
    shared =
        std::make_unique<Shared>(Shared{client, face, services, MenuAction(client, application, services)});
}

void StatusBarController::item() {
    if (the().hasItem)
        return;
    the().hasItem = true;
    the().face.createItem("kelpa", menu());
    TicktackState& work = the().client.workState();
    the().cancellable = combineLatest<bool, std::string>(work.timesUp, work.timeString, countdownChanged);
}

Menu& StatusBarController::menu() {
    if (!the().menu) {
        the().menu = std::make_unique<Menu>(the().face);
        fill(*the().menu);
    }
    return *the().menu;
}

void StatusBarController::showTime(bool show) {
    const TicktackState& work = the().client.workState();
    the().face.setTitle(show && !work.timesUp.value() ? work.timeString.value() : std::string());
}

void StatusBarController::insetWaterItem() {
    if (!menu().itemWithTag(water))
        menu().insert(waterIndex, waterItem());
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
