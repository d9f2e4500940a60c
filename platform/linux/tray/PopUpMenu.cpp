#include "platform/linux/tray/PopUpMenu.h"

#include "platform/linux/helper/TrayProtocol.h"

#include <utility>

namespace kelpa {

PopUpMenu::PopUpMenu(EventLoop& loop, LinuxStatusBar& statusBar, WindowReport& report, std::string program,
                     std::string data, std::function<void()> closed)
    : TrayHelper(loop, report, std::move(program), std::move(data)), statusBar_(statusBar),
      closed_(std::move(closed)) {}

PopUpMenu::~PopUpMenu() {
    close();
}

bool PopUpMenu::open() {
    if (shown())
        return true;
    statusBar_.addSink(*this);
    if (!shown() || !start()) {
        close();
        return false;
    }
    process().send({wire::tray::popup});
    return true;
}

void PopUpMenu::close() {
    statusBar_.removeSink(*this);
}

void PopUpMenu::helperSaid(const wire::Message& message) {
    TrayHelper::helperSaid(message);
    if (message.verb() != wire::tray::closed)
        return;
    close();
    closed_();
}

void PopUpMenu::helperFailed(const std::string& how) {
    report().warning("kelpa-tray " + how);
    close();
}

} // namespace kelpa
