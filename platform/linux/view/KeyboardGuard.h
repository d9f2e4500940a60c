#pragma once

#include <QAbstractNativeEventFilter>
#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace kelpa::view {

/// Keeps every key from what lies beneath, as long as a window is guarded: by an active grab of the keyboard,
/// tried again while another program has one. When nobody has pressed a key for a moment, and the window has
/// the focus anyway, the grab rests until the next key or until the focus goes elsewhere, because a screen
/// locker that finds the keyboard grabbed cannot lock, and a break is when people leave their desk. A focus
/// that goes elsewhere, as to a window that opens, is taken back, unless a screen locker has it.
class KeyboardGuard : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    explicit KeyboardGuard(QObject* parent = nullptr);
    /// Guards this window from now on; null ends it. The same one again changes nothing.
    void guard(QWindow* window);
    /// Gives the guarded window the input focus, unless it belongs to a screen locker; without a guarded
    /// window, does nothing.
    void takeFocus();

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  private:
    bool hold();
    void grab();
    void release();
    void restIfQuiet();

    QPointer<QWindow> window_;
    QTimer retry_;
    QTimer quiet_;
    QDeadlineTimer focusAgain_; ///< when the focus may be taken again
    bool grabbed_ = false;
};

} // namespace kelpa::view
