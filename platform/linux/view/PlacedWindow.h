#pragma once

#include "platform/linux/view/Stage.h"
#include "platform/linux/view/ViewWindow.h"

#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <memory>

namespace kelpa::view {

/// Takes a number from where it is to where it should be, slowly at both ends.
class Fade {
  public:
    /// `apply` is called with each new value; it outlives the fade.
    explicit Fade(std::function<void(double)> apply);

    [[nodiscard]] double value() const { return value_; }
    /// Where it will end.
    [[nodiscard]] double target() const { return target_; }
    /// At once.
    void set(double value);
    void run(double target, double seconds);

  private:
    void step();

    std::function<void(double)> apply_;
    QTimer timer_;
    QElapsedTimer elapsed_;
    double value_ = 1;
    double start_ = 1;
    double target_ = 1;
    double seconds_ = 0;
};

/// A window above all others, exactly where the program wants it, and faded in and out, as far as the display
/// server lets it be.
class PlacedWindow : public ViewWindow {
    Q_OBJECT

  public:
    /// The stage outlives the window.
    PlacedWindow(Stage& stage, QQmlEngine& engine, const QString& file, WindowRole role);
    ~PlacedWindow() override;

    void setPlace(const QRect& place, const QString& connector) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds) override;
    void appear() override;
    void disappear() override;
    void warmUp() override;
    [[nodiscard]] bool staying() const override { return isVisible() && fade_.target() > 0; }
    [[nodiscard]] bool keptOnTop() const override { return true; }

  protected:
    [[nodiscard]] WindowHost& host() const { return *host_; }
    virtual void appeared() {}
    void followBackground() override;

  private:
    void settle();

    std::unique_ptr<WindowHost> host_;
    Fade fade_;
    bool warm_ = false;
};

} // namespace kelpa::view
