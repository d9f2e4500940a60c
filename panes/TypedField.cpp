#include "panes/TypedField.h"

#include "base/Text.h"

namespace kelpa {

namespace {

/// Longer than the time between two keys, short enough to look immediate.
constexpr double pauseSeconds = 1;
/// Time to read why what was entered was not taken.
constexpr double explanationSeconds = 5;

} // namespace

void TypedField::show() {
    const std::string stored = storedText();
    if (writing_ || (typed_ && stored == shown_))
        return;
    if (typed_)
        endTyping();
    shown_ = stored;
    tell(PreferencesField::Value, stored);
}

void TypedField::did(PreferencesAct act, const PreferencesValue& value) {
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr)
        return;
    if (act == PreferencesAct::Typed)
        typed(*text);
    else if (act == PreferencesAct::Entered)
        entered(*text);
}

void TypedField::typed(const std::string& text) {
    calm();
    typed_ = text;
    const std::string problem = text == shown_ ? std::string() : problemOf(text);
    if (problem.empty() || !isHalfTyped(text))
        tellProblem(problem);
    else
        after(pauseSeconds, [this, problem] { tellProblem(problem); });
    if (pending())
        after(pauseSeconds, [this] { write(*typed_); });
}

void TypedField::entered(const std::string& text) {
    calm();
    typed_ = text;
    const auto taken = pending();
    const std::string problem = taken || text == shown_ ? std::string() : problemOf(text);
    if (taken)
        write(*taken);
    typed_.reset();
    tellProblem(problem);
    if (!problem.empty())
        after(explanationSeconds, [this] { tellProblem({}); });
    show();
}

void TypedField::closed() {
    if (const auto text = pending())
        write(*text);
    endTyping();
    show();
}

std::optional<std::string> TypedField::pending() const {
    return typed_ && *typed_ != shown_ && problemOf(*typed_).empty() ? typed_ : std::nullopt;
}

void TypedField::endTyping() {
    calm();
    typed_.reset();
    tellProblem({});
}

void TypedField::write(const std::string& text) {
    writing_ = true;
    store(text);
    writing_ = false;
    shown_ = storedText();
}

void TypedField::after(double seconds, std::function<void()> work) {
    pause_ = std::make_shared<WorkItem>(std::move(work));
    mainQueue_.asyncAfter(seconds, pause_);
}

void TypedField::calm() {
    if (pause_)
        pause_->cancel();
}

PlainTextField::PlainTextField(PreferencesControl description, ShownPreferences& window, Queue& mainQueue,
                               Setting<std::string>& text)
    : TypedField(std::move(description), window, mainQueue), text_(text),
      told_(text.observe([this](const std::string&) { show(); })) {}

std::string PlainTextField::storedText() const {
    return replacingAll(text_(), "\n", "\\n");
}

void PlainTextField::store(const std::string& text) {
    if (text != text_())
        text_.set(text);
}

} // namespace kelpa
