#pragma once

#include <QLocale>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace kelpa::view {

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

} // namespace kelpa::view
