#include "platform/linux/display/WaylandDisplay.h"

#include <algorithm>
#include <utility>
#include <xdg-output.h>

namespace kelpa {

namespace {

/// Plugging a monitor in makes the compositor tell of several steps.
constexpr double burstSeconds = 0.05;
/// From here on an output has a name of its own.
constexpr std::uint32_t outputVersion = 4;
/// From here on the name comes this way as well, for compositors that are older.
constexpr std::uint32_t namedVersion = 2;

} // namespace

void WaylandScreens::Destroy::operator()(wl_output* output) const {
    if (wl_output_get_version(output) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
        wl_output_release(output);
    else
        wl_output_destroy(output);
}

void WaylandScreens::Destroy::operator()(zxdg_output_v1* output) const {
    zxdg_output_v1_destroy(output);
}

void WaylandScreens::Destroy::operator()(zxdg_output_manager_v1* manager) const {
    zxdg_output_manager_v1_destroy(manager);
}

/// One output, and what the compositor has told of it so far.
class WaylandScreens::Output {
  public:
    Output(WaylandScreens& home, wl_output* output, std::uint32_t number)
        : home_(home), output_(output), number_(number) {
        static constexpr wl_output_listener listener{onGeometry, onMode, onDone, onScale, onName, onText};
        wl_output_add_listener(output, &listener, this);
    }

    [[nodiscard]] std::uint32_t number() const { return number_; }

    /// From the manager comes where the output lies with every scale and rotation reckoned in.
    void askManager(zxdg_output_manager_v1* manager) {
        static constexpr zxdg_output_v1_listener listener{onPosition, onSize, onLogicalDone, onLogicalName,
                                                          onLogicalText};
        logical_.reset(zxdg_output_manager_v1_get_xdg_output(manager, output_.get()));
        zxdg_output_v1_add_listener(logical_.get(), &listener, this);
    }

    [[nodiscard]] Monitor monitor() const {
        // A name that no other output has, for compositors that give none.
        const std::string name = name_.empty() ? "output " + std::to_string(number_) : name_;
        return {name, place_.width > 0 ? place_ : placeByMode(), false};
    }

  private:
    [[nodiscard]] PixelRect placeByMode() const {
        const bool turned = transform_ % 2 != 0;
        const int width = (turned ? mode_.height : mode_.width) / scale_;
        const int height = (turned ? mode_.width : mode_.height) / scale_;
        return {mode_.x, mode_.y, width, height};
    }

    static Output& of(void* data) { return *static_cast<Output*>(data); }
    static void onGeometry(void* data, wl_output*, std::int32_t x, std::int32_t y, std::int32_t, std::int32_t,
                           std::int32_t, const char*, const char*, std::int32_t transform) {
        of(data).mode_.x = x;
        of(data).mode_.y = y;
        of(data).transform_ = transform;
        of(data).home_.changedSoon();
    }
    static void onMode(void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
                       std::int32_t) {
        if ((flags & WL_OUTPUT_MODE_CURRENT) == 0)
            return;
        of(data).mode_.width = width;
        of(data).mode_.height = height;
        of(data).home_.changedSoon();
    }
    static void onDone(void*, wl_output*) {}
    static void onScale(void* data, wl_output*, std::int32_t scale) {
        of(data).scale_ = std::max(1, scale);
        of(data).home_.changedSoon();
    }
    static void onName(void* data, wl_output*, const char* name) { of(data).name_ = name; }
    static void onText(void*, wl_output*, const char*) {}
    static void onPosition(void* data, zxdg_output_v1*, std::int32_t x, std::int32_t y) {
        of(data).place_.x = x;
        of(data).place_.y = y;
        of(data).home_.changedSoon();
    }
    static void onSize(void* data, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
        of(data).place_.width = width;
        of(data).place_.height = height;
        of(data).home_.changedSoon();
    }
    static void onLogicalDone(void*, zxdg_output_v1*) {}
    static void onLogicalName(void* data, zxdg_output_v1*, const char* name) { of(data).name_ = name; }
    static void onLogicalText(void*, zxdg_output_v1*, const char*) {}

    WaylandScreens& home_;
    Owned<wl_output> output_;
    Owned<zxdg_output_v1> logical_;
    std::uint32_t number_;
    std::string name_;
    PixelRect mode_;
    PixelRect place_;
    int scale_ = 1;
    int transform_ = WL_OUTPUT_TRANSFORM_NORMAL;
};

WaylandScreens::WaylandScreens(EventLoop& loop, WaylandConnection& connection)
    : Screens(Mirrors::EachItsOwn), loop_(loop), connection_(connection), globals_(connection.listen(*this)) {
    connection_.roundTrip();
    askAgain();
}

WaylandScreens::~WaylandScreens() {
    globals_.cancel();
}

void WaylandScreens::came(const WaylandGlobal& global) {
    if (global.interface == wl_output_interface.name) {
        auto* output = connection_.bind<wl_output>(global, wl_output_interface, outputVersion);
        outputs_.push_back(std::make_unique<Output>(*this, output, global.number));
        if (manager_)
            outputs_.back()->askManager(manager_.get());
    } else if (global.interface == zxdg_output_manager_v1_interface.name && !manager_) {
        manager_.reset(
            connection_.bind<zxdg_output_manager_v1>(global, zxdg_output_manager_v1_interface, namedVersion));
        for (const auto& output : outputs_)
            output->askManager(manager_.get());
    }
}

void WaylandScreens::went(std::uint32_t number) {
    if (std::erase_if(outputs_, [number](const auto& output) { return output->number() == number; }) > 0)
        changedSoon();
}

std::vector<Monitor> WaylandScreens::monitors() const {
    std::vector<Monitor> result;
    for (const auto& output : outputs_)
        result.push_back(output->monitor());
    return result;
}

void WaylandScreens::changedSoon() {
    burst_ = loop_.afterReal(burstSeconds, [this] { askAgain(); });
}

void WaylandScreens::askAgain() {
    burst_.cancel();
    update(monitors());
}

std::unique_ptr<WaylandDisplay> WaylandDisplay::open(EventLoop& loop, std::function<void()> lost) {
    auto connection = WaylandConnection::open(loop, std::move(lost));
    if (!connection)
        return nullptr;
    return std::unique_ptr<WaylandDisplay>(new WaylandDisplay(loop, std::move(connection)));
}

WaylandDisplay::WaylandDisplay(EventLoop& loop, std::unique_ptr<WaylandConnection> connection)
    : connection_(std::move(connection)), screens_(loop, *connection_) {}

} // namespace kelpa
