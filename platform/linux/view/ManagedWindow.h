#pragma once

#include "platform/linux/view/ViewWindow.h"

namespace kelpa {

/// An ordinary window, which the window manager decorates, moves and stacks. A person asked for it, so it
/// takes the keyboard at once. It begins in the middle of its screen, later where it was closed.
class ManagedWindow : public ViewWindow {
    Q_OBJECT

  public:
    ManagedWindow(QQmlEngine& engine, const QString& file);

    void setPlace(const QRect& pixels, const QString& connector) override;
    void setContentProperty(const QByteArray& name, const QString& value) override;
    /// It does not fade.
    void setAlpha(double /*alpha*/) override {}
    void fadeTo(double /*alpha*/, double /*seconds*/) override {}
    void appear() override;
    void disappear() override { hide(); }
    void takeKeyboard() override;

  protected:
    /// How large it is at first, in the toolkit's units.
    [[nodiscard]] virtual QSize firstSize() const = 0;
    void closeEvent(QCloseEvent* event) override;

  private:
    [[nodiscard]] QRect firstPlace() const;

    QString connector_;
    QRect bounds_; ///< where it was; null the first time
};

} // namespace kelpa
