#pragma once

#include "platform/ports/Timers.h"
#include "platform/ports/WindowSystem.h"
#include "water/PrefWaterState.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// The content of the water panel: the day's progress, the countdown to the next drink, the choice of an
/// amount and the answers. It counts only while it can be seen.
class WaterView final : public WindowContent, private WaterPanelClient {
  public:
    static constexpr Size size{280, 330};

    /// All must outlive the view.
    WaterView(NativeWindow& window, App& app, TickerSource& tickers, Queue& mainQueue);

    void appeared() override;
    void disappeared() override;
    void shown() override;

  private:
    void amountTapped(std::int64_t millilitres) override;
    void skipPressed() override;
    void donePressed() override;
    void closePressed() override;

    void observeSettings();
    template <class Setting>
    void planAnewAfter(Setting& setting);
    void showProgress();
    void showAmount();
    void updateTimer();
    void cancelTimer();
    void tick();
    void setRemainSeconds(std::int64_t seconds);

    NativeWindow& window_;
    App& app_;
    PrefWaterState& state_;
    Queue& mainQueue_;
    std::unique_ptr<WaterPanelFace> face_;
    std::unique_ptr<Ticker> timer_;
    std::int64_t remainSeconds_ = 0;
    std::vector<Subscription> settings_; ///< while the panel can be seen
    Subscription cancellable_;
};

} // namespace kelpa
