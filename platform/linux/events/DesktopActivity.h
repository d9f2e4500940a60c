#pragma once

#include "platform/linux/display/WindowReport.h"
#include "platform/linux/events/ActivityGate.h"
#include "platform/linux/events/ActivitySource.h"
#include "platform/ports/DesktopEvents.h"

#include <functional>
#include <memory>
#include <vector>

namespace kelpa {

/// The activity of a person at this desktop, from the first of several sources that works here.
class DesktopActivity final : public ActivityMonitor, private ActivitySink {
  public:
    /// The best source first. Gate and report outlive the monitor.
    DesktopActivity(const ActivityGate& gate, WindowReport& report,
                    std::vector<std::unique_ptr<ActivitySource>> sources);

    Watch watch(std::function<void()> activity, std::function<void()> lost) override;

  private:
    void happened() override;
    void watching() override;
    void absent() override;
    void failed(const std::string& why) override;
    void use();
    /// Goes on with the first source from `current_` on that is not absent.
    ActivitySource::Start start();

    const ActivityGate& gate_;
    WindowReport& report_;
    std::vector<std::unique_ptr<ActivitySource>> sources_;
    std::size_t current_ = 0; ///< the one in use, or being asked
    bool watched_ = false;    ///< a source worked, so that there is something to lose
    std::function<void()> activity_;
    std::function<void()> lost_;
};

} // namespace kelpa
