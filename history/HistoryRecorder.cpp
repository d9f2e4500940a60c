#include "history/HistoryRecorder.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "prefs/PrefState.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// Some weeks of lines, should the disk be full for so long.
constexpr std::size_t mostWaiting = 1000;

constexpr LogPlace at(std::string_view function) {
    return {"HistoryRecorder", function};
}

} // namespace

void HistoryRecorder::take(std::int64_t counted, Counting next) {
    if (counting_ == Counting::Work && work_)
        work_->entry.seconds += counted;
    if (counting_ == Counting::Break && break_)
        break_->entry.seconds += counted;
    counting_ = next;
}

void HistoryRecorder::workAssigned(bool working, std::int64_t counted) {
    take(counted, working ? Counting::Work : Counting::Nothing);
    const auto cause = std::exchange(cause_, std::nullopt);
    if (break_ && cause == HistoryEnd::Locked)
        break_->entry.end = HistoryEnd::Locked;
    endWork(cause.value_or(working ? HistoryEnd::Restarted : HistoryEnd::Paused));
    if (working)
        work_ = Running{clock_.now(), {}};
}

void HistoryRecorder::breakStarts(const HistoryEntry& began, std::int64_t counted) {
    take(counted, Counting::Break);
    endWork(began.kind == BreakKind::NewDay ? HistoryEnd::NewDay : HistoryEnd::Break);
    endBreak(HistoryEnd::Replaced);
    break_ = Running{clock_.now(), began};
    break_->entry.event = HistoryEvent::Break;
    break_->entry.end = HistoryEnd::Skipped;
}

void HistoryRecorder::breakCloses(std::int64_t counted) {
    if (!break_)
        return;
    // Work that runs beneath a break goes on.
    take(counting_ == Counting::Break ? counted : 0,
         counting_ == Counting::Work ? Counting::Work : Counting::Nothing);
    endBreak(break_->entry.end);
}

void HistoryRecorder::noticeTapped() {
    if (break_)
        break_->entry.end = HistoryEnd::Notice;
}

void HistoryRecorder::drank(std::int64_t millilitres, std::int64_t target) {
    HistoryEntry entry;
    entry.event = HistoryEvent::Drink;
    entry.millilitres = millilitres;
    entry.target = target;
    entry.end = HistoryEnd::Drunk;
    write(clock_.now(), entry);
}

void HistoryRecorder::quits(std::int64_t counted) {
    take(counted, Counting::Nothing);
    endBreak(HistoryEnd::Quit);
    endWork(HistoryEnd::Quit);
    store();
    if (!waiting_.empty())
        logger().error("the history loses " + std::to_string(waiting_.size()) + " lines", at("quits"));
}

void HistoryRecorder::endWork(HistoryEnd end) {
    auto ended = std::exchange(work_, std::nullopt);
    // What ends as it begins is nobody's work: each screen's end of a break begins a period.
    if (!ended || ended->entry.seconds == 0)
        return;
    ended->entry.end = end;
    write(ended->start, ended->entry);
}

void HistoryRecorder::endBreak(HistoryEnd early) {
    auto ended = std::exchange(break_, std::nullopt);
    if (!ended)
        return;
    HistoryEntry& entry = ended->entry;
    entry.end = entry.seconds >= entry.length ? HistoryEnd::Complete : early;
    // Another program may have stored a length below nothing, which is over at once.
    entry.length = std::max<std::int64_t>(entry.length, 0);
    write(ended->start, entry);
}

void HistoryRecorder::write(Date start, HistoryEntry entry) {
    if (!app_.prefState().keepHistory())
        return;
    entry.start = clock_.civil(start);
    if (waiting_.size() == mostWaiting)
        waiting_.erase(waiting_.begin());
    waiting_.push_back({historyMonth(entry.start.year, entry.start.month), lineOf(entry)});
    store();
    written_.tell();
}

void HistoryRecorder::store() {
    std::size_t stored = 0;
    std::optional<std::string> problem;
    for (; stored < waiting_.size() && !problem; ++stored)
        problem = files_.append(waiting_[stored].month, historyHeader, waiting_[stored].text);
    if (problem)
        --stored;
    waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(stored));
    if (problem)
        storeFailed(*problem);
    else if (!std::exchange(problem_, {}).empty())
        logger().info("the history is written again", at("store"));
    if (waiting_.empty())
        waiting_.shrink_to_fit();
}

/// One line in the log is enough for what every further line of the history meets again.
void HistoryRecorder::storeFailed(const std::string& problem) {
    if (std::exchange(problem_, problem) != problem)
        logger().warning("the history cannot be written and waits: " + printable(problem), at("store"));
}

std::optional<std::string> HistoryRecorder::forgetEverything() {
    waiting_.clear();
    auto problem = files_.removeAll();
    if (problem)
        logger().error("the history is not deleted: " + printable(*problem), at("forgetEverything"));
    else
        logger().info("the history is deleted", at("forgetEverything"));
    return problem;
}

} // namespace kelpa
