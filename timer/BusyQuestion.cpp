#include "timer/BusyQuestion.h"

#include "logging/SharedLogger.h"

#include <utility>

namespace kelpa {

std::set<BusyReason> BusyQuestion::chosen() const {
    std::set<BusyReason> reasons;
    if (probe_ == nullptr || !state_.holdBreaks())
        return reasons;
    for (const BusyReason reason : allBusyReasons)
        if (state_.holdFor(reason)())
            reasons.insert(reason);
    return reasons;
}

void BusyQuestion::ask(const std::set<BusyReason>& reasons, BusyProbe::Answer answered) {
    drop();
    answered_ = std::move(answered);
    question_ = probe_->ask(reasons, [this](std::optional<BusyReason> reason) { end(reason); });
    giveUp_ = mainQueue_.after(patience, [this] {
        logger().warning(
            "Whether somebody is busy was not answered within two seconds, which counts as not busy",
            {"BusyQuestion", "ask()"});
        end(std::nullopt);
    });
}

void BusyQuestion::end(std::optional<BusyReason> reason) {
    // Whoever is told may ask anew.
    const auto tell = std::exchange(answered_, {});
    drop();
    tell(reason);
}

void BusyQuestion::drop() {
    giveUp_.cancel();
    question_.cancel();
    answered_ = {};
}

} // namespace kelpa
