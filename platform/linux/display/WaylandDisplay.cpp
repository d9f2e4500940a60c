#include "platform/linux/display/Display.h"

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

struct Destroy {
    void operator()(wl_output* output) const {
        if (wl_output_get_version(output) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
            wl_output_release(output);
        else
            wl_output_destroy(output);
    }
    void operator()(zxdg_output_v1* output) const { zxdg_output_v1_destroy(output); }
    void operator()(zxdg_output_manager_v1* manager) const { zxdg_output_manager_v1_destroy(manager); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Destroy>;

/// One output, and what the compositor has told of it so far.
class Output {
  public:
    /// `changed` runs with everything that is told of where it lies.
    Output(wl_output* output, std::uint32_t number, std::function<void()> changed)
        : output_(output), number_(number), changed_(std::move(changed)) {
        static constexpr wl_output_listener listener{onGeometry, onMode, ignored, onScale, onName, ignored};
        wl_output_add_listener(output, &listener, this);
    }

    [[nodiscard]] std::uint32_t number() const { return number_; }

    /// From the manager comes where the output lies with every scale and rotation reckoned in.
    void askManager(zxdg_output_manager_v1* manager) {
        static constexpr zxdg_output_v1_listener listener{onPosition, onSize, ignored, onLogicalName,
                                                          ignored};
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
    /// The output that lies elsewhere from now on; those who are told of that ask later.
    static Output& moved(void* data) {
        of(data).changed_();
        return of(data);
    }
    static constexpr auto ignored = [](auto...) {};
    static void onGeometry(void* data, wl_output*, std::int32_t x, std::int32_t y, std::int32_t, std::int32_t,
                           std::int32_t, const char*, const char*, std::int32_t transform) {
        Output& output = moved(data);
        output.mode_.x = x;
        output.mode_.y = y;
        output.transform_ = transform;
    }
    static void onMode(void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
                       std::int32_t) {
        if ((flags & WL_OUTPUT_MODE_CURRENT) == 0)
            return;
        PixelRect& mode = moved(data).mode_;
        mode.width = width;
        mode.height = height;
    }
    static void onScale(void* data, wl_output*, std::int32_t scale) {
        moved(data).scale_ = std::max(1, scale);
    }
    static void onName(void* data, wl_output*, const char* name) { of(data).name_ = name; }
    static void onPosition(void* data, zxdg_output_v1*, std::int32_t x, std::int32_t y) {
        PixelRect& place = moved(data).place_;
        place.x = x;
        place.y = y;
    }
    static void onSize(void* data, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
        PixelRect& place = moved(data).place_;
        place.width = width;
        place.height = height;
    }
    static void onLogicalName(void* data, zxdg_output_v1*, const char* name) { of(data).name_ = name; }

    Owned<wl_output> output_;
    Owned<zxdg_output_v1> logical_;
    std::uint32_t number_;
    std::function<void()> changed_;
    std::string name_;
    PixelRect mode_;
    PixelRect place_;
    int scale_ = 1;
    int transform_ = WL_OUTPUT_TRANSFORM_NORMAL;
};

/// The outputs that a Wayland compositor tells of, in the order in which it does: which one a person thinks
/// of as the first, and which has the keyboard, it keeps to itself.
class WaylandScreens final : public Screens, private WaylandGlobals {
  public:
    /// Loop and connection outlive the screens.
    WaylandScreens(EventLoop& loop, WaylandConnection& connection)
        : Screens(Mirrors::EachItsOwn), loop_(loop), connection_(connection),
          globals_(connection.listen(*this)) {
        connection_.roundTrip();
        askAgain();
    }
    ~WaylandScreens() override { globals_.cancel(); }
    WaylandScreens(const WaylandScreens&) = delete;
    WaylandScreens& operator=(const WaylandScreens&) = delete;

  private:
    void came(const WaylandGlobal& global) override {
        if (global.interface == wl_output_interface.name) {
            auto* output = connection_.bind<wl_output>(global, wl_output_interface, outputVersion);
            outputs_.push_back(std::make_unique<Output>(output, global.number, [this] { changedSoon(); }));
            if (manager_)
                outputs_.back()->askManager(manager_.get());
        } else if (global.interface == zxdg_output_manager_v1_interface.name && !manager_) {
            manager_.reset(connection_.bind<zxdg_output_manager_v1>(global, zxdg_output_manager_v1_interface,
                                                                    namedVersion));
            for (const auto& output : outputs_)
                output->askManager(manager_.get());
        }
    }

    void went(std::uint32_t number) override {
        if (std::erase_if(outputs_, [number](const auto& output) { return output->number() == number; }) > 0)
            changedSoon();
    }

    void changedSoon() {
        burst_ = loop_.afterReal(burstSeconds, [this] { askAgain(); });
    }

    void askAgain() {
        burst_.cancel();
        std::vector<Monitor> monitors;
        for (const auto& output : outputs_)
            monitors.push_back(output->monitor());
        update(std::move(monitors));
    }

    EventLoop& loop_;
    WaylandConnection& connection_;
    Owned<zxdg_output_manager_v1> manager_; ///< null where the compositor has none
    std::vector<std::unique_ptr<Output>> outputs_;
    Subscription burst_;
    Subscription globals_;
};

/// The compositor gives the keyboard back by itself when a window that had it goes.
class CompositorKeepsFocus final : public FocusMemory {
  public:
    void remember() override {}
    void giveBack() override {}
};

} // namespace

std::unique_ptr<Display> openWaylandDisplay(EventLoop& loop, std::function<void()> lost) {
    auto display = std::make_unique<Display>();
    display->wayland = WaylandConnection::open(loop, std::move(lost));
    if (!display->wayland)
        return nullptr;
    display->screens = std::make_unique<WaylandScreens>(loop, *display->wayland);
    display->focus = std::make_unique<CompositorKeepsFocus>();
    return display;
}

} // namespace kelpa
