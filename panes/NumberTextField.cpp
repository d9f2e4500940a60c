#include "panes/NumberTextField.h"

#include "base/FatalError.h"
#include "base/Text.h"

#include <algorithm>

namespace kelpa {

namespace {

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

std::string withoutBlanksAround(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::int64_t next(std::int64_t value, int direction, std::int64_t lowest, std::int64_t highest) {
    if (direction > 0)
        return value >= highest ? highest : std::max(value + 1, lowest);
    return value <= lowest ? lowest : std::min(value - 1, highest);
}

} // namespace

NumberTextField::NumberTextField(PreferencesControl description, PreferencesWindow& window, Queue& mainQueue,
                                 Setting<std::int64_t>& number, NumberRange range)
    : TypedField(std::move(description), window, mainQueue), number_(number), range_(range),
      told_(number.observe([this](std::int64_t) { show(); })) {}

std::optional<std::int64_t> NumberTextField::parse(const std::string& text) {
    return wholeNumber<std::int64_t>(withoutBlanksAround(narrow(text)));
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
    return value ? *value >= 0 && *value < range_.lowest : withoutBlanksAround(narrow(text)).empty();
}

void NumberTextField::store(const std::string& text) {
    if (const auto value = parse(text))
        set(*value);
}

void NumberTextField::set(std::int64_t value) {
    if (value != number_())
        number_.set(value);
}

std::int64_t NumberTextField::take() {
    const auto typed = pending();
    endTyping();
    const auto value = typed ? parse(*typed) : std::nullopt;
    return value.value_or(number_());
}

void NumberTextField::stepped(int direction) {
    set(next(take(), direction, range_.lowest, range_.highest));
}

DigitalAccumulatorView::DigitalAccumulatorView(const PreferencesControl& description,
                                               PreferencesWindow& window, Queue& mainQueue,
                                               Setting<std::int64_t>& value, NumberRange range,
                                               std::int64_t delta)
    : PaneControl(description, window), value_(value), delta_(delta),
      field_(description, window, mainQueue, value, range) {}

void DigitalAccumulatorView::stepped(int direction) {
    const std::int64_t value = field_.take();
    value_.set(direction > 0 ? checkedAdd(value, delta_) : checkedSubtract(value, delta_));
}

} // namespace kelpa
