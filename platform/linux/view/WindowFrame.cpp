#include "platform/linux/view/WindowFrame.h"

#include "platform/linux/view/WaylandNative.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <utility>

namespace kelpa::view {

namespace {

/// GNOME's compositor is one that wants every window to draw its own. The toolkit would draw some, but only
/// together with OpenGL, which takes more memory than everything else in this process.
bool leftToWindows() {
    static const bool left = QGuiApplication::platformName() == QStringLiteral("wayland") &&
                             !wayland::offers("zxdg_decoration_manager_v1");
    return left;
}

} // namespace

std::unique_ptr<WindowFrame> WindowFrame::where(QQmlEngine& engine, QQuickWindow& window) {
    if (!leftToWindows())
        return nullptr;
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Kelpa/WindowFrame.qml")));
    std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(component.create()));
    if (item == nullptr) {
        qWarning("There is no title bar: %s", qPrintable(component.errorString()));
        return nullptr;
    }
    item->setParentItem(window.contentItem());
    return std::unique_ptr<WindowFrame>(new WindowFrame(std::move(item)));
}

WindowFrame::WindowFrame(std::unique_ptr<QQuickItem> item)
    : titleHeight_(item->property("titleHeight").toInt()), item_(std::move(item)) {}

WindowFrame::~WindowFrame() = default;

QSize WindowFrame::around(const QSize& content) const {
    return {content.width(), content.height() + titleHeight_};
}

QSize WindowFrame::within(const QSize& window) const {
    return {window.width(), window.height() - titleHeight_};
}

void WindowFrame::layOut(QQuickItem& content, const QSize& window) const {
    content.setY(titleHeight_);
    content.setSize(within(window));
}

} // namespace kelpa::view
