#include "platform/linux/windows/RemoteWaterPanel.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

namespace kelpa {

namespace view = wire::view;

namespace {

void tapped(WaterPanelClient& client, const std::string& amount) {
    if (const auto millilitres = wholeNumber<std::int64_t>(amount))
        client.amountTapped(*millilitres);
}

void act(WaterPanelClient& client, const std::string& action, const std::string& value) {
    if (action == view::amountAction)
        tapped(client, value);
    else if (action == view::skipAction)
        client.skipPressed();
    else if (action == view::doneAction)
        client.donePressed();
    else if (action == view::closeAction)
        client.closePressed();
}

} // namespace

RemoteWaterPanel::RemoteWaterPanel(std::shared_ptr<WindowRecord> record, WaterPanelClient& client)
    : record_(std::move(record)) {
    record_->setActionHandler(
        [&client](const std::string& action, const std::string& value) { act(client, action, value); });
}

RemoteWaterPanel::~RemoteWaterPanel() {
    record_->setActionHandler(nullptr);
}

void RemoteWaterPanel::setTexts(const WaterPanelTexts& texts, const std::vector<WaterAmount>& amounts) {
    record_->setProperty(view::finishedText, texts.finished);
    record_->setProperty(view::percentText, texts.percent);
    record_->setProperty(view::remainText, texts.remain);
    record_->setProperty(view::wellDoneText, texts.wellDone);
    record_->setProperty(view::skipText, texts.skip);
    record_->setProperty(view::doneText, texts.done);
    record_->setProperty(view::closeText, texts.close);
    record_->setProperty(view::cup, texts.cup);
    std::string lines;
    for (const WaterAmount& amount : amounts)
        lines += (lines.empty() ? "" : "\n") + std::to_string(amount.millilitres) + "\n" + amount.text;
    record_->setProperty(view::amounts, lines);
}

void RemoteWaterPanel::setProgress(const WaterProgress& progress) {
    record_->setProperty(view::finished, progress.finished);
    record_->setProperty(view::percent, progress.percent);
    record_->setProperty(view::remain, progress.remain);
    record_->setProperty(view::fraction, wire::realText(progress.fraction));
}

void RemoteWaterPanel::setCounting(const WaterCounting& counting) {
    record_->setProperty(view::tip, counting.tip);
    record_->setProperty(view::remaining, counting.remaining);
}

void RemoteWaterPanel::setSelectedAmount(std::int64_t millilitres) {
    record_->setProperty(view::selectedAmount, std::to_string(millilitres));
}

void RemoteWaterPanel::offerAnswers() {
    record_->assertProperty(view::answered, "0");
}

} // namespace kelpa
