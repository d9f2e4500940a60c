#include "platform/linux/services/LinuxMail.h"

#include "platform/linux/SpawnAttributes.h"

#include <string>
#include <unistd.h>
#include <vector>

namespace kelpa {

namespace {

std::vector<std::string> command(const Mail& mail) {
    std::vector<std::string> arguments{"xdg-email", "--utf8", "--subject", mail.subject, "--body", mail.body};
    if (!mail.attachment.empty())
        arguments.insert(arguments.end(), {"--attach", mail.attachment});
    arguments.push_back(mail.recipient);
    return arguments;
}

/// The process id, or 0 when the program cannot be started.
int spawn(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int pid = 0;
    const int error =
        posix_spawnp(&pid, pointers[0], nullptr, SpawnAttributes().get(), pointers.data(), environ);
    return error == 0 ? pid : 0;
}

} // namespace

void LinuxMail::compose(const Mail& mail) {
    if (Portal* portal = portal_())
        portal->composeEmail(mail, nullptr);
    else if (const int pid = spawn(command(mail)))
        watch(pid);
}

void LinuxMail::watch(int pid) {
    const auto place = running_.emplace(running_.end());
    *place = loop_.watchChild(pid, [this, place](int) {
        const Subscription held = std::move(*place); // the callback runs inside it
        running_.erase(place);
    });
}

} // namespace kelpa
