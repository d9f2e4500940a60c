#pragma once

#include "platform/linux/windows/WindowRecord.h"
#include "platform/ports/WindowFaces.h"

#include <memory>

namespace kelpa {

/// The water panel as the view shows it: a few properties of its window.
class RemoteWaterPanel final : public WaterPanelFace {
  public:
    RemoteWaterPanel(std::shared_ptr<WindowRecord> record, WaterPanelClient& client);
    ~RemoteWaterPanel() override;
    RemoteWaterPanel(const RemoteWaterPanel&) = delete;
    RemoteWaterPanel& operator=(const RemoteWaterPanel&) = delete;

    void setTexts(const WaterPanelTexts& texts, const std::vector<WaterAmount>& amounts) override;
    void setProgress(const WaterProgress& progress) override;
    void setCounting(const WaterCounting& counting) override;
    void setSelectedAmount(std::int64_t millilitres) override;
    void offerAnswers() override;

  private:
    std::shared_ptr<WindowRecord> record_;
};

} // namespace kelpa
