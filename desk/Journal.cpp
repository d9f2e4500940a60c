#include "desk/Journal.h"

#include "base/Text.h"

#include <cstdio>

namespace kelpa::desk {

void Journal::note(std::string_view kind, std::string_view text) {
    if (!keeps(kind))
        return;
    const std::int64_t milliseconds = time_.microseconds() / 1000;
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%lld.%03d ", static_cast<long long>(milliseconds / 1000),
                  static_cast<int>(milliseconds % 1000));
    std::string whole = stamp;
    whole.append(kind);
    if (!text.empty())
        whole.append(" ").append(text);
    line(whole);
}

void PrintedJournal::line(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
}

std::string oneLine(std::string_view text) {
    return replacingAll(std::string(text), "\n", "\\n");
}

std::string inQuotes(std::string_view text) {
    std::string escaped = replacingAll(std::string(text), "\\", "\\\\");
    escaped = replacingAll(std::move(escaped), "\"", "\\\"");
    return "\"" + oneLine(escaped) + "\"";
}

} // namespace kelpa::desk
