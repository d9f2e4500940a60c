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
    ~RemoteUpdateWindow() override;
    RemoteUpdateWindow(const RemoteUpdateWindow&) = delete;
    RemoteUpdateWindow& operator=(const RemoteUpdateWindow&) = delete;

    void setClient(UpdateWindowClient* client) override { client_ = client; }
    void setPage(const UpdatePage& page) override;
    void present(Attention attention) override;
    void close() override;

  private:
    WindowRecord& record();
    void didAct(const std::string& action);

    RemoteWindowSystem& windows_;
    UpdateWindowClient* client_ = nullptr;
    std::shared_ptr<WindowRecord> record_; ///< null until there is something to show
};

} // namespace kelpa
