#include "base/Text.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/busy/DesktopBusyness.h"

#include <memory>
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
bool listsIdle(const std::string& list) {
    return (":" + list + ":").find(":idle:") != std::string::npos;
}

/// All are asked at once; the first that says yes settles it.
class Inquiry {
  public:
    Inquiry(const Bus& session, const Bus& system, BusySource::Answer answer) : answer_(std::move(answer)) {
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

BusySource keptAwake(Bus& session, Bus& system) {
    const auto ask = [&session, &system](BusySource::Answer answer) {
        return keeping(std::make_shared<Inquiry>(session, system, std::move(answer)));
    };
    const auto unavailable = [&session, &system]() -> std::optional<std::string> {
        if (session.open() || system.open())
            return std::nullopt;
        return localized("No message bus answers that could tell of it.");
    };
    return {ask, unavailable};
}

} // namespace kelpa
