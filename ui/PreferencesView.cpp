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

PreferencesView::PreferencesView(PreferencesWindow& window, App& app, Queue& mainQueue) : window_(window) {
    panes_.push_back(std::make_unique<PrefGeneralView>(app.prefState(), window_));
    panes_.push_back(std::make_unique<PrefBreakView>(app.prefState(), window_, mainQueue));
    panes_.push_back(std::make_unique<PrefStyleView>(app.prefState(), window_));
    panes_.push_back(std::make_unique<PrefWaterView>(app.waterState(), window_, mainQueue));
    panes_.push_back(std::make_unique<PrefAboutView>(app, window_));
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

PaneControl* PreferencesView::touched(const std::string& id) {
    window_.forget(id);
    const auto found = controls_.find(id);
    if (found != controls_.end())
        return found->second;
    logger().warning("the preferences window has no control '" + id + "'", {"PreferencesView", "touched()"});
    return nullptr;
}

/// Tells the control afterwards what holds, also where nothing was taken.
void PreferencesView::act(const std::string& id, const std::function<void(PaneControl&)>& deed) {
    if (PaneControl* control = touched(id)) {
        deed(*control);
        control->show();
    }
}

void PreferencesView::switched(const std::string& id, bool on) {
    act(id, [&](PaneControl& control) { control.switched(on); });
}

void PreferencesView::typed(const std::string& id, const std::string& text) {
    // Nothing is shown: that would be in the way of what is being typed.
    if (PaneControl* control = touched(id))
        control->typed(text);
}

void PreferencesView::entered(const std::string& id, const std::string& text) {
    act(id, [&](PaneControl& control) { control.entered(text); });
}

void PreferencesView::stepped(const std::string& id, int direction) {
    act(id, [&](PaneControl& control) { control.stepped(direction); });
}

void PreferencesView::chosen(const std::string& id, std::int64_t value) {
    act(id, [&](PaneControl& control) { control.chosen(value); });
}

void PreferencesView::timeEntered(const std::string& id, int hour, int minute) {
    act(id, [&](PaneControl& control) { control.timeEntered(hour, minute); });
}

void PreferencesView::timePointAdded(const std::string& id, int hour, int minute) {
    act(id, [&](PaneControl& control) { control.timePointAdded(hour, minute); });
}

void PreferencesView::timePointRemoved(const std::string& id, int hour, int minute) {
    act(id, [&](PaneControl& control) { control.timePointRemoved(hour, minute); });
}

void PreferencesView::promptAdded(const std::string& id, const std::string& text) {
    act(id, [&](PaneControl& control) { control.promptAdded(text); });
}

void PreferencesView::promptEdited(const std::string& id, const std::string& old, const std::string& text) {
    act(id, [&](PaneControl& control) { control.promptEdited(old, text); });
}

void PreferencesView::promptDeleted(const std::string& id, const std::string& text) {
    act(id, [&](PaneControl& control) { control.promptDeleted(text); });
}

void PreferencesView::promptsReset(const std::string& id) {
    act(id, [](PaneControl& control) { control.promptsReset(); });
}

} // namespace kelpa
