#include "platform/linux/services/Launcher.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

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

/// Gives the process id, or 0 where the program cannot be started.
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

std::vector<std::string> mailCommand(const Mail& mail) {
    std::vector<std::string> arguments{"xdg-email", "--utf8", "--subject", mail.subject, "--body", mail.body};
    if (!mail.attachment.empty())
        arguments.insert(arguments.end(), {"--attach", mail.attachment});
    arguments.push_back(mail.recipient);
    return arguments;
}

} // namespace

bool Launcher::run(std::vector<std::string> command, Ended ended) {
    return start(std::move(command), noOutput, std::move(ended)) != 0;
}

int Launcher::start(std::vector<std::string> command, int output, Ended ended) {
    const int pid = spawn(command, output);
    if (pid == 0)
        return 0;
    const auto place = running_.emplace(running_.end());
    *place = loop_.watchChild(pid, [this, place, told = std::move(ended)](int status) {
        running_.erase(place);
        if (told)
            told(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    });
    return pid;
}

void LinuxMail::compose(const Mail& mail) {
    if (Portal* portal = portal_())
        portal->composeEmail(mail, nullptr);
    else
        launcher_.run(mailCommand(mail));
}

} // namespace kelpa
