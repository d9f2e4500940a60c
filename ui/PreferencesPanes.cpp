#include "ui/PreferencesPanes.h"

#include "base/Text.h"
#include "panes/PromptListControl.h"
#include "panes/TypedFields.h"
#include "ui/IconFont.h"
#include "ui/WindowController.h"

namespace kelpa {

namespace {

constexpr const char* textId = "breakPrompt";

PreferencesControl number(const char* id, std::string name, std::string unit) {
    return {id, PreferencesControlKind::Number, std::move(name), std::move(unit)};
}

std::vector<PreferencesEntry> styles() {
    std::vector<PreferencesEntry> all;
    for (std::int64_t raw = 0; raw < caseCount<BreakStyle>; ++raw)
        all.push_back({raw, desc(static_cast<BreakStyle>(raw)), {}});
    return all;
}

std::vector<PreferencesEntry> lists() {
    return {{static_cast<std::int64_t>(PromptListKind::Break), localized("Break"), {}},
            {static_cast<std::int64_t>(PromptListKind::NewDay), localized("New Day"), {}}};
}

} // namespace

PrefGeneralView::PrefGeneralView(PrefState& state, ShownPreferences& window)
    : Pane(localized("General"), "gearshape.circle") {
    addSection({});
    addRow<SwitchControl>(localized("Start options"), "launchAtLogin", localized("Launch at login"), window,
                          state.launchAtLogin);
    addRow<SwitchControl>(localized("StatusBar options"), "showTime", localized("Show time in StatusBar"),
                          window, state.showTime);
    addRow<SwitchControl>(localized("Update options"), "autoCheckUpdate",
                          localized("Auto check update for Kelpa"), window, state.autoCheckUpdate);
}

PrefBreakView::PrefBreakView(PrefState& state, ShownPreferences& window, Queue& mainQueue,
                             const Services& services)
    : Pane(localized("Workflow"), "tray.circle"), state_(state), window_(window),
      customTold_(state.customBreakPrompt.observe([this](bool) { enableText(); })) {
    addShortBreak(mainQueue);
    addLongBreak(mainQueue);
    addOther();
    if (services.notifications)
        addNoticeSection(*this, state, window, mainQueue);
    if (services.busy)
        hold_.emplace(*this, state, window, mainQueue, *services.busy);
    addHistory();
}

void PrefBreakView::addShortBreak(Queue& mainQueue) {
    addSection(localized("Short Break Options"));
    addRow<NumberTextField>(
        localized("Every"),
        number("workTime", localized("Length of a work period in minutes"), localized("mins")), window_,
        mainQueue, state_.workTime, NumberRange{1, 600});
    addRow<NumberTextField>(
        localized("Break"),
        number("breakTime", localized("Length of a short break in seconds"), localized("seconds")), window_,
        mainQueue, state_.breakTime, NumberRange{5, 7200});
    const std::string custom = localized("Custom break prompt");
    addSwitch("customBreakPrompt", custom, state_.customBreakPrompt);
    addRow<PlainTextField>(localized("Text"),
                           PreferencesControl{textId, PreferencesControlKind::Text, custom, {}}, window_,
                           mainQueue, state_.breakPrompt);
}

void PrefBreakView::addLongBreak(Queue& mainQueue) {
    addSection(localized("Long Break Options"));
    // Never 0: the cycle divides by it.
    addRow<NumberTextField>(localized("Every"),
                            number("shortBreakTimes", localized("Breaks from one long break to the next"),
                                   localized("short breaks")),
                            window_, mainQueue, state_.shortBreakTimes, NumberRange{1, 100});
    addRow<NumberTextField>(
        localized("Break"),
        number("longBreakTime", localized("Length of a long break in minutes"), localized("mins")), window_,
        mainQueue, state_.longBreakTime, NumberRange{1, 240});
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

void PrefBreakView::addHistory() {
    addSection(localized("History"));
    addSwitch("keepHistory", localized("Keep a history of work, breaks and water"), state_.keepHistory);
    addRow<ButtonControl>({}, "showHistory", localized("Show History"), window_,
                          [] { WindowController::showHistory(); });
}

void PrefBreakView::addSwitch(const char* id, std::string label, Setting<bool>& setting) {
    addRow<SwitchControl>({}, id, std::move(label), window_, setting);
}

void PrefBreakView::show() {
    Pane::show();
    enableText();
    if (hold_)
        hold_->show();
}

void PrefBreakView::enableText() {
    window_.show(textId, PreferencesField::Enabled, state_.customBreakPrompt());
}

std::int64_t ChosenStyle::operator()() const {
    return static_cast<std::int64_t>(state_.styleState().breakStyle());
}

void ChosenStyle::set(const std::int64_t& style) {
    state_.styleState().breakStyle.set(static_cast<BreakStyle>(style));
}

Subscription ChosenStyle::observe(Told told) {
    return state_.observeBreakStyle([this, told = std::move(told)] { told((*this)()); });
}

PrefStyleView::PrefStyleView(PrefState& state, ShownPreferences& window)
    : Pane(localized("Style"), "books.vertical.circle"), style_(state) {
    const std::string style = localized("Break Style");
    addSection(style);
    addRow<ChoiceControl>({}, PreferencesControl{styleId, PreferencesControlKind::Picker, style, {}}, window,
                          styles(), style_);
    const std::string prompts = localized("Break Prompts");
    addSection(prompts);
    addRow<ChoiceControl>({}, PreferencesControl{listId, PreferencesControlKind::Segments, prompts, {}},
                          window, lists(), list_);
    addRow<PromptListControl>({}, promptsId, prompts, window, state, list_);
}

PrefAboutView::PrefAboutView(App& app, ShownPreferences& window)
    : Pane(localized("About"), "info.circle"), app_(app), window_(window) {
    AboutContent about = content(app.about());
    if (about.icon.empty()) {
        about.glyph = IconFont::kelpa.rawValue();
        about.glyphFont = IconFont::name();
    }
    setAbout(std::move(about));
}

void PrefAboutView::show() {
    window_.show(copyrightLine, PreferencesField::Value, app_.about().copyright);
}

AboutContent PrefAboutView::content(const AboutApp& about) {
    return {about.icon.value_or(""),
            {},
            {},
            about.name,
            withArguments(localized("v%1$s(%2$s)"), {about.version, about.build}),
            about.copyright,
            localized("Release Notes"),
            about.releaseNotesLink};
}

} // namespace kelpa
