#include "ui/PrefStyleView.h"

#include "base/Localized.h"
#include "prefs/ChoiceControl.h"
#include "ui/PromptListControl.h"

namespace kelpa {

namespace {

std::vector<PreferencesChoice> styles() {
    std::vector<PreferencesChoice> all;
    BreakStyle style{};
    for (std::int64_t raw = 0; fromRawValue(raw, style); ++raw)
        all.push_back({raw, desc(style)});
    return all;
}

Binding<std::int64_t> chosenStyle(PrefState& state) {
    return {[&state] { return static_cast<std::int64_t>(state.styleState().breakStyle()); },
            [&state](std::int64_t raw) { state.styleState().breakStyle.set(static_cast<BreakStyle>(raw)); },
            [&state](const std::function<void()>& told) { return state.observeBreakStyle(told); }};
}

constexpr std::int64_t raw(PromptListKind kind) {
    return static_cast<std::int64_t>(kind);
}

std::vector<PreferencesChoice> lists() {
    return {{raw(PromptListKind::Break), localized("Break")},
            {raw(PromptListKind::NewDay), localized("New Day")}};
}

/// Which list is edited is nobody's setting: only this pane changes it.
Binding<std::int64_t> chosenList(PromptListControl& list) {
    return {[&list] { return raw(list.kind()); },
            [&list](std::int64_t kind) { list.select(static_cast<PromptListKind>(kind)); },
            [](const std::function<void()>&) { return Subscription(); }};
}

} // namespace

PrefStyleView::PrefStyleView(PrefState& state, PreferencesWindow& window)
    : Pane(localized("Style"), "books.vertical.circle") {
    const std::string style = localized("Break Style");
    addSection(style);
    addRow({}, std::make_unique<ChoiceControl>(
                   PreferencesControl{styleId, PreferencesControlKind::Picker, style, {}}, window, styles(),
                   chosenStyle(state)));
    const std::string prompts = localized("Break Prompts");
    auto list = std::make_unique<PromptListControl>(promptsId, prompts, window, state);
    addSection(prompts);
    addRow({}, std::make_unique<ChoiceControl>(
                   PreferencesControl{listId, PreferencesControlKind::Segments, prompts, {}}, window, lists(),
                   chosenList(*list)));
    addRow({}, std::move(list));
}

} // namespace kelpa
