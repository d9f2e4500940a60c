#pragma once

#include "platform/linux/view/EntryList.h"
#include "platform/linux/view/ManagedWindow.h"
#include "platform/ports/PreferencesWindow.h"

#include <QHash>
#include <QVariant>

namespace kelpa::view {

/// What the program says of one control of the preferences window, and what a person does to it. The value is
/// announced whenever the program says it, changed or not: what a person did meanwhile may not have been
/// taken.
class ControlState : public QObject {
    Q_OBJECT
    /// Undefined until it is told.
    Q_PROPERTY(QVariant value MEMBER value_ NOTIFY valueTold FINAL)
    Q_PROPERTY(kelpa::view::EntryList* entries READ entries CONSTANT FINAL)
    Q_PROPERTY(QString hint MEMBER hint_ NOTIFY hintTold FINAL)
    Q_PROPERTY(QString problem MEMBER problem_ NOTIFY problemTold FINAL)
    Q_PROPERTY(bool enabled MEMBER enabled_ NOTIFY enabledTold FINAL)
    Q_PROPERTY(bool visible MEMBER visible_ NOTIFY visibleTold FINAL)
    QML_ELEMENT
    QML_UNCREATABLE("the window has one for each control")

  public:
    explicit ControlState(QString id, QObject* parent = nullptr);

    [[nodiscard]] EntryList* entries() { return &entries_; }
    /// Keeps what the control shows in a field, and announces it; entries come as JSON.
    void setField(PreferencesField field, const QVariant& value);

    // What a person does. Values are what the program tells: true or false, a whole number, or a text.
    Q_INVOKABLE void type(const QString& text) { report(PreferencesAct::Typed, text); }
    Q_INVOKABLE void enter(const QVariant& value);
    Q_INVOKABLE void step(int direction) { report(PreferencesAct::Stepped, direction); }
    Q_INVOKABLE void add(const QVariant& entry) { report(PreferencesAct::Added, entry); }
    Q_INVOKABLE void edit(const QString& old, const QString& text);
    Q_INVOKABLE void remove(const QVariant& entry) { report(PreferencesAct::Removed, entry); }
    Q_INVOKABLE void press() { report(PreferencesAct::Pressed, QString()); }
    Q_INVOKABLE void reset() { report(PreferencesAct::Reset, QString()); }

  signals:
    void valueTold();
    void hintTold();
    void problemTold();
    void enabledTold();
    void visibleTold();
    /// The control, the act, and the type and text of its value.
    void acted(const QStringList& fields);

  private:
    void announceValue();
    void takeEntries(const QByteArray& json);
    void report(PreferencesAct act, const QVariant& value);

    QString id_;
    QVariant value_;
    QVariantList entered_; ///< what the program has not answered yet
    EntryList entries_;
    QString hint_;
    QString problem_;
    bool enabled_ = true;
    bool visible_ = true;
};

/// The preferences window. Its layout comes once and makes the controls, whose values come and go one by one.
class PreferencesWindow : public ManagedWindow {
    Q_OBJECT

  public:
    PreferencesWindow(Stage& stage, QQmlEngine& engine);

    void setContentProperty(const QByteArray& name, const QString& value) override;
    void hear(const wire::Message& message) override;

  protected:
    [[nodiscard]] QSize firstSize() const override { return {720, 710}; }
    bool event(QEvent* event) override;

  private:
    void tellControl(const wire::Message& message);
    /// The fields are those of `did` after its verb.
    void report(const QStringList& fields);
    void layOut(const QVariantMap& layout);
    void makeControls(const QVariantMap& layout);
    void makeControl(const QString& id, QVariantMap& controls);

    QHash<QString, ControlState*> states_;
};

} // namespace kelpa::view
