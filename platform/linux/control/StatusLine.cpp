#include "platform/linux/control/StatusLine.h"

#include "platform/linux/control/ControlInterface.h"

#include <cstdio>

namespace kelpa {

namespace {

/// The properties, taken out of what came over the bus.
struct Reported {
    std::string state, time, breakKind;
    std::int64_t seconds = 0, finished = 0, target = 0;
    bool paused = false, waterEnabled = false;
};

template <class T>
bool take(const BusValues& values, const char* name, T& into) {
    const auto found = values.find(name);
    if (found == values.end() || !std::holds_alternative<T>(found->second))
        return false;
    into = std::get<T>(found->second);
    return true;
}

std::optional<Reported> reported(const BusValues& values) {
    Reported r;
    const bool whole =
        take(values, control::state, r.state) && take(values, control::time, r.time) &&
        take(values, control::breakKind, r.breakKind) && take(values, control::seconds, r.seconds) &&
        take(values, control::paused, r.paused) && take(values, control::waterEnabled, r.waterEnabled) &&
        take(values, control::waterFinished, r.finished) && take(values, control::waterTarget, r.target);
    return whole ? std::optional(r) : std::nullopt;
}

/// The text as JSON, whoever it may come from.
std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        char escaped[8] = {c, '\0'};
        if (c == '"' || c == '\\')
            std::snprintf(escaped, sizeof escaped, "\\%c", c);
        else if (static_cast<unsigned char>(c) < 0x20)
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
        out += escaped;
    }
    return out + "\"";
}

const char* truth(bool value) {
    return value ? "true" : "false";
}

} // namespace

std::optional<std::string> plainLine(const BusValues& values) {
    const auto r = reported(values);
    if (!r)
        return std::nullopt;
    std::string line = r->state + " " + r->time;
    if (r->breakKind != "none")
        line += " " + r->breakKind;
    if (r->waterEnabled)
        line += " water " + std::to_string(r->finished) + "/" + std::to_string(r->target);
    return line;
}

std::optional<std::string> jsonLine(const BusValues& values) {
    const auto r = reported(values);
    if (!r)
        return std::nullopt;
    return R"({"state": )" + quoted(r->state) + R"(, "time": )" + quoted(r->time) + R"(, "seconds": )" +
           std::to_string(r->seconds) + R"(, "break": )" + quoted(r->breakKind) + R"(, "paused": )" +
           truth(r->paused) + R"(, "water": {"enabled": )" + truth(r->waterEnabled) + R"(, "finished": )" +
           std::to_string(r->finished) + R"(, "target": )" + std::to_string(r->target) + "}}";
}

} // namespace kelpa
