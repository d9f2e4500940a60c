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
    ~RemoteAboutPanel() override;
    RemoteAboutPanel(const RemoteAboutPanel&) = delete;
    RemoteAboutPanel& operator=(const RemoteAboutPanel&) = delete;

    void show(const AboutText& text) override;

  private:
    void make();

    RemoteWindowSystem& windows_;
    std::shared_ptr<WindowRecord> record_; ///< null until the panel is shown
};

} // namespace kelpa
