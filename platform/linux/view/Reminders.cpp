#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/view/Stage.h"
#include "platform/linux/view/ViewWindow.h"
#include "ui/Window.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimeLine>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace kelpa::view {

namespace {

/// Some 30 steps a second: over two seconds each changes a colour by a few of its 256 levels at most.
constexpr int stepMilliseconds = 33;

/// A window that comes by itself: above all others, exactly where the program wants it, and faded in and out,
/// as far as the display server lets it be. Keys that are pressed soon after were meant for what was there
/// before.
class Reminder : public ViewWindow {
  public:
    Reminder(Stage& stage, QQmlEngine& engine, const QString& file, WindowRole role, WindowStyle style)
        : ViewWindow(engine, file), host_(stage.makeHost(*this, content(), role)),
          deafMilliseconds_(static_cast<qint64>(1000 * deafSeconds(style))) {
        fade_.setUpdateInterval(stepMilliseconds);
        connect(&fade_, &QTimeLine::valueChanged, this, &Reminder::fadeBy);
    }

    void setPlace(const QRect& place, const QString& connector) override {
        host_->setPlace(place, connector);
    }
    void setAlpha(double alpha) override { fadeTo(alpha, 0); }
    void fadeTo(double alpha, double seconds) override {
        host_->beginFade();
        fade_.stop();
        from_ = alpha_;
        to_ = std::clamp(alpha, 0.0, 1.0);
        if (seconds > 0) {
            fade_.setDuration(qCeil(1000 * seconds));
            fade_.start();
        } else {
            fadeBy(1);
        }
        // What is fading out takes no more input.
        content().setEnabled(to_ > 0);
        host_->setLeaving(to_ <= 0);
    }
    void appear() override {
        host_->show();
        appeared();
    }
    void disappear() override { host_->hide(); }
    void warmUp() override {
        if (warm_ || isVisible())
            return;
        warm_ = true;
        host_->prepare();
        grabWindow();
    }
    [[nodiscard]] bool staying() const override { return isVisible() && to_ > 0; }
    [[nodiscard]] bool keptOnTop() const override { return true; }

  protected:
    [[nodiscard]] WindowHost& host() const { return *host_; }
    virtual void appeared() = 0;
    void followBackground() override { host_->followBackground(); }
    void keyPressEvent(QKeyEvent* event) override {
        if (!deaf())
            ViewWindow::keyPressEvent(event);
    }
    void keyReleaseEvent(QKeyEvent* event) override {
        if (!deaf())
            ViewWindow::keyReleaseEvent(event);
    }
    /// Its deaf seconds begin; before that it hears no key at all.
    void beginToHear() { hearing_.start(); }
    void hearNothing() { hearing_.invalidate(); }
    [[nodiscard]] bool deaf() const {
        return !staying() || !hearing_.isValid() || hearing_.elapsed() < deafMilliseconds_;
    }

  private:
    void fadeBy(double part) {
        alpha_ = std::lerp(from_, to_, part);
        host_->setOpacity(alpha_);
    }

    std::unique_ptr<WindowHost> host_;
    QTimeLine fade_;
    double alpha_ = 1;
    double from_ = 1; ///< where the fade began, and where it ends
    double to_ = 1;
    bool warm_ = false;
    qint64 deafMilliseconds_;
    QElapsedTimer hearing_;
};

/// Covers a whole screen, above everything else.
class BreakWindow final : public Reminder {
  public:
    BreakWindow(Stage& stage, QQmlEngine& engine)
        : Reminder(stage, engine, QStringLiteral("BreakScreen.qml"), WindowRole::Cover,
                   WindowStyle::FullSizeContent) {}

    [[nodiscard]] bool guardsKeyboard() const override { return true; }

  protected:
    void appeared() override {
        beginToHear();
        // No button is the one that Enter would press.
        if (QQuickItem* item = activeFocusItem())
            item->setFocus(false);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->isAutoRepeat())
            return;
        if (event->key() != Qt::Key_Escape)
            Reminder::keyPressEvent(event);
        else if (!deaf())
            leave();
    }

  private:
    /// What Escape asks for: the same as Skip, and nothing where Skip is not offered.
    void leave() {
        if (content().property("skipOffered").toBool())
            say(wire::view::action, "skip");
    }
};

/// The water panel: floats in its corner above everything but breaks, dragged by its background. Nobody asked
/// for it, so it takes the keyboard only once no key has been pressed for a moment.
class WaterWindow final : public Reminder {
  public:
    WaterWindow(Stage& stage, QQmlEngine& engine)
        : Reminder(stage, engine, QStringLiteral("WaterPanel.qml"), WindowRole::Panel, WindowStyle::Panel) {}

    void takeKeyboard() override { host().takeKeyboardInQuiet(); }
    /// Of a button that is still held down then, the release goes to whatever lies beneath.
    void disappear() override {
        drop();
        Reminder::disappear();
    }

  protected:
    /// Shown again while it has the keyboard, it is not given that a second time.
    void appeared() override {
        if (isActive())
            beginToHear();
        else
            hearNothing();
        // No button is the one that Enter would press; Escape goes to the panel itself.
        content().forceActiveFocus();
    }
    void focusInEvent(QFocusEvent* event) override {
        beginToHear();
        Reminder::focusInEvent(event);
    }
    /// Whoever clicks the panel wants it.
    void mousePressEvent(QMouseEvent* event) override {
        if (!isActive())
            host().takeKeyboard();
        Reminder::mousePressEvent(event);
    }
    /// The controls are given a press only after the window's own function for it: whether one took it is
    /// known here.
    bool event(QEvent* event) override {
        const bool taken = Reminder::event(event);
        if (event->type() == QEvent::MouseButtonPress)
            beginDragOf(*static_cast<const QMouseEvent*>(event));
        return taken;
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        Reminder::mouseMoveEvent(event);
        if (heldAt_ && (event->buttons() & Qt::LeftButton) != 0)
            host().drag(*event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        drop();
        Reminder::mouseReleaseEvent(event);
    }

  private:
    /// Does nothing for a press that a control took.
    void beginDragOf(const QMouseEvent& press) {
        if (press.button() != Qt::LeftButton || press.exclusiveGrabber(press.points().first()) != nullptr)
            return;
        heldAt_ = host().place();
        host().beginDrag(press);
    }
    /// Ends a drag, if there is one.
    void drop() {
        const auto from = std::exchange(heldAt_, std::nullopt);
        if (!from)
            return;
        host().endDrag();
        const QPoint corner = host().place().topLeft();
        if (host().place() != *from)
            say(wire::view::dragged, std::to_string(corner.x()), std::to_string(corner.y()));
    }

    std::optional<QRect> heldAt_; ///< where it was when a drag began
};

} // namespace

std::unique_ptr<ViewWindow> makeBreakWindow(Stage& stage, QQmlEngine& engine) {
    return std::make_unique<BreakWindow>(stage, engine);
}

std::unique_ptr<ViewWindow> makeWaterWindow(Stage& stage, QQmlEngine& engine) {
    return std::make_unique<WaterWindow>(stage, engine);
}

} // namespace kelpa::view
