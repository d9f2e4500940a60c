#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelpa {

/// What each column of the history's picture stands for.
enum class HistoryRange : std::int64_t { Days = 0, Weeks = 1 };

/// Everything of the window that never changes, ready to show.
struct HistoryTexts {
    std::string title;
    std::string days;     ///< chooses the last days
    std::string weeks;    ///< chooses the last weeks
    std::string forget;   ///< on the button that asks the question
    std::string question; ///< whether everything is to be forgotten
    std::string confirm;  ///< on the button that forgets
    std::string cancel;
};

/// A column's bars of one chart, from the bottom up. Heights are shares of the chart's, from 0 to 1.
struct HistoryBar {
    std::vector<double> parts;
    double goal = 0;                ///< where a mark stands; 0 for none
    std::vector<std::string> texts; ///< the figures, one for each part, or one for all
};

struct HistoryChart {
    std::string name;
    std::string scale;            ///< what its full height stands for
    std::vector<HistoryBar> bars; ///< one for each period
};

/// The days of a column, both of them in it: such as "2026-11-23", which the face writes as people do.
struct HistoryPeriod {
    std::string first;
    std::string last;
};

struct HistoryPicture {
    HistoryRange range = HistoryRange::Days;
    std::vector<HistoryPeriod> periods; ///< the oldest first; the last one holds today
    std::vector<HistoryChart> charts;
    std::string note; ///< why there is little to see, or what went wrong; empty for nothing of the kind
};

/// What a person does in the window; the core implements it.
class HistoryWindowClient {
  public:
    virtual ~HistoryWindowClient() = default;
    /// The window came to the front: what it shows may be out of date.
    virtual void cameToFront() = 0;
    virtual void rangeChosen(HistoryRange range) = 0;
    /// Everything is to be forgotten. The person was asked.
    virtual void forgetConfirmed() = 0;
    virtual void closed() = 0;
};

/// The window of what the days were like. Of the charts, one below the other, a person sees the figures of
/// the column that the pointer is on or that the arrow keys went to; at first of the last one.
class HistoryWindow {
  public:
    virtual ~HistoryWindow() = default;
    /// Called once, before anything else. `client` outlives the window.
    virtual void setTexts(const HistoryTexts& texts, HistoryWindowClient& client) = 0;
    /// Puts another picture in the place of any before. It is kept no longer than the window is open.
    virtual void setPicture(const HistoryPicture& picture) = 0;
    /// Shows the window, or brings it to the front where it is already shown.
    virtual void show() = 0;
};

} // namespace kelpa
