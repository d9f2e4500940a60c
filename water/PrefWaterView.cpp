#include "water/PrefWaterView.h"

#include "base/Localized.h"
#include "prefs/ChoiceControl.h"
#include "prefs/SwitchControl.h"
#include "water/PerfWaterTimePointView.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr std::int64_t targetStep = 50; ///< ml, as are the two below
constexpr std::int64_t lowestTarget = 50;
constexpr std::int64_t highestTarget = 20000;
constexpr const char* modeId = "mode";

/// The nearest target that the pane sets.
std::int64_t settableTarget(std::int64_t millilitres) {
    const std::int64_t inRange = std::clamp(millilitres, lowestTarget, highestTarget);
    return (inRange + targetStep / 2) / targetStep * targetStep;
}

std::vector<PreferencesChoice> modes() {
    std::vector<PreferencesChoice> all;
    for (const WaterMode mode : allWaterModes())
        all.push_back({static_cast<std::int64_t>(mode), desc(mode)});
    return all;
}

} // namespace

PrefWaterView::PrefWaterView(PrefWaterState& state, App& app, PreferencesWindow& window,
                             AccumulatorMaker& accumulators)
    : Pane(localized("Water"), "drop.circle"), state_(state), window_(window), waterPane_(state, app),
      interval_(state, waterPane_, window), modeTold_(state.mode.observe([this](WaterMode) { showMode(); })) {
    addOptions(accumulators);
    addSchedule();
}

void PrefWaterView::addOptions(AccumulatorMaker& accumulators) {
    addSection(localized("Options"));
    addRow(localized("Enable"), enable());
    const std::string caption = localized("Target");
    addRow(caption, accumulators.makeAccumulator(
                        {"target", PreferencesControlKind::Accumulator, caption, localized("ml")}, target(),
                        targetStep));
    addRow(localized("Mode"), mode());
}

void PrefWaterView::addSchedule() {
    addSection(localized("Schedule"));
    interval_.addTo(*this);
    addRow({}, std::make_unique<PerfWaterTimePointView>(state_, waterPane_, window_));
}

std::unique_ptr<PaneControl> PrefWaterView::enable() {
    const auto write = [this](bool on) { waterPane_.setEnable(on); };
    return std::make_unique<SwitchControl>("enable", localized("Enable drink water reminder"), window_,
                                           bindingTo(state_.enable, write));
}

NumberBinding PrefWaterView::target() {
    const auto write = [this](std::int64_t millilitres) {
        const std::int64_t settable = settableTarget(millilitres);
        if (settable != state_.target())
            waterPane_.setTarget(settable);
    };
    return {bindingTo(state_.target, write), lowestTarget, highestTarget};
}

std::unique_ptr<PaneControl> PrefWaterView::mode() {
    const auto write = [this](WaterMode mode) { waterPane_.setMode(mode); };
    return std::make_unique<ChoiceControl>(
        PreferencesControl{modeId, PreferencesControlKind::Picker, localized("Mode"), {}}, window_, modes(),
        rawBindingTo(state_.mode, write));
}

void PrefWaterView::show() {
    Pane::show();
    showMode();
}

void PrefWaterView::showMode() {
    const WaterMode mode = state_.mode();
    window_.setHint(modeId, tip(mode));
    interval_.setVisible(mode == WaterMode::interval);
    window_.setVisible(PerfWaterTimePointView::controlId, mode == WaterMode::timing);
}

} // namespace kelpa
