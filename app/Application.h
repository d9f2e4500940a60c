#pragma once

#include "app/AppDelegate.h"
#include "app/AppState.h"
#include "logging/SharedLogger.h"
#include "platform/ports/Ports.h"
#include "prefs/App.h"
#include "timer/TicktackController.h"
#include "ui/StatusBarController.h"
#include "ui/WindowController.h"

namespace kelpa {

/// The composition root: the only place that knows every part. There is one in a process.
class Application final : public App, private LogClient {
  public:
    /// Wires the parts to the ports and to each other; starts nothing. Ports and log files must outlive it.
    Application(Ports& ports, LogFiles& logFiles);
    ~Application() override = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Runs the start-up sequence; from then on the main loop drives the program.
    void launch();
    void willTerminate();
    [[nodiscard]] bool supportsSecureRestorableState() const;

  private:
    [[nodiscard]] const Clock& clock() const override { return ports_.clock; }
    [[nodiscard]] std::string identifier() const override;
    [[nodiscard]] std::string displayName() const override;
    [[nodiscard]] std::optional<std::string> homeDirectory() const override;
    [[nodiscard]] LogFiles& logFiles() const override { return logFiles_; }

    PrefState& prefState() override { return AppState::prefState(); }
    PromptState& promptState() override { return AppState::promptState(); }
    TicktackState& workState() override { return AppState::workState(); }
    TicktackState& breakState() override { return AppState::breakState(); }
    PrefWaterState& waterState() override { return AppState::waterState(); }
    bool manualPause() const override { return AppState::manualPause(); }
    void setManualPause(bool pause) override { AppState::setManualPause(pause); }
    bool working() const override { return AppState::working(); }
    void setWorking(bool working) override { AppState::setWorking(working); }
    std::shared_ptr<WorkItem>& mouseMoveEventItem() override { return AppState::mouseMoveEventItem(); }
    AboutApp about() const override;
    void setLaunchAtLogin(bool launch) override;
    void startBreak(std::int64_t seconds) override { TicktackController::break_(seconds); }
    void prepareBreakWindows() override { WindowController::prepareBreak(); }
    void showBreakWindows() override { WindowController::showBreak(); }
    void closeBreakWindows() override { WindowController::closeBreak(); }
    void showWaterView() override { WindowController::showWaterView(); }
    void closeWaterView() override { WindowController::closeWaterView(); }
    void dismissWaterView() override { WindowController::dismissWaterView(); }
    void showTime(bool show) override { StatusBarController::showTime(show); }
    void insetWaterItem() override { StatusBarController::insetWaterItem(); }
    void removeWaterItem() override { StatusBarController::removeWaterItem(); }
    void updateWaterItem() override { StatusBarController::updateWaterItem(); }
    bool waterHasNewDay() override;
    void startWaterDay() override;

    Ports& ports_;
    LogFiles& logFiles_;
    AppDelegate delegate_;
};

} // namespace kelpa
