#include "base/Text.h"
#include "desk/Script.h"

#include <benchmark/benchmark.h>

#include <sstream>

namespace kelpa {
namespace {

class Silent final : public desk::Journal {
  public:
    using Journal::Journal;

  protected:
    void line(const std::string& /*text*/) override {}
};

void timeText(benchmark::State& state) {
    std::int64_t seconds = 0;
    for (auto each : state)
        benchmark::DoNotOptimize(timeString(++seconds % 7200));
}
BENCHMARK(timeText);

/// One second of a work period: timer, countdown, status item, preference.
void tick(benchmark::State& state) {
    desk::VirtualTime time;
    Silent journal(time);
    for (const char* kind : {"title", "count", "log"})
        journal.quiet(kind);
    desk::Desk desk(time, journal, 1);
    std::istringstream script(
        "store stop_timer_after_mouse_stop bool false\nstore pref.work.time int 1000000000\nlaunch\n");
    desk::play(desk, desk::readScript(script));
    for (auto each : state)
        desk.pass(1'000'000);
}
BENCHMARK(tick);

} // namespace
} // namespace kelpa
