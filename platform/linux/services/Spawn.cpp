#include "platform/linux/services/Spawn.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <unistd.h>

namespace kelpa {

namespace {

/// A child process starts with the signals of a fresh program, whatever ours are set to.
class SpawnAttributes {
  public:
    SpawnAttributes() {
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

  private:
    posix_spawnattr_t attributes_{};
};

/// The standard streams of a child whose output is read.
class SpawnFiles {
  public:
    explicit SpawnFiles(int output) {
        posix_spawn_file_actions_init(&actions_);
        if (output < 0)
            return;
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~SpawnFiles() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnFiles(const SpawnFiles&) = delete;
    SpawnFiles& operator=(const SpawnFiles&) = delete;
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

/// Our environment, with or without the user's languages.
std::vector<char*> environmentFor(bool inEnglish) {
    static char english[] = "LC_ALL=C";
    std::vector<char*> all;
    for (char** each = environ; *each != nullptr; ++each)
        if (!inEnglish || !std::string_view(*each).starts_with("LC_ALL="))
            all.push_back(*each);
    if (inEnglish)
        all.push_back(english);
    all.push_back(nullptr);
    return all;
}

} // namespace

int spawn(std::vector<std::string>& command, int output) {
    std::vector<char*> pointers;
    for (auto& argument : command)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int pid = 0;
    const int error = posix_spawnp(&pid, pointers[0], SpawnFiles(output).get(), SpawnAttributes().get(),
                                   pointers.data(), environmentFor(output >= 0).data());
    return error == 0 ? pid : 0;
}

} // namespace kelpa
