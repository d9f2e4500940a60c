#pragma once

#include "base/Published.h"
#include "history/HistoryRecorder.h"
#include "history/HistorySums.h"
#include "platform/ports/HistoryWindow.h"

namespace kelpa {

/// What the window of the history shows: for each of the last days or weeks how long was worked, how many
/// breaks were taken and skipped, and how much was drunk of what was to be. While it is open it follows what
/// is written; nothing of what was read is kept.
class HistoryView final : private HistoryWindowClient {
  public:
    static constexpr std::int64_t days = 14, weeks = 12;

    /// Both outlive the view.
    HistoryView(HistoryWindow& window, App& app);

    void show();

  private:
    void cameToFront() override;
    void rangeChosen(HistoryRange range) override;
    void forgetConfirmed() override;
    void closed() override;

    void showPicture();
    [[nodiscard]] HistoryPicture picture() const;
    /// The first day of each column, and one past the last.
    [[nodiscard]] std::vector<HistoryDate> limits() const;
    [[nodiscard]] std::string note(bool empty) const;

    HistoryWindow& window_;
    App& app_;
    HistoryRange range_ = HistoryRange::Days;
    bool kept_ = false; ///< what was to be forgotten is still there
    // While the window is open.
    Subscription written_, switched_;
};

} // namespace kelpa
