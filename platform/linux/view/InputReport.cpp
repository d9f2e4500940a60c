#include "platform/linux/view/InputReport.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QEvent>
#include <QGuiApplication>

namespace kelpa::view {

namespace {

constexpr qint64 pauseMilliseconds = 200;

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
        return true;
    default:
        return false;
    }
}

} // namespace

InputReport::InputReport(Channel& channel) : channel_(channel) {
    qApp->installEventFilter(this);
}

bool InputReport::eventFilter(QObject* watched, QEvent* event) {
    const bool used = isInput(event->type()) && event->spontaneous() && watched->isWindowType();
    if (used && (!told_.isValid() || told_.elapsed() >= pauseMilliseconds)) {
        told_.start();
        channel_.send({wire::view::input});
    }
    return false;
}

} // namespace kelpa::view
