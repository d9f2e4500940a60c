#include "platform/linux/services/Launcher.h"

#include <csignal>
#include <spawn.h>
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

std::vector<std::string> mailCommand(const Mail& mail) {
    std::vector<std::string> arguments{"xdg-email", "--utf8", "--subject", mail.subject, "--body", mail.body};
    if (!mail.attachment.empty())
        arguments.insert(arguments.end(), {"--attach", mail.attachment});
    arguments.push_back(mail.recipient);
    return arguments;
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

void LinuxMail::compose(const Mail& mail) {
    if (Portal* portal = portal_())
        portal->composeEmail(mail, nullptr);
    else
        launcher_.run(mailCommand(mail));
}

} // namespace kelpa
