#pragma once

#include <QRect>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class QMouseEvent;
class QObject;
class QQuickItem;
class QQuickWindow;
class QScreen;

namespace kelpa::view {

/// What a window is to the desktop.
enum class WindowRole {
    Cover, ///< covers a screen with everything that is on it, and keeps the keys to itself
    Panel, ///< floats above other programs' windows and below covers, dragged by its background
};

/// Brings one window to the screen, in the way of the display server. What there is nothing to do for where
/// that server is at work does nothing.
class WindowHost {
  public:
    virtual ~WindowHost() = default;
    /// Where the window belongs, in the desktop's units, and on the screen of which connector. It goes there
    /// at once or as soon as there is such a screen, and stays whatever else would move it.
    virtual void setPlace(const QRect& place, const QString& connector) = 0;
    /// Makes what can be made before the window is shown.
    virtual void prepare() = 0;
    /// In front of everything of its role. The display server may let it be seen a moment later.
    virtual void show() = 0;
    virtual void hide() = 0;
    /// Has the window filled with the colour of the content's background, wherever the content is not.
    virtual void followBackground() {}
    /// An opacity from 0 to 1 follows, or several that make up a fade.
    virtual void beginFade() {}
    virtual void setOpacity(double value) = 0;
    /// A window that is fading out takes no more input.
    virtual void setLeaving(bool /*leaving*/) {}
    /// The keys go to the window from now on, because a person clicked it, where a compositor does not see to
    /// that.
    virtual void takeKeyboard() {}
    /// The same, but nobody asked for it: only once nobody is typing.
    virtual void takeKeyboardInQuiet() {}
    /// A drag of the window by its background: the press, each motion after it, and the release.
    virtual void beginDrag(const QMouseEvent& event) = 0;
    virtual void drag(const QMouseEvent& /*event*/) {}
    virtual void endDrag() {}
    /// Where the window is, as `setPlace` counts and as far as that is known here: not after a drag that the
    /// compositor does.
    [[nodiscard]] virtual QRect place() const = 0;
};

/// What the display server lets this program do. What a compositor sees to by itself does nothing there.
class Stage {
  public:
    virtual ~Stage() = default;
    /// `content` is the root of what the window shows. Both outlive the host, and the stage outlives them.
    virtual std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content,
                                                 WindowRole role) = 0;
    /// From now on no key reaches anything but this window; null ends that. The same one again changes
    /// nothing.
    virtual void guardKeyboard(QQuickWindow* /*window*/) {}
    /// The guarded window gets the keyboard, whoever has it.
    virtual void focusGuarded() {}
    /// These windows show, the lowest first, and stay above all others.
    virtual void keepOnTop(const std::vector<QQuickWindow*>& /*windows*/) {}

    // Ordinary windows, which the window manager or the compositor looks after.
    /// Has the window filled with its colour even before it is painted, where that can be.
    virtual void fillBackground(QQuickWindow& /*window*/) {}
    /// To be called between a window's making and its showing: a desktop that tiles its windows lets this one
    /// float, in the size that it has.
    virtual void askToFloat(QQuickWindow& window) = 0;
    /// Brings all of a window to the screen once more, where what was brought there could have been lost.
    virtual void showAgain(QQuickWindow& /*window*/) {}
    /// Asks for the keyboard and a place in front, as for a person who chose the window.
    virtual void activate(QQuickWindow& window) = 0;
    /// How high a window may be at first where that much is free, as far as anybody tells.
    [[nodiscard]] virtual int heightLeftByBars(int available) const = 0;
    /// Whether every window has to draw its title bar and edges itself.
    [[nodiscard]] virtual bool windowsDrawFrames() const = 0;

    /// Whether nobody but this process hears what a person does in its windows.
    [[nodiscard]] virtual bool inputIsOurs() const = 0;
};

/// The stage for the display server that Qt is connected to: one of the two below.
[[nodiscard]] std::unique_ptr<Stage> makeStage();
[[nodiscard]] std::unique_ptr<Stage> makeX11Stage();
[[nodiscard]] std::unique_ptr<Stage> makeWaylandStage();

/// Makes windows surfaces in the compositor's layers: above everything, and exactly where they belong.
using HostMaker = std::function<std::unique_ptr<WindowHost>(QQuickWindow&, QQuickItem&, WindowRole)>;
/// Nothing where the compositor has no layers. Waits for its answer.
[[nodiscard]] HostMaker findLayers();

/// The screen of a connector; null when there is none.
[[nodiscard]] QScreen* screenOf(const QString& connector);
/// The same, but any screen rather than none; null only where there is none at all.
[[nodiscard]] QScreen* screenNear(const QString& connector);
/// Runs `changed` after screens came, went or changed, for as long as `listener` is there.
void watchScreens(QObject& listener, const std::function<void()>& changed);

} // namespace kelpa::view
