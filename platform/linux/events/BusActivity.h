#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/events/DesktopActivity.h"
#include "platform/linux/events/LogindSession.h"

#include <optional>

namespace kelpa {

/// Whoever uses the desk under GNOME, whose compositor tells of it on the session bus. Every key counts, as
/// with the other notifications of this kind.
class MutterActivity final : public ActivitySource, private BusClient {
  public:
    /// Loop, bus and windows outlive the source.
    MutterActivity(EventLoop& loop, Bus& bus, const OwnWindows& windows, double speed);

    [[nodiscard]] std::string name() const override { return "GNOME (org.gnome.Mutter.IdleMonitor)"; }
    Start start(ActivitySink& sink) override;

  private:
    void busOpened() override;
    void busLost() override { fail("the session bus is gone"); }
    void idleWatched(sd_bus_message* reply);
    void useWatched(sd_bus_message* reply);
    void fired(sd_bus_message* signal);
    void fail(const std::string& why);
    void leave();

    EventLoop& loop_;
    Bus& bus_;
    std::uint32_t restMilliseconds_;
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    Subscription joined_;
    Subscription ending_;
    std::optional<NameOwner> owner_;
    BusSlot signals_;
    BusSlot question_;            ///< the one that is open; asking another drops its answer
    std::uint32_t idleWatch_ = 0; ///< fires each time; 0 before there is one
    std::uint32_t useWatch_ = 0;  ///< fires once; 0 while there is none
};

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
