#include "timer/BusyQuestion.h"

#include "logging/SharedLogger.h"

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
    question_ = probe_->ask(reasons, [this, answered](std::optional<BusyReason> reason) {
        const auto tell = answered; // which would go with the question
        drop();
        tell(reason);
    });
    giveUp_ = std::make_shared<WorkItem>([this, answered = std::move(answered)] {
        logger().warning(
            "Whether somebody is busy was not answered within two seconds, which counts as not busy",
            {"BusyQuestion", "ask()"});
        const auto tell = answered;
        drop();
        tell(std::nullopt);
    });
    mainQueue_.asyncAfter(patience, giveUp_);
}

void BusyQuestion::drop() {
    if (giveUp_)
        giveUp_->cancel();
    giveUp_.reset();
    question_.cancel();
}

} // namespace kelpa
