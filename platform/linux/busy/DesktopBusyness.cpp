#include "platform/linux/busy/DesktopBusyness.h"

#include <list>
#include <utility>

namespace kelpa {

namespace {

/// All that was asked at once: it is over with the first reason that holds, or with the last that does not.
class Inquiry {
  public:
    Inquiry(EventLoop& loop, BusyProbe::Answer answer) : loop_(loop), answer_(std::move(answer)) {}

    void ask(BusyReason reason, const BusySource& source) {
        ++open_;
        asked_.push_back(source.ask([this, reason](bool holds) { told(reason, holds); }));
    }
    /// Nobody was left to be asked; those who were may have answered already.
    void askedAll() { told(std::nullopt, false); }

  private:
    void told(std::optional<BusyReason> reason, bool holds) {
        if (telling_.active() || (!holds && --open_ > 0))
            return;
        telling_ = loop_.afterReal(0, [this, found = holds ? reason : std::nullopt] { tell(found); });
    }
    void tell(std::optional<BusyReason> found) {
        asked_.clear();
        // Which may end the inquiry.
        const auto answer = std::exchange(answer_, nullptr);
        answer(found);
    }

    EventLoop& loop_;
    BusyProbe::Answer answer_;
    int open_ = 1; ///< those who owe an answer, and whoever asks
    std::list<Subscription> asked_;
    Subscription telling_; ///< active once the answer is known
};

class DesktopBusyness final : public BusyProbe {
  public:
    DesktopBusyness(EventLoop& loop, std::map<BusyReason, BusySource> sources)
        : loop_(loop), sources_(std::move(sources)) {}

    Subscription ask(const std::set<BusyReason>& reasons, Answer answer) override {
        auto inquiry = std::make_shared<Inquiry>(loop_, std::move(answer));
        for (const BusyReason reason : reasons)
            if (const auto source = sources_.find(reason); source != sources_.end())
                inquiry->ask(reason, source->second);
        inquiry->askedAll();
        return keeping(std::move(inquiry));
    }

    [[nodiscard]] std::optional<std::string> unavailable(BusyReason reason) override {
        const auto source = sources_.find(reason);
        return source == sources_.end() ? std::nullopt : source->second.unavailable();
    }

  private:
    EventLoop& loop_;
    std::map<BusyReason, BusySource> sources_;
};

} // namespace

std::unique_ptr<BusyProbe> makeDesktopBusyness(EventLoop& loop, std::map<BusyReason, BusySource> sources) {
    return std::make_unique<DesktopBusyness>(loop, std::move(sources));
}

} // namespace kelpa
