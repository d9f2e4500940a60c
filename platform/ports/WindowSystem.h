#pragma once

#include "platform/ports/WindowFaces.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// A size in points.
struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

/// A rectangle in points on the desktop. The y axis points up, as on paper: `y` is the lower edge, and the
/// first screen's lower left corner is (0, 0). A face whose desktop counts downwards converts.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double maxY() const { return y + height; }
    bool operator==(const Rect&) const = default;
};

/// A screen as the desktop has it now. The number stays with its connector and is never given to another.
struct Screen {
    std::uint32_t number = 0;
    Rect frame;
    bool operator==(const Screen&) const = default;
};

enum class WindowStyle {
    FullSizeContent, ///< no title bar, no border, no buttons
    Panel,           ///< titled and closable with a transparent title bar, dragged by its background
};

/// What a window is made of. Levels order windows: 3 floats above normal ones, 25 also covers the menu bar
/// and panels. Every window joins all workspaces and has a clear background.
struct WindowSpec {
    std::string title;
    Rect frame;
    int level = 0;
    WindowStyle style = WindowStyle::FullSizeContent;
    std::uint32_t screen = 0; ///< the screen it stands on
};

/// A native window. Making one costs next to nothing: what is expensive is made when it is first shown.
class NativeWindow {
  public:
    virtual ~NativeWindow() = default;
    /// Puts a break screen into the window. `client` outlives the face, which the caller owns.
    virtual std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) = 0;
    /// Puts a water panel into the window. `client` outlives the face, which the caller owns.
    virtual std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) = 0;
    /// Opacity from 0 to 1, at once.
    virtual void setAlpha(double alpha) = 0;
    /// Animates the opacity over real seconds; `done` (may be empty) runs once from the main loop when the
    /// animation ends, also for a window that is not on screen. A later fade takes over from a running one,
    /// whose `done` still runs, at its time or earlier.
    virtual void fadeTo(double alpha, double seconds, std::function<void()> done) = 0;
    /// Shows the window above all others of its level without regard to which application is active.
    virtual void orderFrontRegardless() = 0;
    /// Takes the window off the screen. It can be shown again.
    virtual void close() = 0;
    /// Moves and resizes the window, on the screen of that number; a face asserts the frame again whenever
    /// something else than a person changed it.
    virtual void setFrame(const Rect& frame, std::uint32_t screen) = 0;
    [[nodiscard]] virtual bool visible() const = 0;
};

/// Hears of changes of the desktop; the core implements it.
class WindowSystemClient {
  public:
    virtual ~WindowSystemClient() = default;
    /// Screens came, went, moved or changed their size.
    virtual void screensChanged() = 0;
    /// A person dragged the window of the style `Panel` there.
    virtual void panelDragged(const Rect& frame) = 0;
};

class WindowSystem {
  public:
    virtual ~WindowSystem() = default;
    /// `client` outlives the window system. Called once, before anything is shown.
    virtual void setClient(WindowSystemClient& client) = 0;
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
    /// The screen of the keyboard focus or else the primary one; null when there is none.
    [[nodiscard]] virtual const Screen* mainScreen() const = 0;
    /// The caller owns the window.
    virtual std::unique_ptr<NativeWindow> makeWindow(const WindowSpec& spec) = 0;
    /// Windows will be shown in some seconds: what takes long to load may be loaded now.
    virtual void prepare() = 0;
    /// Brings the program in front of the others, so that keys go to its windows.
    virtual void activate() = 0;
    /// Gives the focus back to the program that had it.
    virtual void deactivate() = 0;
};

/// What fills a window and wants to know whether it can be seen.
class WindowContent {
  public:
    virtual ~WindowContent() = default;
    virtual void appeared() {}
    virtual void disappeared() {}
    /// The window was asked to show, also where it had not yet gone.
    virtual void shown() {}
};

} // namespace kelpa
