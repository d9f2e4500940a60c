#pragma once

#import "platform/macos/windows/KelpaWindow.h"

#include "platform/ports/WindowFaces.h"

/// The water panel as it is drawn: how far the day has come, when the next drink is due, and the answer to
/// it.
@interface KelpaWaterView : NSVisualEffectView <KelpaContent>
/// `client` must outlive the view's last click.
- (instancetype)initWithClient:(kelpa::WaterPanelClient&)client;
- (void)setTexts:(const kelpa::WaterPanelTexts&)texts amounts:(const std::vector<kelpa::WaterAmount>&)amounts;
- (void)setProgress:(const kelpa::WaterProgress&)progress;
- (void)setCounting:(const kelpa::WaterCounting&)counting;
- (void)setSelectedAmount:(std::int64_t)millilitres;
- (void)offerAnswers;
@end

namespace kelpa {

/// Hands the view what it has to show; takes it out of its window at the end.
class MacWaterPanel final : public WaterPanelFace {
  public:
    explicit MacWaterPanel(KelpaWaterView* view) : view_(view) {}
    ~MacWaterPanel() override;
    MacWaterPanel(const MacWaterPanel&) = delete;
    MacWaterPanel& operator=(const MacWaterPanel&) = delete;

    void setTexts(const WaterPanelTexts& texts, const std::vector<WaterAmount>& amounts) override;
    void setProgress(const WaterProgress& progress) override;
    void setCounting(const WaterCounting& counting) override;
    void setSelectedAmount(std::int64_t millilitres) override;
    void offerAnswers() override;

  private:
    KelpaWaterView* view_;
};

} // namespace kelpa
