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

// As scripts name them, in their order. Their numbers are taken as well.
constexpr std::array<std::string_view, 3> styleNames = {"default", "relaxation", "struggle"};
constexpr std::array<std::string_view, 2> modeNames = {"interval", "timing"};

template <class E, std::size_t count>
std::optional<E> parseCase(const std::array<std::string_view, count>& names, std::string_view text) {
    const auto raw = wholeNumber<std::int64_t>(text);
    return raw ? fromRawValue<E>(*raw) : caseOf<E>(names, text);
}

template <class T>
std::optional<T> parse(std::string_view text) {
    if constexpr (std::is_same_v<T, bool>)
        return parseBoolean(text);
    else if constexpr (std::is_same_v<T, double>)
        return parseDecimal(text);
    else if constexpr (std::is_same_v<T, std::string>)
        return std::string(text);
    else if constexpr (std::is_same_v<T, CivilTime>)
        return parseTimeOfDay(text);
    else if constexpr (std::is_same_v<T, BreakStyle>)
        return parseCase<T>(styleNames, text);
    else if constexpr (std::is_same_v<T, WaterMode>)
        return parseCase<T>(modeNames, text);
    else
        return wholeNumber<T>(text);
}

template <class T, class Set>
Reader reader(Set set) {
    return [set](std::string_view text) -> std::optional<Run> {
        const auto value = parse<T>(text);
        if (!value)
            return std::nullopt;
        return [set, value](const Desk& desk) { set(desk, *value); };
    };
}

template <class T>
Reader general(StoredSetting<T> PrefState::*setting) {
    return reader<T>([setting](const Desk&, const T& value) { (AppState::prefState().*setting).set(value); });
}

template <class T, class Storage>
Reader water(StoredSetting<T, Storage> PrefWaterState::*setting) {
    return reader<T>(
        [setting](const Desk&, const T& value) { (AppState::waterState().*setting).set(value); });
}

Reader timeOfDay(StoredSetting<Date, StoredDate> PrefWaterState::*setting) {
    return reader<CivilTime>([setting](const Desk& desk, const CivilTime& time) {
        (AppState::waterState().*setting).set(desk.todayAt(time));
    });
}

void chooseStyle(const Desk& /*desk*/, BreakStyle style) {
    AppState::prefState().styleState().breakStyle.set(style);
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
        {"breakStyle", reader<BreakStyle>(chooseStyle)},
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
