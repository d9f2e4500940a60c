#include "desk/Verbs.h"

#include "app/AppState.h"
#include "base/Text.h"
#include "desk/Values.h"
#include "panes/PromptListControl.h"
#include "ui/PreferencesPanes.h"
#include "water/PrefWaterView.h"

#include <cmath>
#include <map>

namespace kelpa::desk {

namespace {

using Run = std::function<void(Desk&)>;

std::string in(std::string_view text) {
    return "'" + std::string(text) + "'";
}

void expectNothing(std::string_view rest) {
    if (!rest.empty())
        throw Problem("unexpected " + in(rest));
}

/// What needs the running program.
Run onceLaunched(Run run) {
    return [run = std::move(run)](Desk& desk) {
        if (!desk.launched())
            throw Problem("the program has not been launched yet");
        run(desk);
    };
}

/// A press, which is noted where nothing of the kind can be pressed.
Run pressing(std::string what, std::function<bool(Desk&)> press) {
    return [what = std::move(what), press = std::move(press)](Desk& desk) {
        if (!press(desk))
            desk.journal.note("refused", what);
    };
}

double seconds(std::string_view text) {
    const auto value = parseDecimal(text);
    if (!value || !std::isfinite(*value) || std::fabs(*value) > 1e12)
        throw Problem(in(text) + " is no number of seconds");
    return *value;
}

std::uint32_t screenNumber(std::string_view text) {
    const auto number = wholeNumber<std::int64_t>(text);
    if (!number || *number < 0 || *number > UINT32_MAX)
        throw Problem(in(text) + " is no screen");
    return static_cast<std::uint32_t>(*number);
}

Run pass(std::string_view text) {
    const double passed = seconds(text);
    if (passed < 0)
        throw Problem("time does not run backwards");
    return [passed](Desk& desk) { desk.pass(std::llround(passed * 1e6)); };
}

Run start(std::string_view rest) {
    const auto civil = parseDateTime(rest);
    if (!civil)
        throw Problem(in(rest) + " is no local time like 2026-11-23T08:59:00");
    return [civil](Desk& desk) { desk.start(*civil); };
}

Run zone(std::string_view rest) {
    const std::string name(rest);
    return [name](Desk& desk) {
        if (!VirtualClock::setZone(name))
            throw Problem("there is no time zone " + in(name));
        desk.setZone(name);
    };
}

Run screens(std::string_view rest) {
    std::vector<std::uint32_t> numbers;
    for (const std::string& word : words(rest))
        numbers.push_back(screenNumber(word));
    return [numbers](Desk& desk) { desk.windows.setScreens(numbers); };
}

std::optional<StoreValue> storeValue(std::string_view type, std::string_view value) {
    if (type == "int")
        return wholeNumber<std::int64_t>(value);
    if (type == "bool")
        return parseBoolean(value);
    if (type == "real")
        return parseDecimal(value);
    if (type == "text")
        return std::string(value);
    return type == "list" ? textsFromJson(value) : std::nullopt;
}

Run store(std::string_view rest) {
    const std::string key = takeWord(rest);
    const std::string type = takeWord(rest);
    if (key.empty() || type.empty())
        throw Problem("store needs a key, a type and a value");
    if (type == "absent") {
        expectNothing(rest);
        return [key](Desk& desk) { desk.store.remove(key); };
    }
    const auto value = storeValue(type, rest);
    if (!value)
        throw Problem(in(rest) + " is no value of type " + in(type));
    return [key, value](Desk& desk) { desk.store.put(key, *value); };
}

Run launch(std::string_view rest) {
    expectNothing(rest);
    return [](Desk& desk) {
        if (desk.launched())
            throw Problem("the program has been launched already");
        desk.launch();
    };
}

Run pref(std::string_view rest) {
    const std::string name = takeWord(rest);
    return onceLaunched(assignment(name, rest));
}

Run menu(std::string_view rest) {
    const std::string line(rest);
    if (!RecordingStatusBar::knows(line))
        throw Problem("there is no menu line " + in(line));
    return pressing("menu " + line, [line](Desk& desk) { return desk.statusBar.click(line); });
}

Run skip(std::string_view rest) {
    return pressing("skip", [screen = screenNumber(rest)](Desk& desk) { return desk.windows.skip(screen); });
}

Run notice(std::string_view rest) {
    return pressing("notice",
                    [screen = screenNumber(rest)](Desk& desk) { return desk.windows.notice(screen); });
}

Run waterAmount(std::string_view rest) {
    const auto millilitres = wholeNumber<std::int64_t>(rest);
    if (!millilitres)
        throw Problem(in(rest) + " is no amount");
    return pressing("water amount",
                    [amount = *millilitres](Desk& desk) { return desk.windows.waterAmount(amount); });
}

Run water(std::string_view rest) {
    const std::string what = takeWord(rest);
    if (what == "amount")
        return waterAmount(rest);
    expectNothing(rest);
    if (what != "done" && what != "skip")
        throw Problem("the water panel has no " + in(what));
    const auto press = what == "done" ? &WaterPanelClient::donePressed : &WaterPanelClient::skipPressed;
    return pressing("water " + what, [press](Desk& desk) { return desk.windows.answerWater(press); });
}

Run point(std::string_view rest) {
    const std::string what = takeWord(rest);
    const auto time = parseTimeOfDay(rest);
    if ((what != "add" && what != "remove") || !time)
        throw Problem("point needs add or remove and a time like 13:30");
    return onceLaunched([adds = what == "add", time](const Desk& desk) {
        if (adds)
            PerfWaterTimePointView::addTimePoint(AppState::waterState(), desk.todayAt(*time));
        else
            PerfWaterTimePointView::removeTimePoint(AppState::waterState(), minutesOf(*time));
    });
}

/// What a person does to a control of the Style pane.
Run styling(const char* control, PreferencesAct act, const PreferencesValue& value) {
    return onceLaunched(
        [control, act, value](const Desk& desk) { desk.preferences().did(control, act, value); });
}

PreferencesEdit styleEdit(std::string_view rest) {
    // An empty new text leaves nothing behind the arrow once the line is trimmed.
    const std::string line = std::string(rest) + (rest.ends_with(" =>") ? " " : "");
    const auto arrow = line.find(" => ");
    if (arrow == std::string::npos)
        throw Problem("style edit needs OLD => NEW");
    return {line.substr(0, arrow), line.substr(arrow + 4)};
}

std::int64_t styleList(std::string_view rest) {
    if (rest != "break" && rest != "newday")
        throw Problem("there is no prompt list " + in(rest));
    return static_cast<std::int64_t>(rest == "break" ? PromptListKind::Break : PromptListKind::NewDay);
}

Run style(std::string_view rest) {
    constexpr const char* prompts = PrefStyleView::promptsId;
    const std::string what = takeWord(rest);
    if (what == "add")
        return styling(prompts, PreferencesAct::Added, std::string(rest));
    if (what == "edit")
        return styling(prompts, PreferencesAct::Edited, styleEdit(rest));
    if (what == "delete")
        return styling(prompts, PreferencesAct::Removed, std::string(rest));
    if (what == "reset")
        return styling(prompts, PreferencesAct::Reset, std::string(rest));
    if (what == "list")
        return styling(PrefStyleView::listId, PreferencesAct::Entered, styleList(rest));
    throw Problem("the Style pane has no " + in(what));
}

Run disk(std::string_view rest) {
    if (rest != "full" && rest != "room")
        throw Problem("the disk is full or has room");
    return [full = rest == "full"](Desk& desk) { desk.history.diskFull = full; };
}

/// The platform ends the program, as at the end of a session.
Run end(std::string_view rest) {
    expectNothing(rest);
    return onceLaunched([](Desk& desk) {
        desk.end();
        desk.time.stop();
    });
}

Run clockStep(std::string_view rest) {
    return [step = seconds(rest)](Desk& desk) { desk.clock.step(step); };
}

std::set<BusyReason> busyReasons(std::string_view names) {
    std::set<BusyReason> all;
    for (const std::string& word : words(names)) {
        const auto found = caseOf<BusyReason>(busyReasonNames, word);
        if (!found)
            throw Problem("nobody is busy by " + in(word));
        all.insert(*found);
    }
    return all;
}

Run busy(std::string_view rest) {
    std::string_view line = rest;
    if (takeWord(line) != "answers")
        return [holds = busyReasons(rest == "none" ? "" : rest)](Desk& desk) {
            desk.services.busyness.holds = holds;
        };
    const auto after = line == "never" ? std::nullopt : std::optional(seconds(line));
    return [after](Desk& desk) { desk.services.busyness.seconds = after; };
}

Run notification(std::string_view rest) {
    const std::string action(rest);
    return pressing("notification " + action,
                    [action](Desk& desk) { return desk.services.notifications.press(action); });
}

/// What the command line asks of the running program.
RemoteControl::Refusal obey(RemoteControl& remote, std::string_view word, std::string_view more) {
    if (word == "break")
        return remote.startBreak();
    if (word == "postpone")
        return remote.postpone(std::string(more));
    if (word == "resume")
        return remote.resume();
    if (more.empty())
        return remote.pause();
    std::string_view time = more;
    return takeWord(time) == "until" ? remote.pauseUntil(std::string(time))
                                     : remote.pauseFor(std::string(more));
}

Run kelpa(std::string_view rest) {
    const std::string command(rest);
    const std::string word = takeWord(rest);
    const bool takesMore = word == "postpone" || word == "pause";
    if (word != "break" && word != "resume" && !takesMore)
        throw Problem("kelpa has no command " + in(word) + " here");
    if (!takesMore)
        expectNothing(rest);
    return onceLaunched([command, word, more = std::string(rest)](Desk& desk) {
        if (const auto refusal = obey(desk.remote, word, more))
            desk.journal.note("refused", "kelpa " + command + ": " + std::string(*refusal));
    });
}

/// Something that happens at the desk and needs no further word.
std::function<Run(std::string_view)> event(std::function<void()> ScriptedEvents::*happens) {
    return [happens](std::string_view rest) {
        expectNothing(rest);
        return [happens](Desk& desk) { (desk.events.*happens)(); };
    };
}

const std::map<std::string, std::function<Run(std::string_view)>, std::less<>>& readers() {
    static const std::map<std::string, std::function<Run(std::string_view)>, std::less<>> all = {
        {"zone", zone},
        {"screens", screens},
        {"store", store},
        {"launch", launch},
        {"pref", pref},
        {"menu", menu},
        {"skip", skip},
        {"notice", notice},
        {"style", style},
        {"water", water},
        {"point", point},
        {"busy", busy},
        {"kelpa", kelpa},
        {"notification", notification},
        {"clock", clockStep},
        // While the machine sleeps the wall clock moves, and monotonic time stands still.
        {"suspend", clockStep},
        {"disk", disk},
        {"end", end},
        {"start", start},
        {"lock", event(&ScriptedEvents::lock)},
        {"unlock", event(&ScriptedEvents::unlock)},
        {"activity", event(&ScriptedEvents::activity)},
    };
    return all;
}

} // namespace

Run readVerb(std::string_view line, bool first) {
    if (line.front() == '+')
        return pass(line.substr(1));
    const std::string name = takeWord(line);
    const auto found = readers().find(name);
    if (found == readers().end())
        throw Problem("there is no command " + in(name));
    if (name == "start" && !first)
        throw Problem("start must be the first command");
    return found->second(line);
}

} // namespace kelpa::desk
