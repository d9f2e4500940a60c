#include "tests/linux-view/SamplePreferences.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kelpa::test {

namespace {

using Kind = PreferencesControlKind;

const std::vector<std::string> builtIn{
    "给你的眼睛一个小小的暂停，它们会感激你的关心。",
    "放松眼睛，让它们重新获得清晰和舒适。",
    "Stand up, stretch both arms towards the ceiling,\\nand let the shoulders sink again slowly.",
    "长时间坐着，腰部容易变得僵硬，适时起身走动一下吧。",
    "Look at something that is at least twenty steps away and count to thirty while you breathe in and out "
    "as "
    "slowly as you comfortably can.",
    "保持正确的坐姿，用椅子的靠背支撑腰部，避免过度疲劳。",
    "Drink a glass of water.",
    "活动脖子，缓解长时间坐姿带来的不适。",
    "Open a window.",
};

PreferencesPane general() {
    return {"General",
            "gearshape.circle",
            {{"",
              {{"Start options", {"launch", Kind::Switch, "Launch at login", ""}},
               {"StatusBar options", {"time", Kind::Switch, "Show time in StatusBar", ""}},
               {"Update options", {"update", Kind::Switch, "Auto check update for Kelpa", ""}}}}},
            {}};
}

PreferencesPane workflow() {
    return {"Workflow",
            "tray.circle",
            {{"Short Break Options",
              {{"Every", {"work", Kind::Number, "Every", "mins"}},
               {"Break", {"break", Kind::Number, "Break", "seconds"}},
               {"", {"custom", Kind::Switch, "Custom break prompt", ""}},
               {"Text", {"text", Kind::Text, "Text", ""}}}},
             {"Long Break Options",
              {{"Every", {"times", Kind::Number, "Every", "short breaks"}},
               {"Break", {"long", Kind::Number, "Break", "mins"}},
               {"", {"force", Kind::Switch, "Force for long breaks(skip button will not display)", ""}}}},
             {"Other Options",
              {{"", {"awake", Kind::Switch, "Restart timer after Mac awake", ""}},
               {"", {"mouse", Kind::Switch, "Stop timer after Mouse stop for 5 mins", ""}},
               {"", {"newday", Kind::Switch, "Show a new day prompt", ""}}}}},
            {}};
}

PreferencesPane style() {
    return {"Style",
            "books.vertical.circle",
            {{"Break Style", {{"Break Style", {"style", Kind::Picker, "Break Style", ""}}}},
             {"Break Prompts",
              {{"", {"list", Kind::Segments, "Break Prompts", ""}},
               {"", {"prompts", Kind::Prompts, "Break Prompts", ""}}}}},
            {}};
}

PreferencesPane water() {
    return {"Water",
            "drop.circle",
            {{"Options",
              {{"Enable", {"water", Kind::Switch, "Enable drink water reminder", ""}},
               {"Target", {"target", Kind::Accumulator, "Target", "ml"}},
               {"Mode", {"mode", Kind::Picker, "Mode", ""}}}},
             {"Schedule",
              {{"Start time", {"start", Kind::TimeOfDay, "Start time", ""}},
               {"End time", {"end", Kind::TimeOfDay, "End time", ""}},
               {"Interval", {"interval", Kind::Tiles, "Interval", ""}},
               {"Time points", {"points", Kind::TimePoints, "Time points", ""}}}}},
            {}};
}

PreferencesPane about() {
    return {"About",
            "info.circle",
            {},
            AboutContent{"app.orvane.Kelpa", "\uE64B", "iconfont", "Kelpa", "v0.1.0(1)",
                         "Copyright © 2026 The Kelpa Authors.", "Release Notes",
                         "https://kelpa.example/notes"}};
}

PreferencesLayout layout() {
    return {"Settings",
            480,
            400,
            {general(), workflow(), style(), water(), about()},
            {{"plus", "Add"},
             {"square.and.pencil", "Edit"},
             "Cancel",
             {"trash.fill", "Delete"},
             {"gobackward", "Reset"}},
            {"plus", "Add a time"},
            "xmark.circle.fill",
            {"minus", "Less"},
            {"plus", "More"}};
}

} // namespace

SamplePreferences::SamplePreferences(PreferencesWindow& window, std::function<void(const std::string&)> say)
    : window_(window), say_(std::move(say)), numbers_{{"work", 25},
                                                      {"break", 300},
                                                      {"times", 4},
                                                      {"long", 15},
                                                      {"target", 1500}},
      prompts_(builtIn) {
    window_.setLayout(layout(), *this);
    window_.setChoices("style", {{0, "Default"}, {1, "Relaxation"}, {2, "Struggle"}});
    window_.setChoices("list", {{0, "Break"}, {1, "New Day"}});
    window_.setChoices("mode", {{0, "Interval"}, {1, "Timing"}});
    window_.setChoices(
        "interval",
        {{15, "15 min"}, {30, "30 min"}, {45, "45 min"}, {60, "60 min"}, {90, "90 min"}, {120, "120 min"}});
    for (const char* id : {"style", "list", "mode"})
        window_.setChosen(id, 0);
    window_.setChosen("interval", 30);
    window_.setSwitch("time", true);
    window_.setSwitch("custom", true);
    window_.setText("text", "堂堂七尺少年郎, 躺上一躺又何妨");
    window_.setHint("mode", "Reminds you some minutes after the last drink, within the working hours.");
    window_.setTimeOfDay("start", 9, 0);
    window_.setTimeOfDay("end", 18, 5);
    window_.setEnabled("force", false);
    showAll();
}

void SamplePreferences::showAll() {
    for (const auto& [id, number] : numbers_)
        window_.setText(id, std::to_string(number));
    showPoints();
    window_.setPrompts("prompts", prompts_);
}

void SamplePreferences::showPoints() {
    std::vector<TimePoint> points;
    for (const auto& [hour, minute] : points_) {
        char text[32];
        std::snprintf(text, sizeof text, "%02d:%02d", hour, minute);
        points.push_back({hour, minute, text, std::string("Remove ") + text});
    }
    window_.setTimePoints("points", points);
}

void SamplePreferences::set(const std::string& id, const std::string& value) {
    if (numbers_.contains(id))
        window_.setText(id, std::to_string(numbers_[id] = std::atoi(value.c_str())));
    else if (id == "visible")
        for (const char* row : {"start", "end", "interval"})
            window_.setVisible(row, value == "1");
    else
        window_.setSwitch(id, value == "1");
}

void SamplePreferences::cameToFront() {
    say_("front");
}

void SamplePreferences::closed() {
    say_("settings closed");
}

void SamplePreferences::switched(const std::string& id, bool on) {
    say_("switched " + id + (on ? " 1" : " 0"));
    // One that cannot be switched on shows it.
    window_.setSwitch(id, on && id != "update");
}

void SamplePreferences::typed(const std::string& id, const std::string& text) {
    say_("typed " + id + " " + text);
    window_.setProblem(id, numbers_.contains(id) && std::atoi(text.c_str()) < 1 ? "1 to 600" : "");
}

void SamplePreferences::entered(const std::string& id, const std::string& text) {
    say_("entered " + id + " " + text);
    window_.setProblem(id, "");
    if (!numbers_.contains(id))
        return window_.setText(id, text);
    if (const int number = std::atoi(text.c_str()); number > 0)
        numbers_[id] = number;
    window_.setText(id, std::to_string(numbers_[id]));
}

void SamplePreferences::stepped(const std::string& id, int direction) {
    say_("stepped " + id + " " + std::to_string(direction));
    numbers_[id] += direction * (id == "target" ? 50 : 1);
    window_.setText(id, std::to_string(numbers_[id]));
}

void SamplePreferences::chosen(const std::string& id, std::int64_t value) {
    say_("chosen " + id + " " + std::to_string(value));
    window_.setChosen(id, value);
}

void SamplePreferences::timeEntered(const std::string& id, int hour, int minute) {
    say_("time " + id + " " + std::to_string(hour) + ":" + std::to_string(minute));
    window_.setTimeOfDay(id, hour, minute);
}

void SamplePreferences::timePointAdded(const std::string& id, int hour, int minute) {
    say_("point added " + id + " " + std::to_string(hour) + ":" + std::to_string(minute));
    points_.emplace(hour, minute);
    showPoints();
}

void SamplePreferences::timePointRemoved(const std::string& id, int hour, int minute) {
    say_("point removed " + id + " " + std::to_string(hour) + ":" + std::to_string(minute));
    points_.erase({hour, minute});
    showPoints();
}

void SamplePreferences::promptAdded(const std::string& id, const std::string& text) {
    say_("added " + id + " " + text);
    prompts_.insert(prompts_.begin(), text);
    window_.setPrompts(id, prompts_);
}

void SamplePreferences::promptEdited(const std::string& id, const std::string& old, const std::string& text) {
    say_("edited " + id + " " + text);
    std::replace(prompts_.begin(), prompts_.end(), old, text);
    window_.setPrompts(id, prompts_);
}

void SamplePreferences::promptDeleted(const std::string& id, const std::string& text) {
    say_("deleted " + id + " " + text);
    std::erase(prompts_, text);
    window_.setPrompts(id, prompts_);
}

void SamplePreferences::promptsReset(const std::string& id) {
    say_("reset " + id);
    prompts_ = builtIn;
    window_.setPrompts(id, prompts_);
}

} // namespace kelpa::test
