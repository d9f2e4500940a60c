#pragma once

#include "tests/support/Files.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <ext-idle-notify-server.h>
#include <kde-idle-server.h>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <wayland-server.h>

namespace kelpa::test {

/// A Wayland compositor on a thread of its own that can tell of idle seats and of nothing else. While it is
/// there the environment points to it.
class FakeCompositor {
  public:
    enum class Speaks { Nothing, Kde, Both };
    explicit FakeCompositor(Speaks speaks) {
        // A name with a slash is taken as it stands only from the client's side.
        setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
        wl_display_add_socket(display_, "wayland");
        setenv("WAYLAND_DISPLAY", folder_.file("wayland").c_str(), 1);
        if (speaks != Speaks::Nothing)
            wl_global_create(display_, &::org_kde_kwin_idle_interface, 1, this,
                             bind<::org_kde_kwin_idle_interface, kde>);
        if (speaks == Speaks::Both)
            wl_global_create(display_, &::ext_idle_notifier_v1_interface, 1, this,
                             bind<::ext_idle_notifier_v1_interface, ext>);
        thread_ = std::thread([this] { serve(); });
    }
    /// Ends as a crash does: without a word.
    ~FakeCompositor() {
        ended_ = true;
        thread_.join();
        wl_display_destroy_clients(display_);
        wl_display_destroy(display_);
        unsetenv("WAYLAND_DISPLAY");
    }
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;

    /// Plugs a seat in and gives its number, counted from 0.
    std::size_t addSeat() {
        const std::lock_guard lock(mutex_);
        wl_global*& seat = seats_.emplace_back(nullptr);
        seat =
            wl_global_create(display_, &::wl_seat_interface, 5, &seat, bind<::wl_seat_interface, seatVerbs>);
        return seats_.size() - 1;
    }
    void removeSeat(std::size_t seat) {
        const std::lock_guard lock(mutex_);
        wl_global_remove(seats_[seat]);
    }

    /// Tells whoever asked about the seat that nobody uses it, or that somebody does again.
    void tell(std::size_t seat, bool idle) {
        const std::lock_guard lock(mutex_);
        for (const Notice& notice : notices_)
            if (notice.seat == &seats_[seat])
                notice.send(notice.resource, idle);
    }

    struct Question {
        std::string protocol; ///< "ext" or "kde"; empty when nobody asks
        unsigned milliseconds = 0;
    };
    /// What is being asked about the seat.
    [[nodiscard]] Question question(std::size_t seat) {
        const std::lock_guard lock(mutex_);
        dispatch();
        for (const Notice& notice : notices_)
            if (notice.seat == &seats_[seat])
                return notice.question;
        return {};
    }

  private:
    struct Notice {
        wl_resource* resource;
        const void* seat;
        Question question;
        void (*send)(wl_resource* resource, bool idle);
    };

    static FakeCompositor& of(wl_resource* resource) {
        return *static_cast<FakeCompositor*>(wl_resource_get_user_data(resource));
    }
    static void destroy(wl_client*, wl_resource* resource) { wl_resource_destroy(resource); }
    template <const wl_interface& interface, const auto& verbs>
    static void bind(wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
        wl_resource* resource = wl_resource_create(client, &interface, static_cast<int>(version), id);
        wl_resource_set_implementation(resource, &verbs, data, nullptr);
    }
    void add(wl_resource* notice, const void* verbs, wl_resource* seat, const Question& question,
             void (*send)(wl_resource*, bool)) {
        notices_.push_back({notice, wl_resource_get_user_data(seat), question, send});
        wl_resource_set_implementation(notice, verbs, this, [](wl_resource* gone) {
            of(gone).notices_.remove_if([gone](const Notice& each) { return each.resource == gone; });
        });
    }

    static void askExt(wl_client* client, wl_resource* manager, std::uint32_t id, std::uint32_t milliseconds,
                       wl_resource* seat) {
        of(manager).add(wl_resource_create(client, &::ext_idle_notification_v1_interface, 1, id), &extNotice,
                        seat, {"ext", milliseconds}, [](wl_resource* notice, bool idle) {
                            (idle ? ext_idle_notification_v1_send_idled
                                  : ext_idle_notification_v1_send_resumed)(notice);
                        });
    }
    static void askKde(wl_client* client, wl_resource* manager, std::uint32_t id, wl_resource* seat,
                       std::uint32_t milliseconds) {
        of(manager).add(wl_resource_create(client, &::org_kde_kwin_idle_timeout_interface, 1, id), &kdeNotice,
                        seat, {"kde", milliseconds}, [](wl_resource* notice, bool idle) {
                            (idle ? org_kde_kwin_idle_timeout_send_idle
                                  : org_kde_kwin_idle_timeout_send_resumed)(notice);
                        });
    }
    static void simulateActivity(wl_client*, wl_resource*) {}

    // Nobody asks the seat for its devices.
    static inline const struct wl_seat_interface seatVerbs { nullptr, nullptr, nullptr, destroy };
    static inline const struct ext_idle_notification_v1_interface extNotice { destroy };
    static inline const struct ext_idle_notifier_v1_interface ext { destroy, askExt };
    static inline const struct org_kde_kwin_idle_timeout_interface kdeNotice { destroy, simulateActivity };
    static inline const struct org_kde_kwin_idle_interface kde { askKde };

    void dispatch() {
        wl_event_loop_dispatch(wl_display_get_event_loop(display_), 0);
        wl_display_flush_clients(display_);
    }
    void serve() {
        while (!ended_) {
            std::unique_lock lock(mutex_);
            dispatch();
            lock.unlock();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    const TempFolder folder_;
    wl_display* display_ = wl_display_create();
    std::deque<wl_global*> seats_;
    std::list<Notice> notices_;
    std::mutex mutex_; ///< of everything above
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

} // namespace kelpa::test
