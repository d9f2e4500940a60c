#include "panes/TypedFields.h"

#include "base/FatalError.h"
#include "base/Text.h"

#include <algorithm>

namespace kelpa {

namespace {

/// Longer than the time between two keys, short enough to look immediate.
constexpr double pauseSeconds = 1;
/// Time to read why what was entered was not taken.
constexpr double explanationSeconds = 5;

/// What an input method for Chinese or Japanese makes of digits, minus and blank, as those of ASCII.
std::string narrow(std::string text) {
    for (char digit = '0'; digit <= '9'; ++digit) {
        const char wide[] = {'\xEF', '\xBC', static_cast<char>('\x90' + (digit - '0'))};
        text = replacingAll(std::move(text), {wide, sizeof wide}, {&digit, 1});
    }
    for (const char* minus : {"\u2212", "\uFF0D"})
        text = replacingAll(std::move(text), minus, "-");
    for (const char* blank : {"\u00A0", "\u3000", "\t"})
        text = replacingAll(std::move(text), blank, " ");
    return text;
}

std::int64_t next(std::int64_t value, bool up, const NumberRange& range) {
    if (up)
        return value >= range.highest ? range.highest : std::max(value + 1, range.lowest);
    return value <= range.lowest ? range.lowest : std::min(value - 1, range.highest);
}

/// Whether a person clicked on plus, and not on minus; nothing where neither was clicked.
std::optional<bool> stepsUp(PreferencesAct act, const PreferencesValue& value) {
    const auto* direction = std::get_if<std::int64_t>(&value);
    return act == PreferencesAct::Stepped && direction != nullptr ? std::optional(*direction > 0)
                                                                  : std::nullopt;
}

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
    pause_.cancel();
    typed_ = text;
    const std::string problem = text == shown_ ? std::string() : problemOf(text);
    if (problem.empty() || !isHalfTyped(text))
        tellProblem(problem);
    else
        pause_ = mainQueue_.after(pauseSeconds, [this, problem] { tellProblem(problem); });
    if (pending())
        pause_ = mainQueue_.after(pauseSeconds, [this] { write(*typed_); });
}

void TypedField::entered(const std::string& text) {
    pause_.cancel();
    typed_ = text;
    const auto taken = pending();
    const std::string problem = taken || text == shown_ ? std::string() : problemOf(text);
    if (taken)
        write(*taken);
    typed_.reset();
    tellProblem(problem);
    if (!problem.empty())
        pause_ = mainQueue_.after(explanationSeconds, [this] { tellProblem({}); });
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
    pause_.cancel();
    typed_.reset();
    tellProblem({});
}

void TypedField::write(const std::string& text) {
    writing_ = true;
    store(text);
    writing_ = false;
    shown_ = storedText();
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

NumberTextField::NumberTextField(PreferencesControl description, ShownPreferences& window, Queue& mainQueue,
                                 Setting<std::int64_t>& number, NumberRange range)
    : TypedField(std::move(description), window, mainQueue), number_(number), range_(range),
      told_(number.observe([this](std::int64_t) { show(); })) {}

std::optional<std::int64_t> NumberTextField::parse(const std::string& text) {
    return wholeNumber<std::int64_t>(trimmed(narrow(text), " "));
}

std::string NumberTextField::storedText() const {
    return std::to_string(number_());
}

std::string NumberTextField::problemOf(const std::string& text) const {
    const auto value = parse(text);
    if (value && *value >= range_.lowest && *value <= range_.highest)
        return {};
    return withArguments(localized("Please enter a number from %1$s to %2$s."),
                         {std::to_string(range_.lowest), std::to_string(range_.highest)});
}

bool NumberTextField::isHalfTyped(const std::string& text) const {
    const auto value = parse(text);
    return value ? *value >= 0 && *value < range_.lowest : trimmed(narrow(text), " ").empty();
}

void NumberTextField::store(const std::string& text) {
    if (const auto value = parse(text))
        set(*value);
}

void NumberTextField::set(std::int64_t value) {
    if (value != number_())
        number_.set(value);
}

std::int64_t NumberTextField::endWithNumber() {
    const auto typed = pending();
    endTyping();
    const auto value = typed ? parse(*typed) : std::nullopt;
    return value.value_or(number_());
}

void NumberTextField::did(PreferencesAct act, const PreferencesValue& value) {
    if (const auto up = stepsUp(act, value))
        set(next(endWithNumber(), *up, range_));
    else
        TypedField::did(act, value);
}

DigitalAccumulatorView::DigitalAccumulatorView(const PreferencesControl& description,
                                               ShownPreferences& window, Queue& mainQueue,
                                               Setting<std::int64_t>& value, NumberRange range,
                                               std::int64_t delta)
    : PaneControl(description, window), value_(value), delta_(delta),
      field_(description, window, mainQueue, value, range) {}

void DigitalAccumulatorView::did(PreferencesAct act, const PreferencesValue& value) {
    const auto up = stepsUp(act, value);
    if (!up)
        return field_.did(act, value);
    const std::int64_t number = field_.endWithNumber();
    value_.set(*up ? checkedAdd(number, delta_) : checkedSubtract(number, delta_));
}

} // namespace kelpa
