#pragma once

#include "ui/NumberTextField.h"

namespace kelpa {

/// Minus, a field of digits, and plus. The buttons know no bounds; what may be stored is the binding's
/// affair. A sum beyond the integers ends the process.
class DigitalAccumulatorView final : public PaneControl {
  public:
    DigitalAccumulatorView(const PreferencesControl& description, PreferencesWindow& window, Queue& mainQueue,
                           const NumberBinding& value, std::int64_t delta);

    void show() override { field_.show(); }
    void typed(const std::string& text) override { field_.typed(text); }
    void entered(const std::string& text) override { field_.entered(text); }
    void closed() override { field_.closed(); }
    void stepped(int direction) override;

  private:
    Binding<std::int64_t> value_;
    std::int64_t delta_;
    NumberTextField field_;
};

} // namespace kelpa
