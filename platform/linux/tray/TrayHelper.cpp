#include "platform/linux/tray/TrayHelper.h"

#include "platform/linux/helper/TrayProtocol.h"

#include <utility>

namespace kelpa {

namespace tray = wire::tray;

namespace {

const char* flag(bool value) {
    return value ? "1" : "0";
}

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
    process_.send({tray::title, model_->title});
    process_.send({tray::hint, model_->hint});
    for (std::size_t i = 0; i < model_->lines.size(); ++i)
        lineInserted(i, model_->lines[i]);
    return true;
}

void TrayHelper::lineInserted(std::size_t index, const MenuLine& line) {
    process_.send({tray::insert, std::to_string(index), std::to_string(line.id), flag(line.separator),
                   flag(line.enabled), line.title, line.image, line.keyEquivalent});
}

void TrayHelper::lineRemoved(int lineId) {
    process_.send({tray::remove, std::to_string(lineId)});
}

void TrayHelper::lineChanged(const MenuLine& line) {
    process_.send({tray::change, std::to_string(line.id), flag(line.separator), flag(line.enabled),
                   line.title, line.image, line.keyEquivalent});
}

void TrayHelper::titleChanged(const std::string& title) {
    process_.send({tray::title, title});
}

void TrayHelper::hintChanged(const std::string& hint) {
    process_.send({tray::hint, hint});
}

void TrayHelper::helperSaid(const wire::Message& message) {
    if (message.verb() == tray::warning)
        report_.warning("kelpa-tray: " + message.field(1));
    const auto id = message.number(1);
    if (message.verb() == tray::click && id && clicks_ != nullptr)
        clicks_->didClick(*id);
}

} // namespace kelpa
