#pragma once

#include "platform/linux/view/LayerShell.h"
#include "platform/linux/view/Stage.h"

#include <QObject>
#include <QPointF>

class QScreen;
struct wl_callback;

namespace kelpa {

/// A window as a surface in a layer of the compositor: above everything, exactly where it belongs, and with
/// the keyboard to itself where that is its role. Qt paints it and hears its input; its place is told from
/// here.
class LayerHost final : public QObject, public WindowHost {
  public:
    /// The shell outlives the host.
    LayerHost(LayerShell& shell, QQuickWindow& window, QQuickItem& content, WindowRole role);
    ~LayerHost() override;

    void setPlace(const QRect& place, const QString& connector) override;
    void prepare() override;
    void show() override;
    void hide() override;
    void followBackground() override;
    void beginFade() override {}
    void setOpacity(double value) override;
    void setLeaving(bool leaving) override;
    /// The compositor gives it when the surface is clicked.
    void takeKeyboard() override {}
    void takeKeyboardInQuiet() override {}
    void beginDrag(const QMouseEvent& event) override;
    void drag(const QMouseEvent& event) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] QScreen* targetScreen() const;
    void screensChanged();
    void showNow(QScreen& screen);
    void makeSurface(QScreen& screen);
    void withdraw();
    void configured(std::uint32_t serial, QSize size);
    /// Tells the compositor what the surface is to be; it counts from the next commit.
    void describe();
    [[nodiscard]] std::uint32_t keyboard() const;
    void letInputThrough(bool through);
    void commit();
    void moveTo(QPoint corner);

    LayerShell& shell_;
    QQuickWindow& window_;
    QQuickItem& content_;
    WindowRole role_;
    QRect place_;
    QString connector_;
    QString shownOn_;
    zwlr_layer_surface_v1* surface_ = nullptr; ///< null while the window is not on its way to the screen
    wl_callback* moving_ = nullptr;            ///< null when the compositor has followed every move
    QPointF grip_;
    bool wanted_ = false; ///< shown, or to be shown as soon as its screen is there
    bool leaving_ = false;
};

} // namespace kelpa
