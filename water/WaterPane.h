#pragma once

#include "water/PrefWaterState.h"

namespace kelpa {

/// The behaviour of the water pane: it writes the settings, and each change plans the reminder anew. Setting
/// what is already set changes nothing and so plans nothing.
class WaterPane {
  public:
    /// Both must outlive the pane.
    WaterPane(PrefWaterState& state, App& app) : state_(state), app_(app) {}

    void setEnable(bool enable);
    void setTarget(std::int64_t millilitres);
    void setMode(WaterMode mode);
    void setIntervalStartDate(Date date);
    void setIntervalEndDate(Date date);
    void setSelectedInterval(std::int64_t minutes);
    void setSelectedTimings(const std::set<Date>& points);

    /// Adds the instant as it is: the same clock time of another day is a point of its own.
    void addTimePoint(Date date);
    /// Removes the first point with this hour and minute. The last point stays: a day needs one.
    void removeTimePoint(int hour, int minute);

    /// A point's time of day as "hh:mm" in the current calendar.
    [[nodiscard]] static std::string hoursAndMintes(const Calendar& calendar, Date form);

  private:
    template <class Setting, class Value>
    void change(Setting& setting, const Value& value);

    PrefWaterState& state_;
    App& app_;
};

} // namespace kelpa
