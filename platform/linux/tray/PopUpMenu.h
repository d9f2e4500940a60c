#pragma once

#include "platform/linux/tray/TrayHelper.h"

#include <functional>

namespace kelpa {

/// The item's menu at the pointer, by way of a `kelpa-tray` that runs only while it is open.
class PopUpMenu final : private TrayHelper {
  public:
    /// All but the texts outlive the menu; `program` is the path of `kelpa-tray`, and `data` the folder of
    /// the program's data. `closed` runs from the main loop when the menu was closed, by a choice or without.
    PopUpMenu(EventLoop& loop, LinuxStatusBar& statusBar, WindowReport& report, std::string program,
              std::string data, std::function<void()> closed);
    ~PopUpMenu() override;

    /// False when it cannot be shown. One that is open already, or on its way, is left as it is.
    bool open();
    void close();

  private:
    void helperSaid(const wire::Message& message) override;
    void helperFailed(const std::string& how) override;

    LinuxStatusBar& statusBar_;
    std::function<void()> closed_;
};

} // namespace kelpa
