#pragma once

#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/ports/UpdateWindow.h"

#include <memory>
#include <string>

namespace kelpa {

/// The update window, drawn by the view.
class RemoteUpdateWindow final : public UpdateWindow {
  public:
    /// The window system outlives the window.
    explicit RemoteUpdateWindow(RemoteWindowSystem& windows) : windows_(windows) {}
    void setClient(UpdateWindowClient* client) override { client_ = client; }
    void setPage(const UpdatePage& page) override;
    void present(Attention attention) override;
    void close() override;

  private:
    RemoteWindow& window();
    void didAct(const std::string& action);

    RemoteWindowSystem& windows_;
    UpdateWindowClient* client_ = nullptr;
    std::unique_ptr<RemoteWindow> window_; ///< null until there is something to show
};

} // namespace kelpa
