#pragma once

#include <QRect>
#include <QString>
#include <memory>
#include <vector>

class QMouseEvent;
class QQuickItem;
class QQuickWindow;

namespace kelpa::view {

/// What a window is to the desktop.
enum class WindowRole {
    Cover, ///< covers a screen with everything that is on it, and keeps the keys to itself
    Panel, ///< floats above other programs' windows and below covers, dragged by its background
};

/// Brings one window to the screen, in the way of the display server.
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
    /// The colour of the content's background is another one.
    virtual void followBackground() = 0;
    /// An opacity from 0 to 1 follows, or several that make up a fade.
    virtual void beginFade() = 0;
    virtual void setOpacity(double value) = 0;
    /// A window that is fading out takes no more input.
    virtual void setLeaving(bool leaving) = 0;
    /// The keys go to the window from now on, because a person clicked it.
    virtual void takeKeyboard() = 0;
    /// The same, but nobody asked for it: only once nobody is typing.
    virtual void takeKeyboardInQuiet() = 0;
    /// A drag of the window by its background: the press, each motion after it, and the release.
    virtual void beginDrag(const QMouseEvent& event) = 0;
    virtual void drag(const QMouseEvent& event) = 0;
    virtual void endDrag() = 0;
    /// Where the window is, as far as that is known here: not after a drag that the compositor does.
    [[nodiscard]] virtual QRect place() const = 0;
};

/// What the display server lets this program do.
class Stage {
  public:
    virtual ~Stage() = default;
    /// `content` is the root of what the window shows. Both outlive the host, and the stage outlives them.
    virtual std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content,
                                                 WindowRole role) = 0;
    /// From now on no key reaches anything but this window; null ends that. The same one again changes
    /// nothing.
    virtual void guardKeyboard(QQuickWindow* window) = 0;
    /// The guarded window gets the keyboard, whoever has it.
    virtual void focusGuarded() = 0;
    /// These windows show, the lowest first, and stay above all others.
    virtual void keepOnTop(const std::vector<QQuickWindow*>& windows) = 0;
};

/// The stage for the display server that Qt is connected to.
[[nodiscard]] std::unique_ptr<Stage> makeStage();

} // namespace kelpa::view
