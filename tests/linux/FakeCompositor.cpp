#include "FakeCompositor.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ext-idle-notify-server.h>
#include <filesystem>
#include <future>
#include <kde-idle-server.h>
#include <list>
#include <mutex>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <wayland-server.h>

namespace kelpa::test {

namespace {

struct Notice {
    wl_resource* resource;
    void* seat;
    std::string protocol;
    unsigned milliseconds;
};

struct Seat {
    wl_global* global = nullptr;
};

} // namespace

struct FakeCompositor::State {
    wl_display* display = wl_display_create();
    std::string folder;
    std::vector<std::unique_ptr<Seat>> seats;
    std::list<Notice> notices;
    int wake = eventfd(0, EFD_CLOEXEC);
    wl_event_source* woken = nullptr; ///< the display does not free it
    std::mutex mutex;
    std::vector<std::packaged_task<void()>> work; ///< guarded by the mutex
    std::thread thread;

    void watch(wl_client* client, const wl_interface& interface, const void* verbs, std::uint32_t id,
               unsigned milliseconds, wl_resource* seat, const char* protocol) {
        wl_resource* notice = wl_resource_create(client, &interface, 1, id);
        notices.push_back({notice, wl_resource_get_user_data(seat), protocol, milliseconds});
        wl_resource_set_implementation(notice, verbs, this, [](wl_resource* gone) {
            static_cast<State*>(wl_resource_get_user_data(gone))
                ->notices.remove_if([gone](const Notice& each) { return each.resource == gone; });
        });
    }
    void doWork() {
        std::uint64_t count = 0;
        if (read(wake, &count, sizeof count) != sizeof count)
            std::abort();
        const std::lock_guard lock(mutex);
        for (auto& task : work)
            task();
        work.clear();
    }
};

namespace {

void destroy(wl_client*, wl_resource* resource) {
    wl_resource_destroy(resource);
}

const struct ext_idle_notification_v1_interface extNotice { destroy };
const struct org_kde_kwin_idle_timeout_interface kdeNotice {
    destroy, [](wl_client*, wl_resource*) {}
};
// Nobody asks the seat for its devices.
const struct wl_seat_interface seatVerbs { nullptr, nullptr, nullptr, destroy };

template <typename State>
State& stateOf(wl_resource* resource) {
    return *static_cast<State*>(wl_resource_get_user_data(resource));
}

} // namespace

FakeCompositor::FakeCompositor(Speaks speaks) : state_(std::make_unique<State>()) {
    state_->folder =
        std::filesystem::temp_directory_path() / ("kelpa-compositor-" + std::to_string(getpid()));
    std::filesystem::create_directories(state_->folder);
    const std::string socket = state_->folder + "/wayland";
    // A name with a slash is taken as it stands only from the client's side.
    setenv("XDG_RUNTIME_DIR", state_->folder.c_str(), 1);
    wl_display_add_socket(state_->display, "wayland");
    setenv("WAYLAND_DISPLAY", socket.c_str(), 1);

    static const struct ext_idle_notifier_v1_interface ext {
        destroy, [](wl_client* client, wl_resource* manager, std::uint32_t id, std::uint32_t milliseconds,
                    wl_resource* seat) {
            stateOf<State>(manager).watch(client, ::ext_idle_notification_v1_interface, &extNotice, id,
                                          milliseconds, seat, "ext");
        }
    };
    static const struct org_kde_kwin_idle_interface kde {
        [](wl_client* client, wl_resource* manager, std::uint32_t id, wl_resource* seat,
           std::uint32_t milliseconds) {
            stateOf<State>(manager).watch(client, ::org_kde_kwin_idle_timeout_interface, &kdeNotice, id,
                                          milliseconds, seat, "kde");
        }
    };
    if (speaks != Speaks::Nothing)
        wl_global_create(state_->display, &::org_kde_kwin_idle_interface, 1, state_.get(),
                         [](wl_client* client, void* state, std::uint32_t version, std::uint32_t id) {
                             wl_resource* manager = wl_resource_create(client, &::org_kde_kwin_idle_interface,
                                                                       static_cast<int>(version), id);
                             wl_resource_set_implementation(manager, &kde, state, nullptr);
                         });
    if (speaks == Speaks::Both)
        wl_global_create(state_->display, &::ext_idle_notifier_v1_interface, 1, state_.get(),
                         [](wl_client* client, void* state, std::uint32_t version, std::uint32_t id) {
                             wl_resource* manager = wl_resource_create(
                                 client, &::ext_idle_notifier_v1_interface, static_cast<int>(version), id);
                             wl_resource_set_implementation(manager, &ext, state, nullptr);
                         });
    state_->woken = wl_event_loop_add_fd(
        wl_display_get_event_loop(state_->display), state_->wake, WL_EVENT_READABLE,
        [](int, std::uint32_t, void* state) {
            static_cast<State*>(state)->doWork();
            return 0;
        },
        state_.get());
    state_->thread = std::thread([this] { wl_display_run(state_->display); });
}

FakeCompositor::~FakeCompositor() {
    perform([this] { wl_display_terminate(state_->display); });
    state_->thread.join();
    wl_display_destroy_clients(state_->display);
    wl_event_source_remove(state_->woken);
    wl_display_destroy(state_->display);
    close(state_->wake);
    std::filesystem::remove_all(state_->folder);
    unsetenv("WAYLAND_DISPLAY");
}

void FakeCompositor::perform(const std::function<void()>& work) {
    std::packaged_task<void()> task(work);
    auto done = task.get_future();
    {
        const std::lock_guard lock(state_->mutex);
        state_->work.push_back(std::move(task));
    }
    const std::uint64_t one = 1;
    if (write(state_->wake, &one, sizeof one) != sizeof one)
        std::abort();
    done.wait();
}

int FakeCompositor::addSeat() {
    perform([this] {
        auto& seat = *state_->seats.emplace_back(std::make_unique<Seat>());
        seat.global =
            wl_global_create(state_->display, &wl_seat_interface, 5, &seat,
                             [](wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
                                 wl_resource* resource = wl_resource_create(client, &::wl_seat_interface,
                                                                            static_cast<int>(version), id);
                                 wl_resource_set_implementation(resource, &seatVerbs, data, nullptr);
                             });
    });
    return static_cast<int>(state_->seats.size()) - 1;
}

void FakeCompositor::removeSeat(int seat) {
    perform([this, seat] { wl_global_remove(state_->seats[static_cast<std::size_t>(seat)]->global); });
}

void FakeCompositor::tell(int seat, bool idle) {
    perform([this, seat, idle] {
        const void* which = state_->seats[static_cast<std::size_t>(seat)].get();
        for (const Notice& notice : state_->notices) {
            if (notice.seat != which)
                continue;
            if (notice.protocol == "ext")
                (idle ? ext_idle_notification_v1_send_idled
                      : ext_idle_notification_v1_send_resumed)(notice.resource);
            else
                (idle ? org_kde_kwin_idle_timeout_send_idle
                      : org_kde_kwin_idle_timeout_send_resumed)(notice.resource);
        }
    });
}

FakeCompositor::Question FakeCompositor::question(int seat) {
    Question asked;
    perform([this, seat, &asked] {
        const void* which = state_->seats[static_cast<std::size_t>(seat)].get();
        for (const Notice& notice : state_->notices)
            if (notice.seat == which)
                asked = {notice.protocol, notice.milliseconds};
    });
    return asked;
}

} // namespace kelpa::test
