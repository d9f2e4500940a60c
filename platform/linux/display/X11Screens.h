#pragma once

#include "platform/linux/display/ScreenLayout.h"
#include "platform/linux/display/X11Connection.h"

namespace kelpa {

/// The monitors that RandR tells of, also the ones that a person defined over a part of an output.
class X11Screens final : public ScreenSource {
  public:
    /// Loop and connection outlive the screens.
    X11Screens(EventLoop& loop, X11Connection& connection);
    [[nodiscard]] const std::vector<Screen>& screens() const override { return layout_.screens(); }
    [[nodiscard]] const Screen* mainScreen() override;
    [[nodiscard]] std::string connector(std::uint32_t number) const override;
    [[nodiscard]] PixelRect pixels(const Rect& frame) const override { return layout_.pixels(frame); }
    [[nodiscard]] Rect frame(const PixelRect& pixels) const override { return layout_.frame(pixels); }
    void observe(std::function<void()> changed) override { changed_ = std::move(changed); }

  private:
    [[nodiscard]] bool queryRandr();
    [[nodiscard]] std::vector<Monitor> monitors();
    [[nodiscard]] Monitor wholeRoot();
    [[nodiscard]] std::string atomName(xcb_atom_t atom);
    void handle(const xcb_generic_event_t& event);
    void update();

    EventLoop& loop_;
    X11Connection& connection_;
    ScreenLayout layout_;
    bool hasMonitors_ = false;
    std::uint8_t firstEvent_ = 0;
    std::function<void()> changed_;
    Subscription burst_;
    Subscription events_;
};

} // namespace kelpa
