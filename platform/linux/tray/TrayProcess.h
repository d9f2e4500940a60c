#pragma once

#include "platform/linux/display/X11Connection.h"
#include "platform/linux/tray/TrayHelper.h"

namespace kelpa {

/// Shows the status item as an icon embedded in an old system tray, by way of `kelpa-tray`, a process that
/// runs only while the item is to be shown and such a tray is there.
class TrayProcess final : public TrayHelper {
  public:
    /// Loop, connection and report outlive the sink; `program` is the path of `kelpa-tray`, and `data` the
    /// folder of the program's data.
    TrayProcess(EventLoop& loop, X11Connection& connection, WindowReport& report, std::string program,
                std::string data);

    void show(const StatusItemModel& model, MenuClicks& clicks) override;
    void hide() override;

    /// Whether an old system tray is there, as far as it was looked for: only while the item is to be shown.
    [[nodiscard]] bool managerPresent() const { return manager_ != XCB_WINDOW_NONE; }

  private:
    void helperFailed(const std::string& how) override;

    void handle(const xcb_generic_event_t& event);
    void lookForManager();
    void setManager(xcb_window_t manager);
    void update();
    void sendManager();

    EventLoop& loop_;
    X11Connection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t managerMessage_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    RestartBudget restarts_;
    Subscription events_;
    Subscription leaving_;
};

} // namespace kelpa
