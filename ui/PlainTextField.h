#pragma once

#include "prefs/Binding.h"
#include "ui/TypedField.h"

namespace kelpa {

/// One line of text. A line break that another program stored is shown as the backslash and n that stand for
/// one where prompts are typed.
class PlainTextField final : public TypedField {
  public:
    PlainTextField(PreferencesControl description, PreferencesWindow& window, Queue& mainQueue,
                   Binding<std::string> text);

  private:
    [[nodiscard]] std::string storedText() const override;
    void store(const std::string& text) override;

    Binding<std::string> text_;
    Subscription told_;
};

} // namespace kelpa
