#pragma once

#include <QDBusMessage>
#include <QLocale>
#include <QObject>
#include <QProcessEnvironment>
#include <QtQml/qqmlregistration.h>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace kelpa::x11 {
class SettingsWatch;
}

namespace kelpa::view {

/// Whether the desktop is set to light or dark: as the settings portal says, else as the colours of the
/// desktop's theme do. Follows a change. `KELPA_APPEARANCE` set to `light` or `dark` in the environment
/// settles it.
class Appearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged FINAL)
    QML_ELEMENT
    QML_SINGLETON

  public:
    explicit Appearance(QObject* parent = nullptr);
    ~Appearance() override;
    [[nodiscard]] bool dark() const { return dark_; }

  signals:
    void darkChanged();

  private slots:
    void settingChanged(const QDBusMessage& signal);

  private:
    void askPortal();
    void portalAnswered(QDBusPendingCallWatcher* call);
    void setScheme(QVariant scheme);
    void decide();

    std::unique_ptr<x11::SettingsWatch> settings_; ///< null where the environment has settled it
    std::optional<bool> stated_;                   ///< what the portal said, if it said anything
    bool dark_ = false;
};

/// How the person's country writes a time of day.
class ClockFormat : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool twelveHours MEMBER twelveHours_ CONSTANT FINAL)
    /// Whether the half of the day stands before the hour.
    Q_PROPERTY(bool halfFirst MEMBER halfFirst_ CONSTANT FINAL)
    Q_PROPERTY(bool zeroBeforeHour MEMBER zeroBeforeHour_ CONSTANT FINAL)
    Q_PROPERTY(QString separator MEMBER separator_ CONSTANT FINAL)
    Q_PROPERTY(QString am MEMBER am_ CONSTANT FINAL)
    Q_PROPERTY(QString pm MEMBER pm_ CONSTANT FINAL)
    QML_ELEMENT
    QML_SINGLETON

  public:
    explicit ClockFormat(QObject* parent = nullptr) : ClockFormat(QLocale::system(), parent) {}
    explicit ClockFormat(const QLocale& locale, QObject* parent = nullptr);

  private:
    bool twelveHours_;
    bool halfFirst_;
    bool zeroBeforeHour_;
    QString separator_;
    QString am_;
    QString pm_;
};

/// Opens web pages in the person's own browser.
class Browser : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    explicit Browser(QObject* parent = nullptr) : QObject(parent) {}

    /// What this program was started with. What it sets for itself would reach the browser.
    static void setEnvironment(const QProcessEnvironment& environment);
    /// Does nothing for what is no web address.
    Q_INVOKABLE void open(const QString& address);
};

} // namespace kelpa::view
