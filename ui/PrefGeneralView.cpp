#include "ui/PrefGeneralView.h"

#include "base/Localized.h"
#include "prefs/SwitchControl.h"

namespace kelpa {

PrefGeneralView::PrefGeneralView(PrefState& state, PreferencesWindow& window)
    : Pane(localized("General"), "gearshape.circle") {
    const auto add = [&](std::string caption, const char* id, std::string label, Setting<bool>& setting) {
        addRow(std::move(caption),
               std::make_unique<SwitchControl>(id, std::move(label), window, bindingTo(setting)));
    };
    addSection({});
    add(localized("Start options"), "launchAtLogin", localized("Launch at login"), state.launchAtLogin);
    add(localized("StatusBar options"), "showTime", localized("Show time in StatusBar"), state.showTime);
    add(localized("Update options"), "autoCheckUpdate", localized("Auto check update for Kelpa"),
        state.autoCheckUpdate);
}

} // namespace kelpa
