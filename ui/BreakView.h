#pragma once

#include "platform/ports/WindowSystem.h"
#include "prefs/PromptState.h"
#include "timer/TicktackController.h"

#include <memory>

namespace kelpa {

/// Ends the break as the screen's Skip does.
void skipBreak(PromptState& promptState);

/// The content of one break window: the prompt, the countdown, the notice of the water reminder and, where it
/// is offered, Skip. It ends the break when the break's time is up.
class BreakView final : public WindowContent, private BreakScreenClient {
  public:
    /// What is shown follows prompt and count of the break from now on. All must outlive the view.
    BreakView(NativeWindow& window, App& app);

  private:
    void skipPressed() override;
    void noticeTapped() override;

    NativeWindow& window_;
    App& app_;
    PromptState& promptState_;
    std::unique_ptr<BreakScreenFace> face_;
    Subscription prompt_, showSkipButton_, timeString_, timesUp_;
};

} // namespace kelpa
