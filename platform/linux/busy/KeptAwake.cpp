#include "platform/linux/busy/KeptAwake.h"

#include "base/Text.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

constexpr BusAddress logind = {"org.freedesktop.login1", "/org/freedesktop/login1",
                               "org.freedesktop.login1.Manager"};
constexpr BusAddress gnome = {"org.gnome.SessionManager", "/org/gnome/SessionManager",
                              "org.gnome.SessionManager"};
constexpr BusAddress kde = {"org.kde.Solid.PowerManagement.PolicyAgent",
                            "/org/kde/Solid/PowerManagement/PolicyAgent",
                            "org.kde.Solid.PowerManagement.PolicyAgent"};
/// What is asked about, by the number that each has for it: that the session counts as idle, and that the
/// screen is darkened.
constexpr std::uint32_t gnomeIdle = 8;
constexpr std::uint32_t kdeScreen = 4;

/// Whether "idle" is one of what logind lists, as in "sleep:idle:handle-lid-switch".
bool listsIdle(std::string_view list) {
    while (!list.empty()) {
        const auto end = list.find(':');
        if (list.substr(0, end) == "idle")
            return true;
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return false;
}

/// All are asked at once; the first that says yes settles it.
class Inquiry {
  public:
    explicit Inquiry(BusySource::Answer answer) : answer_(std::move(answer)) {}

    void start(const Bus& session, const Bus& system) {
        keep(system.call<&Inquiry::logindTold>(system.newQuestion(logind, "BlockInhibited"), *this));
        keep(session.call<&Inquiry::desktopTold>(session.newCall(gnome, "IsInhibited", "u", gnomeIdle),
                                                 *this));
        keep(session.call<&Inquiry::desktopTold>(session.newCall(kde, "HasInhibition", "u", kdeScreen),
                                                 *this));
        if (slots_.empty())
            answer_(false);
    }

  private:
    void keep(BusSlot slot) {
        if (slot)
            slots_.push_back(std::move(slot));
    }
    void logindTold(sd_bus_message* reply) {
        const char* list = nullptr;
        told(readFrom(reply, "v", "s", &list) && listsIdle(list));
    }
    void desktopTold(sd_bus_message* reply) {
        int inhibited = 0;
        told(readFrom(reply, "b", &inhibited) && inhibited != 0);
    }
    void told(bool holds) {
        ++answered_;
        if (over_ || (!holds && answered_ < slots_.size()))
            return;
        over_ = true;
        answer_(holds);
    }

    BusySource::Answer answer_;
    std::vector<BusSlot> slots_;
    std::size_t answered_ = 0;
    bool over_ = false;
};

} // namespace

Subscription KeptAwake::ask(Answer answer) {
    auto inquiry = std::make_shared<Inquiry>(std::move(answer));
    inquiry->start(session_, system_);
    return Subscription([inquiry]() mutable { inquiry = nullptr; });
}

std::optional<std::string> KeptAwake::unavailable() {
    if (session_.open() || system_.open())
        return std::nullopt;
    return localized("No message bus answers that could tell of it.");
}

} // namespace kelpa
