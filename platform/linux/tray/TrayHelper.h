#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/display/X11Connection.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/helper/TrayProtocol.h"
#include "platform/linux/tray/LinuxStatusBar.h"

#include <functional>

namespace kelpa {

/// A `kelpa-tray` that knows the item and its menu: what is told to one, and heard from it, wherever it shows
/// them.
class TrayHelper : public StatusItemSink, protected HelperClient {
  public:
    TrayHelper(const TrayHelper&) = delete;
    TrayHelper& operator=(const TrayHelper&) = delete;

    void show(const StatusItemModel& model, MenuClicks& clicks) override;
    void hide() override;
    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineChanged(const MenuLine& line) override;
    void lineRemoved(int lineId) override { process_.send({wire::tray::remove, std::to_string(lineId)}); }
    void titleChanged(const std::string& title) override { process_.send({wire::tray::title, title}); }
    void hintChanged(const std::string& hint) override { process_.send({wire::tray::hint, hint}); }

  protected:
    /// Loop and report outlive the helper; `program` is the path of `kelpa-tray`, and `data` the folder of
    /// the program's data.
    TrayHelper(EventLoop& loop, WindowReport& report, std::string program, std::string data);

    void helperSaid(const wire::Message& message) override;

    /// Starts the process unless it runs, and tells it everything. False when it cannot be started.
    bool start();
    [[nodiscard]] bool shown() const { return model_ != nullptr; }
    [[nodiscard]] HelperProcess& process() { return process_; }
    [[nodiscard]] WindowReport& report() { return report_; }

  private:
    WindowReport& report_;
    std::string data_;
    HelperProcess process_;
    const StatusItemModel* model_ = nullptr; ///< null while the item is not to be shown
    MenuClicks* clicks_ = nullptr;
    bool failing_ = false;
};

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
    void sendManager() { process().send({wire::tray::manager, std::to_string(manager_)}); }

    EventLoop& loop_;
    X11Connection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t managerMessage_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    RestartBudget restarts_;
    Subscription events_;
    Subscription leaving_;
};

/// The item's menu at the pointer, by way of a `kelpa-tray` that runs only while it is open.
class PopUpMenu final : private TrayHelper {
  public:
    /// All but the texts outlive the menu; `program` is the path of `kelpa-tray`, and `data` the folder of
    /// the program's data. `closed` runs from the main loop when the menu was closed, by a choice or without.
    PopUpMenu(EventLoop& loop, LinuxStatusBar& statusBar, WindowReport& report, std::string program,
              std::string data, std::function<void()> closed);
    ~PopUpMenu() override { close(); }

    /// False when it cannot be shown. One that is open already, or on its way, is left as it is.
    bool open();
    void close() { statusBar_.removeSink(*this); }

  private:
    void helperSaid(const wire::Message& message) override;
    void helperFailed(const std::string& how) override;

    LinuxStatusBar& statusBar_;
    std::function<void()> closed_;
};

} // namespace kelpa
