#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/tray/LinuxStatusBar.h"

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
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void titleChanged(const std::string& title) override;
    void hintChanged(const std::string& hint) override;

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

} // namespace kelpa
