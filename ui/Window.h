#pragma once

#include "platform/ports/WindowSystem.h"

#include <memory>
#include <string>

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

} // namespace kelpa
