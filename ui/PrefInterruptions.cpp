#include "ui/PrefInterruptions.h"

#include "base/Text.h"
#include "panes/ChoiceControls.h"
#include "panes/TypedFields.h"
#include "timer/BreakHold.h"
#include "timer/BreakNotice.h"

#include <array>

namespace kelpa {

namespace {

constexpr const char* limitId = "holdLimit";

PreferencesControl number(const char* id, std::string name) {
    return {id, PreferencesControlKind::Number, std::move(name), localized("mins")};
}

std::vector<PreferencesEntry> leads() {
    std::vector<PreferencesEntry> all = {{0, localized("Off"), {}}};
    for (const std::int64_t seconds : {10, 30, 60})
        all.push_back(
            {seconds, withArguments(localized("%1$s seconds before"), {std::to_string(seconds)}), {}});
    return all;
}

/// Also names the setting.
std::string idOf(BusyReason reason) {
    return "hold." + std::string(nameOf(reason));
}

} // namespace

void addNoticeSection(Pane& pane, PrefState& state, ShownPreferences& window, Queue& mainQueue) {
    pane.addSection(localized("Before a Break"));
    const std::string caption = localized("Tell me before a break");
    pane.addRow<ChoiceControl>(caption,
                               PreferencesControl{"breakNotice", PreferencesControlKind::Picker, caption, {}},
                               window, leads(), state.breakNotice);
    pane.addRow<NumberTextField>(
        localized("More time"), number("moreTime", localized("Minutes that a break is put off by")), window,
        mainQueue, state.moreTime, NumberRange{BreakNotice::leastMore, BreakNotice::mostMore});
}

PrefHoldView::PrefHoldView(Pane& pane, PrefState& state, ShownPreferences& window, Queue& mainQueue,
                           BusyProbe& probe)
    : state_(state), window_(window), probe_(probe),
      told_(state.holdBreaks.observe([this](bool hold) { enable(hold); })) {
    pane.addSection(localized("While I Am Busy"));
    pane.addRow<SwitchControl>({}, "holdBreaks", localized("Hold breaks while I am busy"), window,
                               state.holdBreaks);
    pane.addRow<NumberTextField>(
        localized("At most"), number(limitId, localized("Longest wait of a break in minutes")), window,
        mainQueue, state.holdLimit, NumberRange{BreakHold::shortestLimit, BreakHold::longestLimit});
    const std::array labels = {localized("A program records sound"), localized("A camera is in use"),
                               localized("The active window covers a whole screen"),
                               localized("The session is kept awake")};
    for (const BusyReason reason : allBusyReasons)
        pane.addRow<SwitchControl>({}, idOf(reason), labels.at(static_cast<std::size_t>(reason)), window,
                                   state.holdFor(reason));
}

void PrefHoldView::show() {
    available_.clear();
    for (const BusyReason reason : allBusyReasons) {
        const auto why = probe_.unavailable(reason);
        if (!why)
            available_.insert(reason);
        window_.show(idOf(reason), PreferencesField::Hint, why.value_or(std::string()));
    }
    enable(state_.holdBreaks());
}

void PrefHoldView::enable(bool hold) {
    window_.show(limitId, PreferencesField::Enabled, hold);
    for (const BusyReason reason : allBusyReasons)
        window_.show(idOf(reason), PreferencesField::Enabled, hold && available_.count(reason) > 0);
}

} // namespace kelpa
