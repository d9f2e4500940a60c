#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/display/X11Connection.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/tray/LinuxStatusBar.h"

namespace kelpa {

/// Shows the status item as an icon embedded in an old system tray, by way of `kelpa-tray`, a process that
/// runs only while the item is to be shown and such a tray is there.
class TrayProcess final : public StatusItemSink, private HelperClient {
  public:
    /// Loop, connection and report outlive the sink; `program` is the path of `kelpa-tray`, and `data` the
    /// folder of the program's data.
    TrayProcess(EventLoop& loop, X11Connection& connection, WindowReport& report, std::string program,
                std::string data);
    ~TrayProcess() override;
    TrayProcess(const TrayProcess&) = delete;
    TrayProcess& operator=(const TrayProcess&) = delete;

    void show(const StatusItemModel& model, MenuClicks& clicks) override;
    void hide() override;
    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void titleChanged(const std::string& title) override;
    void hintChanged(const std::string& hint) override;

    /// Whether an old system tray is there, as far as it was looked for: only while the item is to be shown.
    [[nodiscard]] bool managerPresent() const { return manager_ != XCB_WINDOW_NONE; }

  private:
    void helperSaid(const wire::Message& message) override;
    void helperFailed(const std::string& how) override;

    void handle(const xcb_generic_event_t& event);
    void lookForManager();
    void setManager(xcb_window_t manager);
    void update();
    void sendManager();
    void start();

    EventLoop& loop_;
    X11Connection& connection_;
    WindowReport& report_;
    std::string data_;
    HelperProcess tray_;
    const StatusItemModel* model_ = nullptr; ///< null while the item is not to be shown
    MenuClicks* clicks_ = nullptr;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t managerMessage_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    bool failing_ = false;
    RestartBudget restarts_;
    Subscription events_;
    Subscription leaving_;
};

} // namespace kelpa
