#include "ui/DigitalAccumulatorView.h"

#include "base/Checked.h"

namespace kelpa {

DigitalAccumulatorView::DigitalAccumulatorView(const PreferencesControl& description,
                                               PreferencesWindow& window, Queue& mainQueue,
                                               const NumberBinding& value, std::int64_t delta)
    : PaneControl(description, window), value_(value.value), delta_(delta),
      field_(description, window, mainQueue, value) {}

void DigitalAccumulatorView::stepped(int direction) {
    const std::int64_t value = field_.take();
    value_.set(direction > 0 ? checkedAdd(value, delta_) : checkedSubtract(value, delta_));
}

} // namespace kelpa
