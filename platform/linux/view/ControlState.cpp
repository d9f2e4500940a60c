#include "platform/linux/view/ControlState.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

} // namespace

ControlState::ControlState(QString id, QObject* parent) : QObject(parent), id_(std::move(id)) {}

void ControlState::setField(PreferencesField field, const QVariant& value) {
    switch (field) {
    case PreferencesField::Entries:
        return takeEntries(value.toString().toUtf8());
    case PreferencesField::Value:
        value_ = value;
        emit valueTold();
        return;
    case PreferencesField::Hint:
        hint_ = value.toString();
        emit hintTold();
        return;
    case PreferencesField::Problem:
        problem_ = value.toString();
        emit problemTold();
        return;
    case PreferencesField::Enabled:
        enabled_ = value.toBool();
        emit enabledTold();
        return;
    case PreferencesField::Visible:
        visible_ = value.toBool();
        emit visibleTold();
        return;
    }
}

void ControlState::takeEntries(const QByteArray& json) {
    QList<EntryList::Entry> entries;
    const QJsonArray array = QJsonDocument::fromJson(json).array();
    for (const QJsonValue& each : array)
        entries.append({each[QLatin1String("value")].toInteger(), each[QLatin1String("text")].toString(),
                        each[QLatin1String("removal")].toString()});
    entries_.setEntries(entries);
    // The same choice may now be found at another place, or at all.
    emit valueTold();
}

void ControlState::edit(const QString& old, const QString& text) {
    emit acted(
        {id_, wordFor(word::nameOf(word::acts, PreferencesAct::Edited)), wordFor(word::editType), old, text});
}

void ControlState::report(PreferencesAct act, const QVariant& value) {
    emit acted(QStringList{id_, wordFor(word::nameOf(word::acts, act))} + written(value));
}

} // namespace kelpa::view
