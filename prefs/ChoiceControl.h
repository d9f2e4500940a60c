#pragma once

#include "prefs/Binding.h"
#include "prefs/PaneControl.h"

#include <vector>

namespace kelpa {

/// One of a few entries, as a list, segments or tiles. A stored value that is none of them leaves all
/// unchosen.
class ChoiceControl final : public PaneControl {
  public:
    ChoiceControl(PreferencesControl description, PreferencesWindow& window,
                  std::vector<PreferencesChoice> choices, Binding<std::int64_t> value);

    void show() override;
    void chosen(std::int64_t value) override;

  private:
    std::vector<PreferencesChoice> choices_;
    Binding<std::int64_t> value_;
    Subscription told_;
};

} // namespace kelpa
