#include "platform/linux/services/LinuxMail.h"

#include <string>
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

} // namespace

void LinuxMail::compose(const Mail& mail) {
    if (Portal* portal = portal_())
        portal->composeEmail(mail, nullptr);
    else
        launcher_.run(command(mail));
}

} // namespace kelpa
