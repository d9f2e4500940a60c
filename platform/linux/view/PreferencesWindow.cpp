#include "platform/linux/view/PreferencesWindow.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>

namespace kelpa::view {

namespace word = wire::view;

namespace {

QString wordFor(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Type and text of a value. To scripts all numbers are fractions.
QStringList written(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return {wordFor(word::boolType), QString::number(value.toInt())};
    case QMetaType::Int:
    case QMetaType::Double:
    case QMetaType::LongLong:
        return {wordFor(word::numberType), QString::number(value.toLongLong())};
    default:
        return {wordFor(word::textType), value.toString()};
    }
}

QVariant valueIn(const wire::Message& message) {
    const QString text = QString::fromStdString(message.field(4));
    if (message.field(3) == word::boolType)
        return text == QLatin1String("1");
    if (message.field(3) == word::numberType)
        return text.toLongLong();
    return text;
}

} // namespace

ControlState::ControlState(QString id, QObject* parent) : QObject(parent), id_(std::move(id)) {}

void ControlState::setField(PreferencesField field, const QVariant& value) {
    if (field == PreferencesField::Entries)
        return takeEntries(value.toString().toUtf8());
    if (field != PreferencesField::Value) {
        setProperty(nameOf(word::fields, field).data(), value);
        return;
    }
    // Also what it is already: a person may have changed what the page shows.
    value_ = value;
    const auto answered = entered_.indexOf(value);
    entered_ = answered < 0 ? QVariantList() : entered_.mid(answered + 1);
    announceValue();
}

/// Not of a value that answers an earlier key or click, with others on their way: the next one would go on
/// from there.
void ControlState::announceValue() {
    if (entered_.isEmpty())
        emit valueTold();
}

void ControlState::takeEntries(const QByteArray& json) {
    QList<EntryList::Entry> entries;
    const QJsonArray array = QJsonDocument::fromJson(json).array();
    for (const QJsonValue& each : array)
        entries.append({each[QLatin1String("value")].toInteger(), each[QLatin1String("text")].toString(),
                        each[QLatin1String("removal")].toString()});
    entries_.setEntries(entries);
    // The same choice may now be found at another place, or at all.
    announceValue();
}

void ControlState::enter(const QVariant& value) {
    entered_.append(value);
    report(PreferencesAct::Entered, value);
}

void ControlState::edit(const QString& old, const QString& text) {
    emit acted(
        {id_, wordFor(nameOf(word::acts, PreferencesAct::Edited)), wordFor(word::editType), old, text});
}

void ControlState::report(PreferencesAct act, const QVariant& value) {
    emit acted(QStringList{id_, wordFor(nameOf(word::acts, act))} + written(value));
}

PreferencesWindow::PreferencesWindow(Stage& stage, QQmlEngine& engine)
    : ManagedWindow(stage, engine, QStringLiteral("Preferences.qml")) {
    setFlags(Qt::Window);
}

void PreferencesWindow::setContentProperty(const QByteArray& name, const QString& value) {
    if (name == word::layout.data())
        return layOut(QJsonDocument::fromJson(value.toUtf8()).object().toVariantMap());
    ManagedWindow::setContentProperty(name, value);
}

void PreferencesWindow::hear(const wire::Message& message) {
    if (message.verb() == word::tell)
        tellControl(message);
    else
        ManagedWindow::hear(message);
}

void PreferencesWindow::tellControl(const wire::Message& message) {
    const std::string& id = message.field(1);
    ControlState* state = states_.value(QString::fromStdString(id));
    const auto field = caseOf<PreferencesField>(word::fields, message.field(2));
    if (state != nullptr && field)
        state->setField(*field, valueIn(message));
    else
        qWarning("The preferences window has no %s of %s.", message.field(2).c_str(), id.c_str());
}

void PreferencesWindow::report(const QStringList& fields) {
    const auto at = [&fields](int i) { return fields.value(i).toStdString(); };
    say(word::did, at(0), at(1), at(2), at(3), at(4));
}

/// The controls have to be there before the page that shows them.
void PreferencesWindow::layOut(const QVariantMap& layout) {
    makeControls(layout);
    setMinimumSize(around(
        {layout[QStringLiteral("minimumWidth")].toInt(), layout[QStringLiteral("minimumHeight")].toInt()}));
    content().setProperty("layout", layout);
}

void PreferencesWindow::makeControls(const QVariantMap& layout) {
    QVariantMap controls;
    const QVariantList panes = layout[QStringLiteral("panes")].toList();
    for (const QVariant& pane : panes) {
        const QVariantList sections = pane.toMap()[QStringLiteral("sections")].toList();
        for (const QVariant& section : sections) {
            const QVariantList rows = section.toMap()[QStringLiteral("rows")].toList();
            for (const QVariant& row : rows)
                makeControl(row.toMap()[QStringLiteral("id")].toString(), controls);
        }
    }
    makeControl(QString::fromUtf8(copyrightLine), controls);
    content().setProperty("controls", controls);
}

void PreferencesWindow::makeControl(const QString& id, QVariantMap& controls) {
    ControlState*& state = states_[id];
    if (state == nullptr) {
        state = new ControlState(id, this);
        connect(state, &ControlState::acted, this, &PreferencesWindow::report);
    }
    controls.insert(id, QVariant::fromValue(state));
}

bool PreferencesWindow::event(QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        say(word::action, word::cameToFrontAction);
    return ManagedWindow::event(event);
}

} // namespace kelpa::view
