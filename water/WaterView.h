#pragma once

#include "base/Geometry.h"
#include "base/WindowContent.h"
#include "platform/ports/Queue.h"
#include "platform/ports/Ticker.h"
#include "platform/ports/WindowSystem.h"
#include "water/PrefWaterState.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// What the water panel sets in motion elsewhere.
class WaterViewClient {
  public:
    virtual ~WaterViewClient() = default;
    virtual void closeWaterView() = 0;
    /// Takes the panel off the screen at once, as its close button does.
    virtual void dismissWaterView() = 0;
    [[nodiscard]] virtual TickerSource& tickers() = 0;
    [[nodiscard]] virtual Queue& mainQueue() = 0;
};

/// The content of the water panel: the day's progress, the countdown to the next drink, the choice of an
/// amount and the answers. It counts only while it can be seen.
class WaterView final : public WindowContent, private WaterPanelClient {
  public:
    static constexpr Size size{280, 330};

    /// All must outlive the view.
    WaterView(NativeWindow& window, PrefWaterState& state, WaterViewClient& client);

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
    PrefWaterState& state_;
    WaterViewClient& client_;
    std::unique_ptr<WaterPanelFace> face_;
    std::unique_ptr<Ticker> timer_;
    std::int64_t remainSeconds_ = 0;
    std::vector<Subscription> settings_; ///< while the panel can be seen
    Subscription cancellable_;
};

} // namespace kelpa
