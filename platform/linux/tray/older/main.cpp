#include "platform/linux/tray/older/TrayItem.h"
#include "platform/linux/view/Channel.h"
#include "platform/linux/view/SessionBus.h"

#include <QApplication>
#include <QLoggingCategory>
#include <cstdio>

namespace {

/// Keeps the toolkit from loading what only costs memory here.
void keepToolkitSmall() {
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    qputenv("QT_NO_GLIB", "1");
    if (qgetenv("XDG_CURRENT_DESKTOP") != "KDE")
        qputenv("QT_QPA_PLATFORMTHEME", "generic");
    qunsetenv("SESSION_MANAGER");
    // The tray maps the icon's window before the toolkit shows it, which the toolkit finds strange each time.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.xcb.warning=false"));
}

} // namespace

int main(int argc, char** argv) {
    if (!kelpa::Channel::isConnection()) {
        std::fputs("kelpa-tray shows the tray icon of kelpa, which starts it when it is needed.\n", stderr);
        return 2;
    }
    keepToolkitSmall();
    kelpa::avoidSilentBus();
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Kelpa"));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.orvane.Kelpa"));
    QApplication::setQuitOnLastWindowClosed(false);
    kelpa::Channel channel;
    const auto item = kelpa::makeTrayItem(channel);
    return QApplication::exec();
}
