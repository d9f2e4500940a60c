#pragma once

#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/ports/HistoryWindow.h"

#include <memory>
#include <string>

namespace kelpa {

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

} // namespace kelpa
