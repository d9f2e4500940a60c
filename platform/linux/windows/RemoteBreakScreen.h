#pragma once

#include "platform/linux/windows/WindowRecord.h"
#include "platform/ports/WindowFaces.h"

#include <memory>

namespace kelpa {

/// The break screen as the view shows it: a few properties of its window.
class RemoteBreakScreen final : public BreakScreenFace {
  public:
    RemoteBreakScreen(std::shared_ptr<WindowRecord> record, BreakScreenClient& client);
    ~RemoteBreakScreen() override;
    RemoteBreakScreen(const RemoteBreakScreen&) = delete;
    RemoteBreakScreen& operator=(const RemoteBreakScreen&) = delete;

    void setTexts(const BreakScreenTexts& texts) override;
    void setPrompt(const std::string& prompt) override;
    void setCount(const std::string& count) override;
    void setSkipOffered(bool offered) override;

  private:
    std::shared_ptr<WindowRecord> record_;
};

} // namespace kelpa
