#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/view/Channel.h"
#include "platform/linux/view/SessionBus.h"
#include "platform/linux/view/WindowKeeper.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

namespace {

/// The display server is the one that the program chose; where Qt cannot speak to a compositor, it may still
/// reach the X server that most of them bring along.
void chooseDisplay() {
    const bool wayland = qgetenv("KELPA_DISPLAY") == "wayland";
    qputenv("QT_QPA_PLATFORM", wayland ? "wayland;xcb" : "xcb");
    // Windows that ask for it are left to us to place.
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
}

/// Keeps the toolkit from loading what only costs memory here: another toolkit for its colours, another main
/// loop, OpenGL for windows that are painted by the processor, and a session manager that would want to start
/// us at log-in.
void keepToolkitSmall() {
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    qputenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none");
    qputenv("QT_NO_GLIB", "1");
    if (qgetenv("XDG_CURRENT_DESKTOP") != "KDE")
        qputenv("QT_QPA_PLATFORMTHEME", "generic");
    qunsetenv("SESSION_MANAGER");
    // The name that window managers know the windows by.
    qputenv("RESOURCE_NAME", "kelpa");
}

/// Pictures as large as a screen are made and dropped: their memory is given back each time, and not kept in
/// case there will be another.
void giveLargeBlocksBack() {
    constexpr int large = 512 * 1024;
    mallopt(M_MMAP_THRESHOLD, large);
}

kelpa::Channel* messages = nullptr;
/// A complaint that comes with every frame must not fill the log.
int messagesLeft = 20;

/// What Qt says of something that it was told not to look for, and of a word of some window manager's own.
bool expected(const QString& text) {
    return text.contains(QStringLiteral("client buffer integration")) ||
           text.startsWith(QStringLiteral("Unhandled client message"));
}

void passOn(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    if (expected(text))
        return;
    if ((type == QtWarningMsg || type == QtCriticalMsg) && messagesLeft-- > 0)
        messages->send({kelpa::wire::view::warning, text.toStdString()});
}

} // namespace

int main(int argc, char** argv) {
    if (!kelpa::Channel::isConnection()) {
        std::fputs("kelpa-view draws the windows of kelpa, which starts it when it is needed.\n", stderr);
        return 2;
    }
    chooseDisplay();
    keepToolkitSmall();
    giveLargeBlocksBack();
    kelpa::avoidSilentBus();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Kelpa"));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.orvane.Kelpa"));
    // Its windows come and go; it ends with its connection.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    kelpa::Channel channel;
    messages = &channel;
    qInstallMessageHandler(passOn);
    const kelpa::view::WindowKeeper windows(channel);
    return QGuiApplication::exec();
}
