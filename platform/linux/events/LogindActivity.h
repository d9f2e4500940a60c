#pragma once

#include "platform/linux/events/ActivitySource.h"
#include "platform/linux/events/ActivitySpell.h"
#include "platform/linux/events/LogindSession.h"

#include <optional>

namespace kelpa {

/// Whoever uses the user's session, as the desktop tells logind: the last resort. Desktops say that nobody is
/// there only after some minutes, and some never do; until then somebody is taken to be there.
class LogindActivity final : public ActivitySource, private LogindSessionClient {
  public:
    /// All outlive the source.
    LogindActivity(EventLoop& loop, Bus& system, const OwnWindows& windows);

    [[nodiscard]] std::string name() const override { return "logind (IdleHint)"; }
    Start start(ActivitySink& sink) override;

  private:
    void propertyRead(bool idle) override;
    void propertyLost() override;

    EventLoop& loop_;
    Bus& system_;
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    bool watching_ = false;
    std::optional<LogindSession> session_;
    Subscription patience_; ///< ends with the first answer
    Subscription ending_;
};

} // namespace kelpa
