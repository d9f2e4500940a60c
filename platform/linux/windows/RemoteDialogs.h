#pragma once

#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/ports/HistoryWindow.h"
#include "platform/ports/Services.h"
#include "platform/ports/UpdateWindow.h"

#include <memory>
#include <string>

namespace kelpa {

/// The about panel, drawn by the view.
class RemoteAboutPanel final : public AboutPanel {
  public:
    /// The window system outlives the panel.
    explicit RemoteAboutPanel(RemoteWindowSystem& windows) : windows_(windows) {}
    void show(const AboutContent& about) override;

  private:
    RemoteWindowSystem& windows_;
    std::unique_ptr<RemoteWindow> window_; ///< null until the panel is shown
};

/// The window of the history, drawn by the view. Once it is closed the picture is gone from here as well.
class RemoteHistoryWindow final : public HistoryWindow {
  public:
    /// The window system outlives the window.
    explicit RemoteHistoryWindow(RemoteWindowSystem& windows) : windows_(windows) {}

    void setTexts(const HistoryTexts& texts, HistoryWindowClient& client) override;
    void setPicture(const HistoryPicture& picture) override;
    void show() override;

  private:
    RemoteWindow& window();
    void didAct(const std::string& action, const std::string& value);

    RemoteWindowSystem& windows_;
    HistoryTexts texts_;
    HistoryWindowClient* client_ = nullptr;
    std::unique_ptr<RemoteWindow> window_; ///< null while nobody looks at it
};

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
