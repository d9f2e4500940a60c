#include "ui/BreakView.h"

#include "base/Text.h"
#include "history/HistoryRecorder.h"
#include "logging/SharedLogger.h"
#include "ui/WindowController.h"

namespace kelpa {

namespace {

/// Prompts are typed in a field of one line, where backslash and n stand for a line break.
std::string shownPrompt(const std::string& prompt) {
    return replacingAll(prompt, "\\n", "\n");
}

BreakScreenTexts texts() {
    return {localized("New Feature:"), localized("Water Reminder"),
            localized("You can enable it in the preference panel."), localized("Skip"), "chevron.forward"};
}

} // namespace

BreakView::BreakView(NativeWindow& window, App& app)
    : window_(window), app_(app), promptState_(app.promptState()), face_(window.hostBreakScreen(*this)) {
    TicktackState& breakState = app.breakState();
    face_->setTexts(texts());
    face_->setPrompt(shownPrompt(promptState_.prompt.value()));
    face_->setSkipOffered(promptState_.showSkipButton.value());
    face_->setCount(breakState.timeString.value());
    prompt_ = promptState_.prompt.subscribe(
        [this](const std::string& text) { face_->setPrompt(shownPrompt(text)); });
    showSkipButton_ =
        promptState_.showSkipButton.subscribe([this](bool show) { face_->setSkipOffered(show); });
    timeString_ = breakState.timeString.subscribe([this](const std::string& text) { face_->setCount(text); });
    timesUp_ = breakState.timesUp.subscribe([this](bool timesUp) {
        if (timesUp)
            skipBreak(promptState_);
    });
}

void skipBreak(PromptState& promptState) {
    logger().info("skip break view", {"BreakView", "skipAction()"});
    promptState.closePrompt();
}

void BreakView::skipPressed() {
    // A face may be a moment behind: what it no longer offers is not obeyed.
    if (window_.visible() && promptState_.showSkipButton.value())
        skipBreak(promptState_);
}

void BreakView::noticeTapped() {
    if (!window_.visible())
        return;
    logger().info("Click new feature: Water Reminder", {"BreakView", "body"});
    app_.history().noticeTapped();
    skipBreak(promptState_);
    WindowController::showPrefView();
}

} // namespace kelpa
