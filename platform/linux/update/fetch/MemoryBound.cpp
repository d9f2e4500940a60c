#include "platform/linux/update/fetch/MemoryBound.h"

#include "platform/linux/helper/Message.h"
#include "platform/linux/helper/UpdateProtocol.h"

#include <exception>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr rlim_t mostMore = 128 * 1024 * 1024;

int connection = -1;
/// Written when there is no memory left to write it with.
std::string lastWords;

[[noreturn]] void sayAndEnd() {
    ::send(connection, lastWords.data(), lastWords.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    ::_exit(EXIT_FAILURE);
}

/// Bytes of the process's own writable memory, however little of it is in use.
rlim_t ownMemory() {
    std::ifstream file("/proc/self/statm");
    rlim_t pages = 0;
    for (int field = 0; field < 6; ++field)
        file >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

void boundMemory(int channel) {
    connection = channel;
    wire::encode({wire::update::failed, wire::update::tooLarge, "it takes too much memory"}, lastWords);
    std::set_terminate(sayAndEnd);
    const rlim_t most = ownMemory() + mostMore;
    const rlimit bound{most, most};
    setrlimit(RLIMIT_DATA, &bound);
}

} // namespace kelpa
