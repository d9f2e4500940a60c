#include "platform/linux/tray/TrayHelper.h"

#include <utility>

namespace kelpa {

namespace tray = wire::tray;

namespace {

const char* flag(bool value) {
    return value ? "1" : "0";
}

/// A panel that starts anew is soon back.
constexpr double patience = 5;

} // namespace

TrayHelper::TrayHelper(EventLoop& loop, WindowReport& report, std::string program, std::string data)
    : report_(report), data_(std::move(data)), process_(loop, std::move(program), *this) {}

void TrayHelper::show(const StatusItemModel& model, MenuClicks& clicks) {
    model_ = &model;
    clicks_ = &clicks;
}

void TrayHelper::hide() {
    model_ = nullptr;
    process_.end();
}

bool TrayHelper::start() {
    if (process_.running())
        return true;
    const std::string refused = process_.start();
    if (!refused.empty()) {
        if (!std::exchange(failing_, true))
            report_.warning("kelpa-tray cannot be started: " + refused);
        return false;
    }
    process_.send({tray::data, data_});
    process_.send({tray::image, model_->image});
    titleChanged(model_->title);
    hintChanged(model_->hint);
    for (std::size_t i = 0; i < model_->lines.size(); ++i)
        lineInserted(i, model_->lines[i]);
    return true;
}

void TrayHelper::lineInserted(std::size_t index, const MenuLine& line) {
    process_.send({tray::insert, std::to_string(index), std::to_string(line.id), flag(line.separator),
                   flag(line.enabled), line.title, line.image, line.keyEquivalent});
}

void TrayHelper::lineChanged(const MenuLine& line) {
    process_.send({tray::change, std::to_string(line.id), flag(line.separator), flag(line.enabled),
                   line.title, line.image, line.keyEquivalent});
}

void TrayHelper::helperSaid(const wire::Message& message) {
    if (message.verb() == tray::warning)
        report_.warning("kelpa-tray: " + message.field(1));
    const auto id = message.number(1);
    if (message.verb() == tray::click && id && clicks_ != nullptr)
        clicks_->didClick(*id);
}

TrayProcess::TrayProcess(EventLoop& loop, X11Connection& connection, WindowReport& report,
                         std::string program, std::string data)
    : TrayHelper(loop, report, std::move(program), std::move(data)), loop_(loop), connection_(connection),
      selection_(connection.atom("_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber()))),
      managerMessage_(connection.atom("MANAGER")) {}

void TrayProcess::show(const StatusItemModel& model, MenuClicks& clicks) {
    TrayHelper::show(model, clicks);
    connection_.selectRoot(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    events_ = connection_.listen([this](const xcb_generic_event_t& event) { handle(event); });
    lookForManager();
}

void TrayProcess::hide() {
    events_.cancel();
    leaving_.cancel();
    manager_ = XCB_WINDOW_NONE;
    TrayHelper::hide();
}

void TrayProcess::handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = typeOf(event);
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == managerMessage_ && message.data.data32[1] == selection_)
            lookForManager();
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (manager_ != XCB_WINDOW_NONE && gone.window == manager_)
            lookForManager();
    }
}

void TrayProcess::lookForManager() {
    const auto owner = connection_.ask<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner, selection_);
    if (connection_.standsStill())
        return;
    setManager(owner ? owner->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE));
}

void TrayProcess::setManager(xcb_window_t manager) {
    manager_ = manager;
    if (manager != XCB_WINDOW_NONE) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_.get(), manager, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(connection_.get());
    }
    update();
}

void TrayProcess::update() {
    if (manager_ != XCB_WINDOW_NONE) {
        leaving_.cancel();
        if (shown())
            start();
        sendManager();
    } else if (process().running()) {
        sendManager();
        leaving_ = loop_.afterReal(patience, [this] {
            leaving_.cancel();
            process().end();
        });
    }
}

void TrayProcess::helperFailed(const std::string& how) {
    if (restarts_.spend(monotonicSeconds())) {
        report().warning("kelpa-tray " + how);
        update();
    } else {
        report().warning("kelpa-tray " + how + " again and is left alone until another tray comes");
    }
}

PopUpMenu::PopUpMenu(EventLoop& loop, LinuxStatusBar& statusBar, WindowReport& report, std::string program,
                     std::string data, std::function<void()> closed)
    : TrayHelper(loop, report, std::move(program), std::move(data)), statusBar_(statusBar),
      closed_(std::move(closed)) {}

bool PopUpMenu::open() {
    if (shown())
        return true;
    statusBar_.addSink(*this);
    if (!shown() || !start()) {
        close();
        return false;
    }
    process().send({tray::popup});
    return true;
}

void PopUpMenu::helperSaid(const wire::Message& message) {
    TrayHelper::helperSaid(message);
    if (message.verb() != tray::closed)
        return;
    close();
    closed_();
}

void PopUpMenu::helperFailed(const std::string& how) {
    report().warning("kelpa-tray " + how);
    close();
}

} // namespace kelpa
