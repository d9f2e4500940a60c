#pragma once

#include "platform/linux/view/Appearance.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace kelpa::view {

/// The desktop's light or dark, for the pages.
struct AppearanceForPages {
    Q_GADGET
    QML_FOREIGN(kelpa::view::Appearance)
    QML_NAMED_ELEMENT(Appearance)
    QML_SINGLETON
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
    explicit ClockFormat(QObject* parent = nullptr);

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

    /// Does nothing for what is no web address.
    Q_INVOKABLE void open(const QString& address);
};

} // namespace kelpa::view
