#pragma once

#include <QTimer>
#include <chrono>
#include <functional>

namespace kelpa::view {

/// Does something some time after it was last started.
class Delay : public QTimer {
  public:
    Delay(std::chrono::milliseconds time, const std::function<void()>& due) {
        setSingleShot(true);
        setInterval(time);
        callOnTimeout(due);
    }
};

} // namespace kelpa::view
