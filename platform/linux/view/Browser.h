#pragma once

#include <QObject>
#include <QProcessEnvironment>
#include <QtQml/qqmlregistration.h>

namespace kelpa::view {

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
