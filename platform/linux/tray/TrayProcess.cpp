#include "platform/linux/tray/TrayProcess.h"

#include "platform/linux/helper/TrayProtocol.h"

#include <utility>

namespace kelpa {

namespace tray = wire::tray;

namespace {

constexpr std::uint8_t sentEventBit = 0x80;
/// A panel that starts anew is soon back.
constexpr double patience = 5;

const char* flag(bool value) {
    return value ? "1" : "0";
}

} // namespace

TrayProcess::TrayProcess(EventLoop& loop, X11Connection& connection, WindowReport& report,
                         std::string program, std::string data)
    : loop_(loop), connection_(connection), report_(report), data_(std::move(data)),
      tray_(loop, std::move(program), *this),
      selection_(connection.atom("_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber()))),
      managerMessage_(connection.atom("MANAGER")) {}

TrayProcess::~TrayProcess() = default;

void TrayProcess::show(const StatusItemModel& model, MenuClicks& clicks) {
    model_ = &model;
    clicks_ = &clicks;
    connection_.selectRoot(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    events_ = connection_.listen([this](const xcb_generic_event_t& event) { handle(event); });
    lookForManager();
}

void TrayProcess::hide() {
    model_ = nullptr;
    events_.cancel();
    leaving_.cancel();
    manager_ = XCB_WINDOW_NONE;
    tray_.end();
}

void TrayProcess::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & ~sentEventBit;
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
    const auto cookie = xcb_get_selection_owner(connection_.get(), selection_);
    const auto owner = connection_.reply<xcb_get_selection_owner_reply_t>(cookie);
    connection_.settle();
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
        start();
        sendManager();
    } else if (tray_.running()) {
        sendManager();
        leaving_ = loop_.afterReal(patience, [this] {
            leaving_.cancel();
            tray_.end();
        });
    }
}

void TrayProcess::sendManager() {
    tray_.send({tray::manager, std::to_string(manager_)});
}

void TrayProcess::start() {
    if (tray_.running() || model_ == nullptr)
        return;
    const std::string refused = tray_.start();
    if (!refused.empty()) {
        if (!std::exchange(failing_, true))
            report_.warning("The tray icon cannot be shown: " + refused);
        return;
    }
    tray_.send({tray::data, data_});
    tray_.send({tray::image, model_->image});
    tray_.send({tray::title, model_->title});
    tray_.send({tray::hint, model_->hint});
    for (std::size_t i = 0; i < model_->lines.size(); ++i)
        lineInserted(i, model_->lines[i]);
}

void TrayProcess::lineInserted(std::size_t index, const MenuLine& line) {
    tray_.send({tray::insert, std::to_string(index), std::to_string(line.id), flag(line.separator),
                flag(line.enabled), line.title, line.image, line.keyEquivalent});
}

void TrayProcess::lineRemoved(int lineId) {
    tray_.send({tray::remove, std::to_string(lineId)});
}

void TrayProcess::lineChanged(const MenuLine& line) {
    tray_.send({tray::change, std::to_string(line.id), flag(line.separator), flag(line.enabled), line.title,
                line.image, line.keyEquivalent});
}

void TrayProcess::titleChanged(const std::string& title) {
    tray_.send({tray::title, title});
}

void TrayProcess::hintChanged(const std::string& hint) {
    tray_.send({tray::hint, hint});
}

void TrayProcess::helperSaid(const wire::Message& message) {
    if (message.verb() == tray::warning)
        report_.warning("kelpa-tray: " + message.field(1));
    const auto id = message.number(1);
    if (message.verb() == tray::click && id && clicks_ != nullptr)
        clicks_->didClick(*id);
}

void TrayProcess::helperFailed(const std::string& how) {
    if (restarts_.spend(monotonicSeconds())) {
        report_.warning("kelpa-tray " + how);
        update();
    } else {
        report_.warning("kelpa-tray " + how + " again and is left alone until another tray comes");
    }
}

} // namespace kelpa
