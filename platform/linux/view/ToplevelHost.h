#pragma once

#include "platform/linux/view/Stage.h"

#include <QObject>

class QScreen;

namespace kelpa::view {

/// An ordinary window of a Wayland session whose compositor offers nothing better: full screen on its output,
/// or a panel wherever the compositor puts it.
class ToplevelHost final : public QObject, public WindowHost {
  public:
    ToplevelHost(QQuickWindow& window, QQuickItem& content, WindowRole role);

    void setPlace(const QRect& place, const QString& connector) override;
    void prepare() override;
    void show() override;
    void hide() override;
    void followBackground() override;
    void beginFade() override {}
    void setOpacity(double value) override;
    void setLeaving(bool) override {}
    /// The compositor decides who gets it.
    void takeKeyboard() override {}
    void takeKeyboardInQuiet() override {}
    void beginDrag(const QMouseEvent& event) override;
    void drag(const QMouseEvent&) override {}
    void endDrag() override {}
    [[nodiscard]] QRect place() const override { return place_; }

  private:
    [[nodiscard]] QScreen* targetScreen() const;
    void screensChanged();

    QQuickWindow& window_;
    QQuickItem& content_;
    WindowRole role_;
    QRect place_;
    QString connector_;
    bool wanted_ = false; ///< shown, or to be shown as soon as its screen is there
};

} // namespace kelpa::view
