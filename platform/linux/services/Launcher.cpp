#include "platform/linux/services/Launcher.h"

#include "platform/linux/services/Spawn.h"

#include <sys/wait.h>
#include <utility>

namespace kelpa {

namespace {

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
