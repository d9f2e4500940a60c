#include "ui/PlainTextField.h"

#include "base/Text.h"

namespace kelpa {

PlainTextField::PlainTextField(PreferencesControl description, PreferencesWindow& window, Queue& mainQueue,
                               Binding<std::string> text)
    : TypedField(std::move(description), window, mainQueue), text_(std::move(text)),
      told_(text_.observe([this] { show(); })) {}

std::string PlainTextField::storedText() const {
    return replacingAll(text_.get(), "\n", "\\n");
}

void PlainTextField::store(const std::string& text) {
    if (text != text_.get())
        text_.set(text);
}

} // namespace kelpa
