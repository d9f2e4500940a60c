#pragma once

#include "platform/linux/view/Fade.h"
#include "platform/linux/view/ViewWindow.h"

namespace kelpa {

/// A window beyond the reach of the window manager: above all others, exactly where the program wants it, and
/// faded in and out.
class PlacedWindow : public ViewWindow {
    Q_OBJECT

  public:
    PlacedWindow(QQmlEngine& engine, const QString& file);
    ~PlacedWindow() override;

    void setPlace(const QRect& pixels, const QString& connector) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds) override;
    void appear() override;
    void disappear() override;
    void warmUp() override;
    [[nodiscard]] bool staying() const override { return isVisible() && fade_.target() > 0; }
    [[nodiscard]] bool keptOnTop() const override { return true; }

  protected:
    /// Asserts the place, because something else may have changed it.
    void assertPlace();
    virtual void appeared() {}
    virtual void left() {}
    /// Moves the window for good, in the toolkit's units.
    void moveBy(QPoint distance);

  private:
    void watchScreens();
    void applyOpacity(double value);
    void settle();
    void fillEdges();

    QRect pixels_;
    QString connector_;
    Fade fade_;
    bool composited_ = false;
    bool warm_ = false;
};

} // namespace kelpa
