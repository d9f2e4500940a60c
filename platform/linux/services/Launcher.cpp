#include "platform/linux/services/Launcher.h"

#include "platform/linux/SpawnAttributes.h"

#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kelpa {

namespace {

/// The process id, or 0 when the program cannot be started.
int spawn(std::vector<std::string>& command) {
    std::vector<char*> pointers;
    for (auto& argument : command)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int pid = 0;
    const int error =
        posix_spawnp(&pid, pointers[0], nullptr, SpawnAttributes().get(), pointers.data(), environ);
    return error == 0 ? pid : 0;
}

} // namespace

bool Launcher::run(std::vector<std::string> command, Ended ended) {
    const int pid = spawn(command);
    if (pid == 0)
        return false;
    const auto place = running_.emplace(running_.end());
    *place = loop_.watchChild(pid, [this, place, told = std::move(ended)](int status) {
        const Subscription held = std::move(*place); // the callback runs inside it
        running_.erase(place);
        if (told)
            told(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    });
    return true;
}

} // namespace kelpa
