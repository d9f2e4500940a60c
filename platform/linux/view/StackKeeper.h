#pragma once

#include <QAbstractNativeEventFilter>
#include <QDeadlineTimer>
#include <QTimer>
#include <map>
#include <vector>
#include <xcb/xcb.h>

namespace kelpa::view {

/// Brings windows back to the top when something was put above them. It gives up against a window that climbs
/// again and again, as a screen locker's does, for the rest of a minute or until it is told of windows anew.
class StackKeeper : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    explicit StackKeeper(QObject* parent = nullptr);
    /// Keeps these on top from now on, and no others; the first is the lowest of them.
    void keep(std::vector<xcb_window_t> windows);

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  private:
    [[nodiscard]] bool isOurs(xcb_window_t window) const;
    void answer(xcb_window_t climber);
    void raiseAll();

    /// How often a window was answered that climbed.
    struct Answers {
        QDeadlineTimer forgotten;
        int given = 0;
    };

    std::vector<xcb_window_t> windows_;
    QTimer soon_;
    std::map<xcb_window_t, Answers> answers_;
};

} // namespace kelpa::view
