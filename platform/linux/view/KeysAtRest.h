#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <functional>

namespace kelpa::view {

/// Waits for a moment in which no key is pressed anywhere, so that whoever is typing is not interrupted.
class KeysAtRest : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    explicit KeysAtRest(QObject* parent = nullptr);
    ~KeysAtRest() override;
    /// Runs `reached` once, after the first second without a key press. A wait under way is replaced.
    void whenReached(std::function<void()> reached);
    void cancel();

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  private:
    void listen(bool listening);
    void finish();

    QTimer quiet_;
    std::function<void()> reached_;
    std::uint8_t extension_ = 0; ///< of the input extension's events; 0 where there is none
    bool listening_ = false;
};

} // namespace kelpa::view
