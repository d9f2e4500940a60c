#pragma once

#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/ports/Services.h"

#include <memory>

namespace kelpa {

/// The about panel, drawn by the view.
class RemoteAboutPanel final : public AboutPanel {
  public:
    /// The window system outlives the panel.
    explicit RemoteAboutPanel(RemoteWindowSystem& windows) : windows_(windows) {}
    void show(const AboutText& text) override;

  private:
    RemoteWindowSystem& windows_;
    std::unique_ptr<RemoteWindow> window_; ///< null until the panel is shown
};

} // namespace kelpa
