#pragma once

#include "prefs/Binding.h"
#include "prefs/PaneControl.h"

#include <string>

namespace kelpa {

/// A setting that is on or off. Each use of the switch writes it, also where the store already says so: what
/// another program stored has set nothing in motion.
class SwitchControl final : public PaneControl {
  public:
    SwitchControl(std::string id, std::string label, PreferencesWindow& window, Binding<bool> on)
        : PaneControl({std::move(id), PreferencesControlKind::Switch, std::move(label), {}}, window),
          on_(std::move(on)), told_(on_.observe([this] { show(); })) {}

    void show() override { window().setSwitch(id(), on_.get()); }
    void switched(bool on) override { on_.set(on); }

  private:
    Binding<bool> on_;
    Subscription told_;
};

} // namespace kelpa
