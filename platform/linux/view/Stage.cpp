#include "platform/linux/view/Stage.h"

#include <QGuiApplication>
#include <QScreen>

namespace kelpa::view {

std::unique_ptr<Stage> makeStage() {
    const bool wayland = QGuiApplication::platformName() == QStringLiteral("wayland");
    return wayland ? makeWaylandStage() : makeX11Stage();
}

QScreen* screenOf(const QString& connector) {
    for (QScreen* screen : QGuiApplication::screens())
        if (screen->name() == connector)
            return screen;
    return nullptr;
}

QScreen* screenNear(const QString& connector) {
    QScreen* screen = screenOf(connector);
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

/// Each change is looked at from the loop: the toolkit is not done with it before.
void watchScreens(QObject& listener, const std::function<void()>& changed) {
    const auto watch = [&listener, changed](const QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &listener, changed, Qt::QueuedConnection);
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qApp, &QGuiApplication::screenAdded, &listener, watch);
    for (const auto signal : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved,
                              &QGuiApplication::primaryScreenChanged})
        QObject::connect(qApp, signal, &listener, changed, Qt::QueuedConnection);
}

} // namespace kelpa::view
