#pragma once

#include "platform/linux/helper/Lines.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QRect>
#include <QStringList>
#include <memory>

class QQmlEngine;

namespace kelpa::view {

class Stage;

/// A window of any kind: its content is one QML file, whose root item has the properties that the program
/// sets and a signal `action(name, value)` for what it wants to know.
class ViewWindow : public QQuickWindow {
    Q_OBJECT

  public:
    /// Throws std::runtime_error when the content cannot be made.
    ViewWindow(QQmlEngine& engine, const QString& file);
    /// What shows only in a window that is seen goes while everything it belongs to is still there.
    ~ViewWindow() override { hide(); }

    /// Where the window stands: in the desktop's units, on the screen of that connector; a window of the
    /// window manager's where `closed` said that it stood, if it did.
    virtual void setPlace(const QRect& place, const QString& connector) = 0;
    virtual void setContentProperty(const QByteArray& name, const QString& value);
    /// Shows what a `tell` of the program says of a control, in a window that has controls.
    virtual void tellControl(const wire::Message& /*message*/) {}
    /// What does not fade does nothing.
    virtual void setAlpha(double /*alpha*/) {}
    virtual void fadeTo(double /*alpha*/, double /*seconds*/) {}
    /// Shows the window in front of all others of its kind.
    virtual void appear() = 0;
    virtual void disappear() = 0;
    /// Makes everything ready that can be before the window is shown.
    virtual void warmUp() {}
    /// On screen, and not on its way out.
    [[nodiscard]] virtual bool staying() const { return isVisible(); }

    /// Whether it belongs above the windows of all programs.
    [[nodiscard]] virtual bool keptOnTop() const { return false; }
    /// Whether no key may reach anything else while the window shows.
    [[nodiscard]] virtual bool guardsKeyboard() const { return false; }
    /// The program wants the keyboard to belong to this window.
    virtual void takeKeyboard() {}

  signals:
    void action(const QString& name, const QString& value);
    /// What a person did to a control: the fields of a `did` from the control on.
    void didToControl(const QStringList& fields);
    /// A person dragged the window: where its upper left corner is now, in the units of `setPlace`.
    void dragged(QPoint corner);
    /// A person closed the window, whose content was as large as that and whose frame stood there.
    void closed(const QRect& bounds);

  protected:
    [[nodiscard]] QQuickItem& content() const { return *content_; }
    /// What that file draws, in this window. Throws std::runtime_error when it cannot be made.
    std::unique_ptr<QQuickItem> makeItem(QQmlEngine& engine, const QString& file);
    void resizeEvent(QResizeEvent* event) override;
    /// Enter of the number pad is Return to all pages.
    bool event(QEvent* event) override;

  protected slots:
    /// The colour of the content's background is another one.
    virtual void followBackground();

  private:
    std::unique_ptr<QQuickItem> content_; ///< goes before the window does
};

/// The kinds of windows. The stage outlives them.
[[nodiscard]] std::unique_ptr<ViewWindow> makeBreakWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeWaterWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeAboutWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeHistoryWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeUpdateWindow(Stage& stage, QQmlEngine& engine);

} // namespace kelpa::view
