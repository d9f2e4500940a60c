// Plays a year of the default cycle in virtual time and prints what it took.

#include "desk/Script.h"

#include <chrono>
#include <cstdio>
#include <sstream>

namespace {

class CountingJournal final : public kelpa::desk::Journal {
  public:
    using Journal::Journal;
    long lines = 0;

  protected:
    void line(const std::string& /*text*/) override { ++lines; }
};

} // namespace

int main() {
    constexpr double year = 365 * 86400;
    kelpa::desk::VirtualTime time;
    CountingJournal journal(time);
    journal.quiet("title");
    journal.quiet("count");
    kelpa::desk::Desk desk(time, journal, 1);
    std::istringstream script("store stop_timer_after_mouse_stop bool false\nlaunch\n+31536000\n");
    const auto began = std::chrono::steady_clock::now();
    kelpa::desk::play(desk, kelpa::desk::readScript(script));
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    std::printf("a year of %.0f ticks in %.2f s: %.0f ns a tick, %ld journal lines\n", year, took.count(),
                took.count() / year * 1e9, journal.lines);
    return 0;
}
