#pragma once

#include "platform/linux/view/ViewWindow.h"
#include "platform/linux/view/WindowFrame.h"

#include <memory>

namespace kelpa::view {

/// An ordinary window, which the window manager moves and stacks, and decorates unless it leaves that to
/// windows. A person asked for it, so it
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
    /// How large its content is at first, in the toolkit's units.
    [[nodiscard]] virtual QSize firstSize() const = 0;
    /// The window's size around content of that size.
    [[nodiscard]] QSize around(const QSize& content) const;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] QRect firstPlace() const;
    [[nodiscard]] QSize firstSizeIn(QSize room) const;

    std::unique_ptr<WindowFrame> frame_; ///< null where the window manager draws it
    QString connector_;
    QRect bounds_; ///< where it was, and how large its content; null the first time
};

} // namespace kelpa::view
