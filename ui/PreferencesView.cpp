#include "ui/PreferencesView.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "ui/PreferencesPanes.h"
#include "water/PrefWaterView.h"

namespace kelpa {

namespace {

constexpr int minimumWidth = 480;
constexpr int minimumHeight = 400;

} // namespace

PreferencesView::PreferencesView(PreferencesWindow& window, App& app, Queue& mainQueue,
                                 const Services& services)
    : window_(window), shown_(window) {
    panes_.push_back(std::make_unique<PrefGeneralView>(app.prefState(), shown_));
    panes_.push_back(std::make_unique<PrefBreakView>(app.prefState(), shown_, mainQueue, services));
    panes_.push_back(std::make_unique<PrefStyleView>(app.prefState(), shown_));
    panes_.push_back(std::make_unique<PrefWaterView>(app.waterState(), shown_, mainQueue));
    panes_.push_back(std::make_unique<PrefAboutView>(app, shown_));
    for (const auto& pane : panes_)
        for (const auto& control : pane->controls())
            controls_.emplace(control->id(), control.get());
    window_.setLayout(layout(), *this);
}

PreferencesLayout PreferencesView::layout() const {
    PreferencesLayout layout;
    layout.title = localized("Settings");
    layout.minimumWidth = minimumWidth;
    layout.minimumHeight = minimumHeight;
    for (const auto& pane : panes_)
        layout.panes.push_back(pane->layout());
    layout.prompts = {{"plus", localized("Add")},
                      {"square.and.pencil", localized("Edit")},
                      localized("Cancel"),
                      {"trash.fill", localized("Delete")},
                      {"gobackward", localized("Reset to the built-in prompts")}};
    layout.addTimePoint = {"plus", localized("Add a time")};
    layout.removalSymbol = "xmark.circle.fill";
    layout.decrease = {"minus", localized("Decrease")};
    layout.increase = {"plus", localized("Increase")};
    return layout;
}

void PreferencesView::show() {
    cameToFront();
    window_.show();
}

void PreferencesView::cameToFront() {
    for (const auto& pane : panes_)
        pane->show();
}

void PreferencesView::closed() {
    for (const auto& pane : panes_)
        pane->closed();
}

void PreferencesView::did(const std::string& id, PreferencesAct act, const PreferencesValue& value) {
    const auto found = controls_.find(id);
    if (found == controls_.end())
        return logger().warning("the preferences window has no control '" + id + "'",
                                {"PreferencesView", "did()"});
    PaneControl* control = found->second;
    shown_.did(id, act, value);
    control->did(act, value);
    // Also where nothing was taken. Only typing is not answered: that would be in its way.
    if (act != PreferencesAct::Typed)
        control->show();
}

} // namespace kelpa
