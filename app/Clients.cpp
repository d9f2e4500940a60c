#include "app/Clients.h"

#include "app/AppInfo.h"
#include "app/AppState.h"
#include "ui/StatusBarController.h"
#include "ui/WindowController.h"

namespace kelpa {

namespace {

Services wiredServices;

class TheTicktackClient final : public TicktackClient {
  public:
    TicktackState& workState() override { return AppState::workState(); }
    TicktackState& breakState() override { return AppState::breakState(); }
    void periodEndsSoon(const TicktackState& state) override {
        if (&state == &AppState::workState())
            WindowController::prepareBreak();
    }
};

class ThePrefClient final : public PrefClient {
  public:
    void setLaunchAtLogin(bool launch) override {
        if (wiredServices.loginItem)
            wiredServices.loginItem->setEnabled(launch);
    }
    void showTime(bool show) override { StatusBarController::showTime(show); }
    bool manualPause() const override { return AppState::manualPause(); }
    void setWorking(bool working) override { AppState::setWorking(working); }
};

class ThePromptClient final : public PromptClient {
  public:
    PrefState& prefState() override { return AppState::prefState(); }
    void cancelMouseIdleCheck() override {
        if (const auto& check = AppState::mouseMoveEventItem())
            check->cancel();
    }
    void showBreakWindows() override { WindowController::showBreak(); }
    void closeBreakWindows() override { WindowController::closeBreak(); }
    void startBreak(std::int64_t seconds) override { TicktackController::break_(seconds); }
    bool manualPause() const override { return AppState::manualPause(); }
    void setWorking(bool working) override { AppState::setWorking(working); }
};

class TheWaterClient final : public WaterClient {
  public:
    void showWaterView() override { WindowController::showWaterView(); }
    void updateWaterItem() override { StatusBarController::updateWaterItem(); }
};

class TheWaterPaneClient final : public WaterPaneClient {
  public:
    void insetWaterItem() override { StatusBarController::insetWaterItem(); }
    void removeWaterItem() override { StatusBarController::removeWaterItem(); }
    void closeWaterView() override { WindowController::closeWaterView(); }
};

class TheSystemEventClient final : public SystemEventClient {
  public:
    std::string identifier() const override { return AppInfo::identifier(); }
    PrefState& prefState() override { return AppState::prefState(); }
    PromptState& promptState() override { return AppState::promptState(); }
    bool manualPause() const override { return AppState::manualPause(); }
    bool working() const override { return AppState::working(); }
    void setWorking(bool working) override { AppState::setWorking(working); }
    const std::shared_ptr<WorkItem>& mouseMoveEventItem() const override {
        return AppState::mouseMoveEventItem();
    }
    void setMouseMoveEventItem(std::shared_ptr<WorkItem> item) override {
        AppState::setMouseMoveEventItem(std::move(item));
    }
    void closeBreakWindows() override { WindowController::closeBreak(); }
    bool waterHasNewDay() const override {
        return AppState::waterState().enable() && AppState::waterState().isNewDay();
    }
    void closeWaterView() override { WindowController::closeWaterView(); }
    void startWaterDay() override {
        AppState::waterState().reset();
        AppState::waterState().schedule();
    }
};

class TheUiClient final : public UiClient {
  public:
    PrefState& prefState() override { return AppState::prefState(); }
    PromptState& promptState() override { return AppState::promptState(); }
    PrefWaterState& waterState() override { return AppState::waterState(); }
    WaterPaneClient& waterPaneClient() override { return kelpa::waterPaneClient(); }
    TicktackState& workState() override { return AppState::workState(); }
    TicktackState& breakState() override { return AppState::breakState(); }
    bool manualPause() const override { return AppState::manualPause(); }
    void setManualPause(bool pause) override { AppState::setManualPause(pause); }
    AboutApp about() const override {
        return {AppInfo::icon(),           AppInfo::name(),
                AppInfo::version(),        AppInfo::build(),
                AppInfo::model(),          AppInfo::osVersion(),
                AppInfo::copyright(),      AppInfo::releaseNotesLink(),
                AppInfo::feedbackMailbox()};
    }
};

} // namespace

PrefClient& prefClient() {
    static ThePrefClient client;
    return client;
}

PromptClient& promptClient() {
    static ThePromptClient client;
    return client;
}

WaterClient& waterClient() {
    static TheWaterClient client;
    return client;
}

WaterPaneClient& waterPaneClient() {
    static TheWaterPaneClient client;
    return client;
}

TicktackClient& ticktackClient() {
    static TheTicktackClient client;
    return client;
}

SystemEventClient& systemEventClient() {
    static TheSystemEventClient client;
    return client;
}

UiClient& uiClient() {
    static TheUiClient client;
    return client;
}

void wireClients(Ports& ports) {
    wiredServices = ports.services;
}

} // namespace kelpa
