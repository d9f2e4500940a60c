#include "platform/linux/view/ControlState.h"

#include "platform/linux/helper/Message.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kelpa::view {

namespace view = wire::view;

ControlState::ControlState(QString id, QObject* parent) : QObject(parent), id_(std::move(id)) {}

bool ControlState::take(std::string_view field, const QString& value) {
    const auto put = [this](auto& member, const auto& told, void (ControlState::*signal)()) {
        member = told;
        emit(this->*signal)();
    };
    const bool set = value == QLatin1String("1");
    if (field == view::onField)
        put(on_, set, &ControlState::onTold);
    else if (field == view::textField)
        put(text_, value, &ControlState::textTold);
    else if (field == view::entriesField)
        takeEntries(value);
    else if (field == view::chosenField)
        put(chosen_, value, &ControlState::chosenTold);
    else if (field == view::timeField)
        takeTime(value);
    else if (field == view::hintField)
        put(hint_, value, &ControlState::hintTold);
    else if (field == view::problemField)
        put(problem_, value, &ControlState::problemTold);
    else if (field == view::enabledField)
        put(enabled_, set, &ControlState::enabledTold);
    else if (field == view::visibleField)
        put(visible_, set, &ControlState::visibleTold);
    else
        return false;
    return true;
}

void ControlState::takeEntries(const QString& json) {
    QList<EntryList::Entry> entries;
    const QJsonArray array = QJsonDocument::fromJson(json.toUtf8()).array();
    for (const QJsonValue& each : array)
        entries.append({each[QLatin1String("value")].toString(), each[QLatin1String("text")].toString(),
                        each[QLatin1String("removal")].toString()});
    entries_.take(entries);
    // The same choice may now be found at another place, or at all.
    emit chosenTold();
}

void ControlState::takeTime(const QString& words) {
    hour_ = words.section(QLatin1Char(':'), 0, 0).toInt();
    minute_ = words.section(QLatin1Char(':'), 1, 1).toInt();
    emit timeTold();
}

void ControlState::report(const QString& action, const QStringList& arguments) {
    std::vector<std::string> fields{id_.toStdString()};
    for (const QString& argument : arguments)
        fields.push_back(argument.toStdString());
    emit acted(action, QString::fromStdString(wire::Message(std::move(fields)).line()));
}

} // namespace kelpa::view
