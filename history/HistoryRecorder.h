#pragma once

#include "base/Published.h"
#include "history/HistoryEntry.h"
#include "platform/ports/HistoryFiles.h"
#include "prefs/App.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// Writes a line for each work period, break and drink that ends while the history is kept. It is told when
/// periods begin and end, and never of a tick; `counted` is what the countdown has counted of the period that
/// runs, in seconds, before anything changes about it. A line that cannot be stored waits for the next one.
class HistoryRecorder {
  public:
    /// All outlive the object.
    HistoryRecorder(HistoryFiles& files, const Clock& clock, App& app)
        : files_(files), clock_(clock), app_(app) {}

    /// Work begins from its full length, or stops.
    void workAssigned(bool working, std::int64_t counted);
    /// Why the next stop comes, where it is not by hand.
    void stopsFor(HistoryEnd why) { cause_ = why; }
    /// The countdown begins anew, and the work period goes on all the same.
    void workExtended(std::int64_t counted) { take(counted, Counting::Work); }
    /// What is known of the break when it begins: its kind, its length, and how it came.
    void breakStarts(const HistoryEntry& began, std::int64_t counted);
    /// The windows of a break are closed, for whatever reason; without a break nothing happens.
    void breakCloses(std::int64_t counted);
    /// The notice on the break's screen is what closes it.
    void noticeTapped();
    void drank(std::int64_t millilitres, std::int64_t target);
    /// The program ends: what has not ended by itself ends now.
    void quits(std::int64_t counted);

    /// Deletes everything that was written, and what waits to be; gives what is wrong when something is left.
    std::optional<std::string> forgetEverything();
    [[nodiscard]] HistoryFiles& files() { return files_; }
    [[nodiscard]] const Clock& clock() const { return clock_; }
    /// Calls `told` whenever a line has been written, or waits to be.
    Subscription observe(std::function<void()> told) { return written_.add(std::move(told)); }

  private:
    /// Of a break, its end is the one that it has should it end before its time.
    struct Running {
        Date start;
        HistoryEntry entry;
    };
    struct Line {
        std::string month;
        std::string text;
    };
    enum class Counting { Nothing, Work, Break };

    void take(std::int64_t counted, Counting next);
    void endWork(HistoryEnd end);
    void endBreak(HistoryEnd early);
    void write(Date start, HistoryEntry entry);
    void store();
    void storeFailed(const std::string& problem);

    HistoryFiles& files_;
    const Clock& clock_;
    App& app_;
    // What has begun and not ended, whether the history is kept or not: it may be by the time of the end.
    std::optional<Running> work_, break_;
    Counting counting_ = Counting::Nothing;
    std::optional<HistoryEnd> cause_;
    std::vector<Line> waiting_; ///< that could not be stored yet, oldest first
    std::string problem_;       ///< that the log was told of; empty while lines are stored
    Listeners<> written_;
};

} // namespace kelpa
