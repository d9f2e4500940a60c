#pragma once

#include "platform/linux/view/KeysAtRest.h"
#include "platform/linux/view/Stage.h"

#include <QObject>
#include <QPoint>

class QScreen;

namespace kelpa::view {

/// A window beyond the reach of the window manager: only so it stands above panels, on all workspaces, and
/// exactly where it belongs.
class X11Host final : public QObject, public WindowHost {
  public:
    X11Host(QQuickWindow& window, QQuickItem& content, WindowRole role);
    ~X11Host() override;

    void setPlace(const QRect& place, const QString& connector) override;
    void prepare() override;
    void show() override;
    void hide() override;
    void followBackground() override;
    void beginFade() override;
    void setOpacity(double value) override;
    void setLeaving(bool leaving) override;
    void takeKeyboard() override;
    void takeKeyboardInQuiet() override;
    void beginDrag(const QMouseEvent& event) override;
    void drag(const QMouseEvent& event) override;
    void endDrag() override {}
    [[nodiscard]] QRect place() const override { return pixels_; }

  private:
    void watchScreens();
    /// Asserts the place, because something else may have changed it.
    void assertPlace();
    [[nodiscard]] QScreen* targetScreen() const;
    void fillEdges();

    QQuickWindow& window_;
    QQuickItem& content_;
    WindowRole role_;
    KeysAtRest keysAtRest_;
    QRect pixels_;
    QString connector_;
    QPoint grip_;
    bool composited_ = false;
};

} // namespace kelpa::view
