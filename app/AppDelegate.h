#pragma once

#include "app/AppState.h"
#include "app/TimedPause.h"
#include "logging/SharedLogger.h"
#include "timer/TicktackController.h"
#include "ui/StatusBarController.h"
#include "ui/WindowController.h"

namespace kelpa {

/// The composition root, the only place that knows every part, and what happens when the platform has started
/// the program and when it ends it. There is one in a process.
class AppDelegate final : public App {
  public:
    /// Wires the parts to the ports and to each other; starts nothing. The ports must outlive it.
    AppDelegate(Ports& ports, LogFileOpener openLogFile);
    ~AppDelegate() override = default;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Runs the start-up sequence; from then on the main loop drives the program.
    void applicationDidFinishLaunching();
    /// Only what is still being typed is saved at the end: each setting is stored when it changes, and the
    /// cycle is not kept.
    void applicationWillTerminate();
    [[nodiscard]] bool applicationSupportsSecureRestorableState() const { return true; }

  private:
    PrefState& prefState() override { return AppState::prefState(); }
    PromptState& promptState() override { return AppState::promptState(); }
    TicktackState& workState() override { return AppState::workState(); }
    TicktackState& breakState() override { return AppState::breakState(); }
    PrefWaterState& waterState() override { return AppState::waterState(); }
    BreakHold& breakHold() override { return AppState::breakHold(); }
    HistoryRecorder& history() override { return AppState::history(); }
    bool manualPause() const override { return AppState::manualPause(); }
    void setManualPause(bool pause) override { AppState::setManualPause(pause); }
    bool liftTimedPause() override { return TimedPause::lift(); }
    bool working() const override { return AppState::working(); }
    void setWorking(bool working) override { AppState::setWorking(working); }
    std::shared_ptr<WorkItem>& mouseMoveEventItem() override { return AppState::mouseMoveEventItem(); }
    std::string identifier() const override;
    AboutApp about() const override;
    void setLaunchAtLogin(bool launch) override;
    void startBreak(std::int64_t seconds) override;
    void prepareBreakWindows() override { WindowController::prepareBreak(); }
    void showBreakWindows() override { WindowController::showBreak(); }
    bool breakShows() const override { return WindowController::breakShows(); }
    void closeBreakWindows() override;
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
};

} // namespace kelpa
