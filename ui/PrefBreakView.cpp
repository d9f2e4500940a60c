#include "ui/PrefBreakView.h"

#include "base/Localized.h"
#include "prefs/SwitchControl.h"
#include "ui/NumberTextField.h"
#include "ui/PlainTextField.h"

namespace kelpa {

namespace {

constexpr const char* textId = "breakPrompt";

PreferencesControl number(const char* id, std::string name, std::string unit) {
    return {id, PreferencesControlKind::Number, std::move(name), std::move(unit)};
}

} // namespace

PrefBreakView::PrefBreakView(PrefState& state, PreferencesWindow& window, Queue& mainQueue)
    : Pane(localized("Workflow"), "tray.circle"), state_(state), window_(window), mainQueue_(mainQueue),
      customTold_(state.customBreakPrompt.observe([this](bool) { enableText(); })) {
    addShortBreak();
    addLongBreak();
    addOther();
}

void PrefBreakView::addShortBreak() {
    addSection(localized("Short Break Options"));
    addNumber(localized("Every"),
              number("workTime", localized("Length of a work period in minutes"), localized("mins")),
              {bindingTo(state_.workTime), 1, 600});
    addNumber(localized("Break"),
              number("breakTime", localized("Length of a short break in seconds"), localized("seconds")),
              {bindingTo(state_.breakTime), 5, 7200});
    addSwitch("customBreakPrompt", localized("Custom break prompt"), state_.customBreakPrompt);
    addRow(localized("Text"),
           std::make_unique<PlainTextField>(
               PreferencesControl{textId, PreferencesControlKind::Text, localized("Custom break prompt"), {}},
               window_, mainQueue_, bindingTo(state_.breakPrompt)));
}

void PrefBreakView::addLongBreak() {
    addSection(localized("Long Break Options"));
    // Never 0: the cycle divides by it.
    addNumber(localized("Every"),
              number("shortBreakTimes", localized("Breaks from one long break to the next"),
                     localized("short breaks")),
              {bindingTo(state_.shortBreakTimes), 1, 100});
    addNumber(localized("Break"),
              number("longBreakTime", localized("Length of a long break in minutes"), localized("mins")),
              {bindingTo(state_.longBreakTime), 1, 240});
    addSwitch("forceLongBreak", localized("Force for long breaks(skip button will not display)"),
              state_.forceLongBreak);
}

void PrefBreakView::addOther() {
    addSection(localized("Other Options"));
    addSwitch("restartTimerAfterAwake", localized("Restart timer after Mac awake"),
              state_.restartTimerAfterAwake);
    addSwitch("stopTimerAfterMouseStop", localized("Stop timer after Mouse stop for 5 mins"),
              state_.stopTimerAfterMouseStop);
    addSwitch("showNewDayTip", localized("Show a new day prompt"), state_.showNewDayTip);
}

void PrefBreakView::addNumber(std::string caption, PreferencesControl description, NumberBinding binding) {
    addRow(std::move(caption), std::make_unique<NumberTextField>(std::move(description), window_, mainQueue_,
                                                                 std::move(binding)));
}

void PrefBreakView::addSwitch(const char* id, std::string label, Setting<bool>& setting) {
    addRow({}, std::make_unique<SwitchControl>(id, std::move(label), window_, bindingTo(setting)));
}

void PrefBreakView::show() {
    Pane::show();
    enableText();
}

void PrefBreakView::enableText() {
    window_.setEnabled(textId, state_.customBreakPrompt());
}

} // namespace kelpa
