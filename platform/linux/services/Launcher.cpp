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

/// How a child process starts: with the signals of a fresh program, whatever ours are set to. One whose
/// output is read has nothing to read itself, and nobody to complain to.
struct SpawnSettings {
    explicit SpawnSettings(int output) {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &all);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawn_file_actions_init(&files);
        if (output < 0)
            return;
        posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&files);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t files{};
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
    const SpawnSettings settings(output);
    int pid = 0;
    const int error = posix_spawnp(&pid, pointers[0], &settings.files, &settings.attributes, pointers.data(),
                                   environmentFor(output >= 0).data());
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
