#pragma once

#include "platform/ports/WindowSystem.h"

#include <optional>

namespace kelpa {

/// For how many seconds of real time a window of a style ignores the keyboard after it was shown: what is
/// typed then was meant for something else.
[[nodiscard]] constexpr double deafSeconds(WindowStyle style) {
    return style == WindowStyle::FullSizeContent ? 2.0 : 1.0;
}

/// A window of the program, known by its title, that fades in and out.
class Window {
  public:
    Window(WindowSystem& system, WindowSpec spec);

    [[nodiscard]] const WindowSpec& spec() const { return spec_; }
    [[nodiscard]] bool visible() const { return native_->visible(); }
    [[nodiscard]] NativeWindow& native() { return *native_; }
    /// Fills the window; the content is told when it can be seen and when no longer.
    void setContent(std::unique_ptr<WindowContent> content) { content_ = std::move(content); }

    /// Fades in from nothing in front of everything of its level. A close under way is called off.
    void show();
    /// Fades out and then takes the window off the screen; does nothing while that is under way.
    void close();
    /// Takes the window off the screen at once, because its screen or its user wants it gone.
    void withdraw();
    /// Moves the window to a place on a screen.
    void setFrame(const Rect& frame, std::uint32_t screen);

  private:
    WindowSpec spec_;
    std::unique_ptr<NativeWindow> native_;
    std::unique_ptr<WindowContent> content_; ///< uses `native_`
    std::shared_ptr<bool> closing_;          ///< true until called off; null when no close is under way
};

/// Where a panel stands: in the top right corner of its screen, flush and without margin, unless a person
/// dragged it; then there, as long as no less of it is on the screens than was when it was dropped. What was
/// dragged is kept also while its screen is away.
class PanelPlace {
  public:
    struct Place {
        std::uint32_t screen;
        Rect frame;
    };

    explicit PanelPlace(const Size& size) : size_(size) {}

    /// A person dropped the panel there. A frame beside all screens is no place.
    void dropped(const Rect& frame, const std::vector<Screen>& screens);
    /// `home` is the screen that the panel belongs to unless it was dragged.
    [[nodiscard]] Place on(const std::vector<Screen>& screens, const Screen& home) const;

  private:
    /// Kept with the screen, because that can move on the desktop.
    struct Drop {
        std::uint32_t screen;
        double right; ///< from the screen's left edge to the panel's
        double down;  ///< from the screen's upper edge to the panel's
        double seen;  ///< how much of the panel the screens showed, in square points
    };
    [[nodiscard]] Rect dragged(const Drop& drop, const Rect& screen) const;
    [[nodiscard]] Rect corner(const Rect& screen) const;

    Size size_;
    std::optional<Drop> drop_;
};

} // namespace kelpa
