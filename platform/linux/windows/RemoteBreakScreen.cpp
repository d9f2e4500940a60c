#include "platform/linux/windows/RemoteBreakScreen.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

namespace kelpa {

namespace view = wire::view;

RemoteBreakScreen::RemoteBreakScreen(std::shared_ptr<WindowRecord> record, BreakScreenClient& client)
    : record_(std::move(record)) {
    record_->setActionHandler([&client](const std::string& action, const std::string& /*value*/) {
        if (action == view::skipAction)
            client.skipPressed();
        else if (action == view::noticeAction)
            client.noticeTapped();
    });
}

RemoteBreakScreen::~RemoteBreakScreen() {
    record_->setActionHandler(nullptr);
}

void RemoteBreakScreen::setTexts(const BreakScreenTexts& texts) {
    record_->setProperty(view::newFeatureText, texts.newFeature);
    record_->setProperty(view::waterReminderText, texts.waterReminder);
    record_->setProperty(view::hintText, texts.hint);
    record_->setProperty(view::skipText, texts.skip);
    record_->setProperty(view::linkSymbol, texts.linkSymbol);
}

void RemoteBreakScreen::setPrompt(const std::string& prompt) {
    record_->setProperty(view::prompt, shortened(prompt, view::longestText));
}

void RemoteBreakScreen::setCount(const std::string& count) {
    record_->setProperty(view::count, count);
}

void RemoteBreakScreen::setSkipOffered(bool offered) {
    record_->setProperty(view::skipOffered, offered ? "1" : "0");
}

} // namespace kelpa
