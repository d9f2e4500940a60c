#include "history/HistoryEntry.h"
#include "history/HistorySums.h"
#include "platform/posix/HistoryFolder.h"
#include "tests/support/Files.h"

#include <benchmark/benchmark.h>

namespace kelpa {
namespace {

/// A busy year: sixteen hours a day without a day off, with a drink an hour.
void writeYear(const std::string& path, HistoryDate first) {
    std::filesystem::create_directories(path);
    for (int day = 0; day < 365; ++day) {
        const std::string date = dateText(first + std::chrono::days(day));
        std::string lines;
        for (int hour = 6; hour < 22; ++hour) {
            const std::string at = date + (hour < 10 ? ",0" : ",") + std::to_string(hour);
            lines += at + ":00:00,work,,,1500,,,,,break\n" + at +
                     ":25:00,break,short,300,300,0,due,,,complete\n" + at + ":30:00,work,,,1500,,,,,break\n" +
                     at + ":55:00,break,long,900,300,2,due,,,skipped\n" + at +
                     ":59:00,drink,,,,,,250,1500,drunk\n";
        }
        std::ofstream(path + "/" + date.substr(0, 7) + ".csv", std::ios::app) << lines;
    }
}

/// Reading a year from the disk and summing it by day.
void year(benchmark::State& state) {
    const test::TempFolder temp;
    const HistoryDate first = std::chrono::year(2026) / 1 / 1;
    writeYear(temp.file("history"), first);
    HistoryFolder folder(temp.file("history"));
    std::int64_t seconds = 0;
    for (auto each : state) {
        const auto sums = sumsOf(folder, first, first + std::chrono::days(364));
        seconds += sums.days.back().workSeconds;
    }
    if (seconds == 0)
        state.SkipWithError("the year is empty");
}
BENCHMARK(year)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kelpa
