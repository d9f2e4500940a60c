#pragma once

#include "platform/linux/view/EntryList.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace kelpa::view {

/// What the program says of one control of the preferences window. Each property's signal comes whenever the
/// program says it, changed or not: what a person did meanwhile may not have been taken.
class ControlState : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString controlId READ controlId CONSTANT FINAL)
    Q_PROPERTY(bool on MEMBER on_ NOTIFY onTold FINAL)
    Q_PROPERTY(QString text MEMBER text_ NOTIFY textTold FINAL)
    Q_PROPERTY(kelpa::view::EntryList* entries READ entries CONSTANT FINAL)
    Q_PROPERTY(QString chosen MEMBER chosen_ NOTIFY chosenTold FINAL)
    Q_PROPERTY(int hour MEMBER hour_ NOTIFY timeTold FINAL)
    Q_PROPERTY(int minute MEMBER minute_ NOTIFY timeTold FINAL)
    Q_PROPERTY(QString hint MEMBER hint_ NOTIFY hintTold FINAL)
    Q_PROPERTY(QString problem MEMBER problem_ NOTIFY problemTold FINAL)
    Q_PROPERTY(bool enabled MEMBER enabled_ NOTIFY enabledTold FINAL)
    Q_PROPERTY(bool visible MEMBER visible_ NOTIFY visibleTold FINAL)
    QML_ELEMENT
    QML_UNCREATABLE("the window has one for each control")

  public:
    explicit ControlState(QString id, QObject* parent = nullptr);

    [[nodiscard]] const QString& controlId() const { return id_; }
    [[nodiscard]] EntryList* entries() { return &entries_; }
    /// False when there is no such field.
    bool take(std::string_view field, const QString& value);
    /// Tells the program what a person did, with what belongs to it.
    Q_INVOKABLE void report(const QString& action, const QStringList& arguments);

  signals:
    void onTold();
    void textTold();
    void chosenTold();
    void timeTold();
    void hintTold();
    void problemTold();
    void enabledTold();
    void visibleTold();
    void acted(const QString& action, const QString& value);

  private:
    void takeEntries(const QString& json);
    void takeTime(const QString& words);

    QString id_;
    bool on_ = false;
    QString text_;
    EntryList entries_;
    QString chosen_;
    int hour_ = 0;
    int minute_ = 0;
    QString hint_;
    QString problem_;
    bool enabled_ = true;
    bool visible_ = true;
};

} // namespace kelpa::view
