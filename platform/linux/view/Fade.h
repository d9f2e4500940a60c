#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>

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

} // namespace kelpa::view
