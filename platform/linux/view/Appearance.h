#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QDBusPendingCallWatcher;

namespace kelpa::view {

/// Whether the desktop is set to light or dark: as the settings portal says, else as the desktop's theme
/// does. Follows a change. `KELPA_APPEARANCE` set to `light` or `dark` in the environment settles it.
class Appearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged FINAL)
    QML_ELEMENT
    QML_SINGLETON

  public:
    explicit Appearance(QObject* parent = nullptr);
    [[nodiscard]] bool dark() const { return dark_; }

  signals:
    void darkChanged();

  private slots:
    void settingChanged(const QDBusMessage& signal);

  private:
    void askPortal();
    void portalAnswered(QDBusPendingCallWatcher* call);
    void setScheme(QVariant scheme);

    bool dark_ = false;
};

} // namespace kelpa::view
