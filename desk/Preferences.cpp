#include "desk/Verbs.h"

#include "app/AppState.h"
#include "base/Text.h"
#include "desk/Values.h"

#include <array>
#include <map>

namespace kelpa::desk {

namespace {

using Run = std::function<void(Desk&)>;
using Reader = std::function<std::optional<Run>(std::string_view)>;

template <class T>
std::optional<T> parse(std::string_view text);

template <>
std::optional<bool> parse(std::string_view text) {
    return parseBoolean(text);
}
template <>
std::optional<std::int64_t> parse(std::string_view text) {
    return wholeNumber<std::int64_t>(text);
}
template <>
std::optional<double> parse(std::string_view text) {
    return parseDecimal(text);
}
template <>
std::optional<std::string> parse(std::string_view text) {
    return std::string(text);
}
template <>
std::optional<BreakStyle> parse(std::string_view text) {
    constexpr std::array<std::string_view, 3> names = {"default", "relaxation", "struggle"};
    if (const auto named = caseOf<BreakStyle>(names, text))
        return named;
    BreakStyle style{};
    const auto raw = wholeNumber<std::int64_t>(text);
    return raw && fromRawValue(*raw, style) ? std::optional(style) : std::nullopt;
}
template <>
std::optional<WaterMode> parse(std::string_view text) {
    constexpr std::array<std::string_view, 2> names = {"interval", "timing"};
    if (const auto named = caseOf<WaterMode>(names, text))
        return named;
    WaterMode mode{};
    const auto raw = wholeNumber<std::int64_t>(text);
    return raw && fromRawValue(*raw, mode) ? std::optional(mode) : std::nullopt;
}

template <class T, class Set>
Reader reader(Set set) {
    return [set](std::string_view text) -> std::optional<Run> {
        const auto value = parse<T>(text);
        if (!value)
            return std::nullopt;
        return [set, value](Desk&) { set(*value); };
    };
}

template <class T>
Reader general(StoredSetting<T> PrefState::*setting) {
    return reader<T>([setting](const T& value) { (AppState::prefState().*setting).set(value); });
}

template <class T, class Storage>
Reader water(StoredSetting<T, Storage> PrefWaterState::*setting) {
    return reader<T>([setting](const T& value) { (AppState::waterState().*setting).set(value); });
}

Reader timeOfDay(StoredSetting<Date, StoredDate> PrefWaterState::*setting) {
    return [setting](std::string_view text) -> std::optional<Run> {
        const auto time = parseTimeOfDay(text);
        if (!time)
            return std::nullopt;
        return [setting, time](Desk& desk) { (AppState::waterState().*setting).set(desk.todayAt(*time)); };
    };
}

/// Times of day between blanks, at least one.
std::optional<Run> timings(std::string_view text) {
    std::vector<CivilTime> times;
    for (const std::string& word : words(text)) {
        const auto time = parseTimeOfDay(word);
        if (!time)
            return std::nullopt;
        times.push_back(*time);
    }
    if (times.empty())
        return std::nullopt;
    return [times](Desk& desk) {
        std::set<Date> points;
        for (const CivilTime& time : times)
            points.insert(desk.todayAt(time));
        AppState::waterState().selectedTimings.set(points);
    };
}

const std::map<std::string, Reader, std::less<>>& readers() {
    static const std::map<std::string, Reader, std::less<>> all = {
        {"launchAtLogin", general(&PrefState::launchAtLogin)},
        {"showTime", general(&PrefState::showTime)},
        {"autoCheckUpdate", general(&PrefState::autoCheckUpdate)},
        {"workTime", general(&PrefState::workTime)},
        {"breakTime", general(&PrefState::breakTime)},
        {"customBreakPrompt", general(&PrefState::customBreakPrompt)},
        {"breakPrompt", general(&PrefState::breakPrompt)},
        {"shortBreakTimes", general(&PrefState::shortBreakTimes)},
        {"longBreakTime", general(&PrefState::longBreakTime)},
        {"forceLongBreak", general(&PrefState::forceLongBreak)},
        {"restartTimerAfterAwake", general(&PrefState::restartTimerAfterAwake)},
        {"stopTimerAfterMouseStop", general(&PrefState::stopTimerAfterMouseStop)},
        {"showNewDayTip", general(&PrefState::showNewDayTip)},
        {"keepHistory", general(&PrefState::keepHistory)},
        {"lastWeakupTimestamp", general(&PrefState::lastWeakupTimestamp)},
        {"breakNotice", general(&PrefState::breakNotice)},
        {"moreTime", general(&PrefState::moreTime)},
        {"holdBreaks", general(&PrefState::holdBreaks)},
        {"holdLimit", general(&PrefState::holdLimit)},
        {"holdForSound", general(&PrefState::holdForSound)},
        {"holdForCamera", general(&PrefState::holdForCamera)},
        {"holdForFullScreen", general(&PrefState::holdForFullScreen)},
        {"holdForAwake", general(&PrefState::holdForAwake)},
        {"breakStyle", reader<BreakStyle>([](BreakStyle style) {
             AppState::prefState().styleState().breakStyle.set(style);
         })},
        {"enable", water(&PrefWaterState::enable)},
        {"target", water(&PrefWaterState::target)},
        {"mode", water(&PrefWaterState::mode)},
        {"intervalStartDate", timeOfDay(&PrefWaterState::intervalStartDate)},
        {"intervalEndDate", timeOfDay(&PrefWaterState::intervalEndDate)},
        {"selectedInterval", water(&PrefWaterState::selectedInterval)},
        {"selectedTimings", timings},
        {"finished", water(&PrefWaterState::finished)},
        {"lastSelectedAmount", water(&PrefWaterState::lastSelectedAmount)},
        {"lastClickTimestamp", water(&PrefWaterState::lastClickTimestamp)},
    };
    return all;
}

} // namespace

std::function<void(Desk&)> assignment(std::string_view name, std::string_view value) {
    const auto found = readers().find(name);
    if (found == readers().end())
        throw Problem("there is no preference '" + std::string(name) + "'");
    auto run = found->second(value);
    if (!run)
        throw Problem("'" + std::string(value) + "' is no value for " + std::string(name));
    return std::move(*run);
}

} // namespace kelpa::desk
