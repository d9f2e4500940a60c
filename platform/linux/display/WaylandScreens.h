#pragma once

#include "platform/linux/display/ScreenLayout.h"
#include "platform/linux/display/WaylandConnection.h"

#include <memory>
#include <vector>

struct wl_output;
struct zxdg_output_manager_v1;
struct zxdg_output_v1;

namespace kelpa {

/// The outputs that a Wayland compositor tells of, in the order in which it does: which one a person thinks
/// of as the first, and which has the keyboard, it keeps to itself.
class WaylandScreens final : public ScreenSource, private WaylandGlobals {
  public:
    /// Loop and connection outlive the screens.
    WaylandScreens(EventLoop& loop, WaylandConnection& connection);
    ~WaylandScreens() override;
    WaylandScreens(const WaylandScreens&) = delete;
    WaylandScreens& operator=(const WaylandScreens&) = delete;

    [[nodiscard]] const std::vector<Screen>& screens() const override { return layout_.screens(); }
    [[nodiscard]] const Screen* mainScreen() override { return layout_.first(); }
    [[nodiscard]] std::string connector(std::uint32_t number) const override {
        return layout_.connector(number);
    }
    [[nodiscard]] PixelRect pixels(const Rect& frame) const override { return layout_.pixels(frame); }
    [[nodiscard]] Rect frame(const PixelRect& pixels) const override { return layout_.frame(pixels); }
    void observe(std::function<void()> changed) override { changed_ = std::move(changed); }

  private:
    struct Destroy {
        void operator()(wl_output* output) const;
        void operator()(zxdg_output_v1* output) const;
        void operator()(zxdg_output_manager_v1* manager) const;
    };
    template <typename Object>
    using Owned = std::unique_ptr<Object, Destroy>;
    class Output;

    void came(const WaylandGlobal& global) override;
    void went(std::uint32_t number) override;
    [[nodiscard]] std::vector<Monitor> monitors() const;
    void changedSoon();
    void update();

    EventLoop& loop_;
    WaylandConnection& connection_;
    ScreenLayout layout_{Mirrors::EachItsOwn};
    Owned<zxdg_output_manager_v1> manager_; ///< null where the compositor has none
    std::vector<std::unique_ptr<Output>> outputs_;
    std::function<void()> changed_;
    Subscription burst_;
    Subscription globals_;
};

} // namespace kelpa
