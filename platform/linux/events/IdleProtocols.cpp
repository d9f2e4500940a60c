#include "platform/linux/events/IdleProtocols.h"

#include <ext-idle-notify.h>
#include <kde-idle.h>
#include <utility>

namespace kelpa {

namespace {

/// `ext-idle-notify-v1`, which all compositors agreed on.
struct ExtIdle {
    using Manager = ext_idle_notifier_v1;
    using Notice = ext_idle_notification_v1;
    using Listener = ext_idle_notification_v1_listener;
    static constexpr const wl_interface& interface = ext_idle_notifier_v1_interface;
    static constexpr auto destroyManager = ext_idle_notifier_v1_destroy;
    static constexpr auto destroyNotice = ext_idle_notification_v1_destroy;
    static constexpr auto addListener = ext_idle_notification_v1_add_listener;
    static Notice* ask(Manager* manager, wl_seat* seat, std::uint32_t milliseconds) {
        return ext_idle_notifier_v1_get_idle_notification(manager, milliseconds, seat);
    }
};

/// What older compositors took over from KDE. One that holds a notice back until some seconds have passed
/// makes activity seem to last for as long.
struct KdeIdle {
    using Manager = org_kde_kwin_idle;
    using Notice = org_kde_kwin_idle_timeout;
    using Listener = org_kde_kwin_idle_timeout_listener;
    static constexpr const wl_interface& interface = org_kde_kwin_idle_interface;
    static constexpr auto destroyManager = org_kde_kwin_idle_destroy;
    static constexpr auto destroyNotice = org_kde_kwin_idle_timeout_release;
    static constexpr auto addListener = org_kde_kwin_idle_timeout_add_listener;
    static Notice* ask(Manager* manager, wl_seat* seat, std::uint32_t milliseconds) {
        return org_kde_kwin_idle_get_idle_timeout(manager, seat, milliseconds);
    }
};

template <typename Words>
class Notice final : public IdleNotice {
  public:
    using Proxy = typename Words::Notice;
    Notice(Proxy* proxy, std::function<void(bool idle)> told) : proxy_(proxy), told_(std::move(told)) {
        static constexpr typename Words::Listener listener{
            [](void* self, Proxy*) { static_cast<Notice*>(self)->told_(true); },
            [](void* self, Proxy*) { static_cast<Notice*>(self)->told_(false); }};
        Words::addListener(proxy_, &listener, this);
    }
    ~Notice() override { Words::destroyNotice(proxy_); }
    Notice(const Notice&) = delete;
    Notice& operator=(const Notice&) = delete;

  private:
    Proxy* proxy_;
    std::function<void(bool idle)> told_;
};

template <typename Words>
class Protocol final : public IdleProtocol {
  public:
    Protocol() = default;
    ~Protocol() override {
        if (manager_ != nullptr)
            Words::destroyManager(manager_);
    }
    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    [[nodiscard]] std::string name() const override { return Words::interface.name; }
    void bind(WaylandConnection& connection, const WaylandGlobal& offer) override {
        manager_ = connection.bind<typename Words::Manager>(offer, Words::interface, 1);
    }
    std::unique_ptr<IdleNotice> watch(wl_seat& seat, std::uint32_t milliseconds,
                                      std::function<void(bool idle)> told) override {
        return std::make_unique<Notice<Words>>(Words::ask(manager_, &seat, milliseconds), std::move(told));
    }

  private:
    typename Words::Manager* manager_ = nullptr; ///< null until it is bound
};

} // namespace

std::vector<std::unique_ptr<IdleProtocol>> idleProtocols() {
    std::vector<std::unique_ptr<IdleProtocol>> protocols;
    protocols.push_back(std::make_unique<Protocol<ExtIdle>>());
    protocols.push_back(std::make_unique<Protocol<KdeIdle>>());
    return protocols;
}

} // namespace kelpa
