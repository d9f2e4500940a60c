#pragma once

#include <QAbstractNativeEventFilter>
#include <QTimer>
#include <vector>
#include <xcb/xcb.h>

namespace kelpa {

/// Brings windows back to the top when something was put above them. It gives up against something that
/// climbs again and again, as a screen locker does, until it is told of windows anew.
class StackKeeper : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    explicit StackKeeper(QObject* parent = nullptr);
    /// Keeps these on top from now on, and no others; the first is the lowest of them.
    void keep(std::vector<xcb_window_t> windows);

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  private:
    [[nodiscard]] bool isOurs(xcb_window_t window) const;
    void raiseAll();

    std::vector<xcb_window_t> windows_;
    QTimer soon_;
    int raisesLeft_ = 0;
};

} // namespace kelpa
