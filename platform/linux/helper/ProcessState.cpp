#include "platform/linux/helper/ProcessState.h"

#include <fstream>
#include <string>
#include <thread>

namespace kelpa {

namespace {

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

} // namespace kelpa
