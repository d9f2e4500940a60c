#include "platform/linux/helper/AnswerWatch.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <thread>

namespace kelpa {

namespace {

constexpr int usualSteps = 4;
constexpr int startingSteps = 20;
constexpr int usualWeight = 5;
constexpr int busyWeight = 1;
constexpr int mostSlowness = 4;
/// After so many steps without a word the helper is asked whether it is still there.
constexpr int silentSteps = 10;

/// The letter after the program's name, which may hold anything but is the last thing in brackets.
char stateOf(int pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(file, line);
    const std::size_t name = line.rfind(") ");
    return name != std::string::npos && name + 2 < line.size() ? line[name + 2] : 'X';
}

/// How many threads of the whole machine want a processor at this moment.
unsigned wanting() {
    std::ifstream file("/proc/loadavg");
    double average = 0;
    unsigned count = 0;
    file >> average >> average >> average >> count;
    return file ? count : 0;
}

} // namespace

bool heldUpByWork(int pid) {
    const char state = stateOf(pid);
    if (state == 'R' || state == 'D')
        return true;
    // What it waits for may be held up.
    return state == 'S' && wanting() > 2 * std::thread::hardware_concurrency();
}

AnswerWatch::AnswerWatch(const EventLoop& loop, AnswerWatchClient& client, double step)
    : client_(client), alarm_(loop, [this] { ring(); }), step_(step) {}

void AnswerWatch::begin() {
    watching_ = starting_ = true;
    sent_ = taken_ = 0;
    rest();
}

void AnswerWatch::end() {
    watching_ = false;
    alarm_.stop();
}

void AnswerWatch::rest() {
    steps_ = weight_ = 0;
    alarm_.set(owed() ? step_ : silentSteps * step_);
}

void AnswerWatch::sent() {
    if (!watching_)
        return;
    const bool first = !owed();
    ++sent_;
    if (first)
        rest();
}

void AnswerWatch::taken(int count) {
    if (!watching_ || count <= taken_ || count > sent_)
        return;
    taken_ = count;
    starting_ = false;
    rest();
}

void AnswerWatch::ring() {
    if (!owed())
        return client_.ask();
    client_.readAnswers();
    // What was read may have ended all this.
    if (watching_ && owed())
        wait();
}

void AnswerWatch::wait() {
    ++steps_;
    weight_ += client_.helperBusy() ? busyWeight : usualWeight;
    if (weight_ < mostWeight())
        return alarm_.set(step_);
    const double seconds = steps_ * step_;
    slowness_ = std::min(2 * slowness_, mostSlowness);
    end();
    client_.helperHangs(seconds);
}

int AnswerWatch::mostWeight() const {
    return usualWeight * slowness_ * (starting_ ? startingSteps : usualSteps);
}

} // namespace kelpa
