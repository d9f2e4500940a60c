#include "platform/linux/display/WaylandConnection.h"

#include <algorithm>
#include <utility>

namespace kelpa {

std::unique_ptr<WaylandConnection> WaylandConnection::open(EventLoop& loop, std::function<void()> lost) {
    wl_display* display = nullptr;
    loop.interruptibly([&display] { display = wl_display_connect(nullptr); });
    if (display == nullptr)
        return nullptr;
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(loop, display, std::move(lost)));
    return connection->roundTrip() ? std::move(connection) : nullptr;
}

bool WaylandConnection::reachable(EventLoop& loop) {
    wl_display* display = nullptr;
    loop.interruptibly([&display] { display = wl_display_connect(nullptr); });
    if (display != nullptr)
        wl_display_disconnect(display);
    return display != nullptr;
}

WaylandConnection::WaylandConnection(EventLoop& loop, wl_display* display, std::function<void()> lost)
    : loop_(loop), display_(display), registry_(wl_display_get_registry(display)), lost_(std::move(lost)),
      readable_(loop.watch(wl_display_get_fd(display), [this] { dispatch(); })) {
    static constexpr wl_registry_listener listener{
        [](void* data, wl_registry*, std::uint32_t number, const char* interface, std::uint32_t version) {
            static_cast<WaylandConnection*>(data)->came({number, interface, version});
        },
        [](void* data, wl_registry*, std::uint32_t number) {
            static_cast<WaylandConnection*>(data)->went(number);
        }};
    wl_registry_add_listener(registry_, &listener, this);
}

WaylandConnection::~WaylandConnection() {
    readable_.cancel();
    wl_registry_destroy(registry_);
    wl_display_disconnect(display_);
}

Subscription WaylandConnection::listen(WaylandGlobals& globals) {
    for (const WaylandGlobal& global : offered_)
        globals.came(global);
    const auto place = listeners_.insert(listeners_.end(), &globals);
    return Subscription([this, place] { listeners_.erase(place); });
}

const WaylandGlobal* WaylandConnection::offer(const std::string& interface) const {
    const auto found = std::find_if(offered_.begin(), offered_.end(),
                                    [&interface](const auto& each) { return each.interface == interface; });
    return found == offered_.end() ? nullptr : &*found;
}

Subscription WaylandConnection::whenAnswered(std::function<void()> told) {
    struct Question {
        wl_callback* callback;
        std::function<void()> told;
        void end() {
            if (wl_callback* open = std::exchange(callback, nullptr))
                wl_callback_destroy(open);
        }
    };
    static constexpr wl_callback_listener listener{[](void* data, wl_callback*, std::uint32_t) {
        auto* question = static_cast<Question*>(data);
        question->end();
        const auto ended = std::move(question->told);
        ended();
    }};
    const auto question = std::make_shared<Question>(Question{wl_display_sync(display_), std::move(told)});
    wl_callback_add_listener(question->callback, &listener, question.get());
    flush();
    return Subscription([question] { question->end(); });
}

void* WaylandConnection::bindAny(const WaylandGlobal& global, const wl_interface& interface,
                                 std::uint32_t version) {
    return wl_registry_bind(registry_, global.number, &interface, std::min(version, global.version));
}

void WaylandConnection::came(const WaylandGlobal& global) {
    offered_.push_back(global);
    for (WaylandGlobals* listener : listeners_)
        listener->came(global);
}

void WaylandConnection::went(std::uint32_t number) {
    std::erase_if(offered_, [number](const WaylandGlobal& global) { return global.number == number; });
    for (WaylandGlobals* listener : listeners_)
        listener->went(number);
}

bool WaylandConnection::roundTrip() {
    int result = -1;
    loop_.interruptibly([&] { result = wl_display_roundtrip(display_); });
    return result >= 0;
}

void WaylandConnection::flush() {
    wl_display_flush(display_);
}

void WaylandConnection::dispatch() {
    // Something is there to be read, so this does not wait; it also sends what the callbacks ask for next
    // time.
    if (wl_display_dispatch(display_) >= 0) {
        flush();
        return;
    }
    readable_.cancel();
    if (const auto lost = std::exchange(lost_, nullptr))
        lost();
}

} // namespace kelpa
