#pragma once

#include "platform/linux/view/Fade.h"

#include <QQuickWindow>
#include <QRect>

class QQmlEngine;
class QQuickItem;

namespace kelpa {

/// A window of any kind: its content is one QML file, whose root item has the properties that the program
/// sets and a signal `action(name, value)` for what it wants to know.
class ViewWindow : public QQuickWindow {
    Q_OBJECT

  public:
    /// Throws std::runtime_error when the content cannot be made.
    ViewWindow(QQmlEngine& engine, const QString& file);
    ~ViewWindow() override;

    /// Puts the window at `pixels` of the desktop, on the screen of that connector.
    void setPlace(const QRect& pixels, const QString& connector);
    void setContentProperty(const char* name, const QString& value);
    void setAlpha(double alpha);
    void fadeTo(double alpha, double seconds);
    void appear();
    void disappear();
    /// Makes everything ready that can be before the window is shown.
    void warmUp();
    /// On screen, and not on its way out.
    [[nodiscard]] bool staying() const { return isVisible() && fade_.target() > 0; }

    /// Whether no key may reach anything else while the window shows.
    [[nodiscard]] virtual bool guardsKeyboard() const { return false; }
    /// The program wants the keyboard to belong to this window.
    virtual void takeKeyboard() {}

  signals:
    void action(const QString& name, const QString& value);

  protected:
    [[nodiscard]] QQuickItem& content() const { return *content_; }
    void resizeEvent(QResizeEvent* event) override;
    /// Asserts the place, because something else may have changed it.
    void assertPlace();
    virtual void appeared() {}
    virtual void left() {}
    /// Moves the window for good, in the toolkit's units.
    void moveBy(QPoint distance);

  private slots:
    void followBackground();

  private:
    void makeContent(QQmlEngine& engine, const QString& file);
    void watchScreens();
    [[nodiscard]] QScreen* targetScreen() const;
    void applyOpacity(double value);
    void settle();
    void fillEdges();

    QQuickItem* content_ = nullptr;
    QRect pixels_;
    QString connector_;
    Fade fade_;
    bool composited_ = false;
    bool warm_ = false;
};

} // namespace kelpa
