#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/ports/Busy.h"

#include <map>
#include <memory>

namespace kelpa {

/// Finds out whether one reason holds. Between two questions it watches nothing and keeps nothing.
class BusySource {
  public:
    using Answer = std::function<void(bool holds)>;

    virtual ~BusySource() = default;
    /// Blocks for nothing. `answer` is called at most once, from the main loop or inside the call. The handle
    /// ends the question, from anywhere but inside of `answer`.
    virtual Subscription ask(Answer answer) = 0;
    /// Why nobody can be asked here, as a sentence in the user's language; nothing where somebody can.
    [[nodiscard]] virtual std::optional<std::string> unavailable() = 0;
};

/// Whether somebody is busy at this desktop.
class DesktopBusyness final : public BusyProbe {
  public:
    /// One source for each reason; a reason without one is never a person's to choose here. The loop outlives
    /// the object.
    DesktopBusyness(EventLoop& loop, std::map<BusyReason, std::unique_ptr<BusySource>> sources)
        : loop_(loop), sources_(std::move(sources)) {}

    Subscription ask(const std::set<BusyReason>& reasons, Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable(BusyReason reason) override;

  private:
    EventLoop& loop_;
    std::map<BusyReason, std::unique_ptr<BusySource>> sources_;
};

} // namespace kelpa
