#pragma once

#include "platform/linux/helper/Connection.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QRect>
#include <memory>
#include <string>
#include <string_view>

class QQmlEngine;

namespace kelpa::view {

class Stage;

/// A window of any kind: its content is one QML file, whose root item has the properties that the program
/// sets and a signal `action(name, value)` for what it wants to know. It and the program's window of the same
/// number speak to each other; it takes no decisions.
class ViewWindow : public QQuickWindow, public wire::Addressee {
    Q_OBJECT

  public:
    /// Throws std::runtime_error when the content cannot be made.
    ViewWindow(QQmlEngine& engine, const QString& file);
    /// What shows only in a window that is seen goes while everything it belongs to is still there.
    ~ViewWindow() override;

    /// Gives the window its number, by which it and the program speak to each other from now on. The
    /// connection outlives the window.
    void join(wire::Connection& program, int number);
    /// Does what the program says.
    void hear(const wire::Message& message) override;
    /// Where the window stands: in the desktop's units, on the screen of that connector; a window of the
    /// window manager's where `closed` said that it stood, if it did.
    virtual void setPlace(const QRect& place, const QString& connector) = 0;
    virtual void setContentProperty(const QByteArray& name, const QString& value);
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
    /// The program wants the window in front.
    void called();

  protected:
    /// Speaks to the program's window.
    template <typename... Values>
    void say(std::string_view verb, const Values&... values) {
        if (program_ != nullptr)
            program_->send({std::to_string(number_), verb, values...});
    }
    [[nodiscard]] QQuickItem& content() const { return *content_; }
    /// What that file draws, in this window. Throws std::runtime_error when it cannot be made.
    std::unique_ptr<QQuickItem> makeItem(QQmlEngine& engine, const QString& file);
    void resizeEvent(QResizeEvent* event) override;
    /// Enter of the number pad is Return to all pages.
    bool event(QEvent* event) override;

  protected slots:
    /// Says what a person did.
    void act(const QString& name, const QString& value);
    /// The colour of the content's background is another one.
    virtual void followBackground();

  private:
    void comeForward();

    wire::Connection* program_ = nullptr; ///< null until the window has a number
    int number_ = 0;
    std::unique_ptr<QQuickItem> content_; ///< goes before the window does
};

/// The kinds of windows. The stage outlives them.
[[nodiscard]] std::unique_ptr<ViewWindow> makeBreakWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeWaterWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeAboutWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeHistoryWindow(Stage& stage, QQmlEngine& engine);
[[nodiscard]] std::unique_ptr<ViewWindow> makeUpdateWindow(Stage& stage, QQmlEngine& engine);

} // namespace kelpa::view
