#include "platform/linux/view/PreferencesWindow.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>

namespace kelpa::view {

namespace view = wire::view;

PreferencesWindow::PreferencesWindow(QQmlEngine& engine)
    : ManagedWindow(engine, QStringLiteral("Preferences.qml")) {
    setFlags(Qt::Window);
}

void PreferencesWindow::setContentProperty(const QByteArray& name, const QString& value) {
    if (name == view::layout.data())
        return layOut(QJsonDocument::fromJson(value.toUtf8()).object().toVariantMap());
    const qsizetype colon = name.indexOf(':');
    if (colon < 0)
        return ManagedWindow::setContentProperty(name, value);
    ControlState* state = states_.value(QString::fromUtf8(name.mid(colon + 1)));
    const QByteArray field = name.left(colon);
    if (state == nullptr || !state->take({field.constData(), static_cast<std::size_t>(colon)}, value))
        qWarning("The preferences window has no %s.", name.constData());
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
    content().setProperty("controls", controls);
}

void PreferencesWindow::makeControl(const QString& id, QVariantMap& controls) {
    ControlState*& state = states_[id];
    if (state == nullptr) {
        state = new ControlState(id, this);
        connect(state, &ControlState::acted, this, &ViewWindow::action);
    }
    controls.insert(id, QVariant::fromValue(state));
}

bool PreferencesWindow::event(QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        emit action(QString::fromUtf8(view::cameToFrontAction.data()), {});
    return ManagedWindow::event(event);
}

} // namespace kelpa::view
