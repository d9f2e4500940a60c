#include "platform/linux/services/Portal.h"

#include "platform/linux/Descriptors.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusMessage.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* object = "/org/freedesktop/portal/desktop";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";

/// The mail program gets the open file, because it cannot see into the sandbox. A log that cannot be opened
/// is left out.
void attach(BusWriter& out, const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file)
        out.option("attachment_fds", "ah", 1, file.get());
}

/// Where the portal will tell how a request of `sender` ended.
std::string requestPath(std::string sender, const std::string& token) {
    sender.erase(0, 1); // its leading colon
    std::replace(sender.begin(), sender.end(), '.', '_');
    return std::string(object) + "/request/" + sender + "/" + token;
}

} // namespace

bool inSandbox() {
    return access("/.flatpak-info", F_OK) == 0;
}

struct Portal::Request {
    Portal& portal;
    Refused refused;
    BusSlot answer;
    BusSlot response;

    void answered(sd_bus_message* message) { portal.answered(*this, message); }
    void responded(sd_bus_message* message) { portal.responded(*this, message); }
};

/// What was asked is not answered any more.
void Portal::busLost() {
    while (!requests_.empty())
        finish(*requests_.front(), "the session bus is gone");
}

void Portal::requestBackground(bool autostart, const std::string& program, Refused refused) {
    call(
        "org.freedesktop.portal.Background", "RequestBackground",
        [&](BusWriter& out) {
            out.option("autostart", "b", static_cast<int>(autostart));
            out.option("commandline", "as", 1, program.c_str());
        },
        std::move(refused));
}

void Portal::composeEmail(const Mail& mail, Refused refused) {
    call(
        "org.freedesktop.portal.Email", "ComposeEmail",
        [&](BusWriter& out) {
            out.option("address", "s", mail.recipient.c_str());
            out.option("subject", "s", mail.subject.c_str());
            out.option("body", "s", mail.body.c_str());
            if (!mail.attachment.empty())
                attach(out, mail.attachment);
        },
        std::move(refused));
}

void Portal::call(const char* interface, const char* member, const Options& options, Refused refused) {
    const auto request = std::make_shared<Request>(Request{*this, std::move(refused), {}, {}});
    requests_.push_back(request);
    const std::string token = "kelpa" + std::to_string(++calls_);
    awaitResponse(*request, token);
    const BusMessage message = bus_.newCall({service, object, interface}, member);
    if (message) {
        sd_bus_message_set_auto_start(message.get(), 1);
        BusWriter out(message.get());
        out.text("").open('a', "{sv}");
        out.option("handle_token", "s", token.c_str());
        options(out);
        if (out.close().result() >= 0)
            request->answer = bus_.call<&Request::answered>(message, *request.get());
    }
    if (!request->answer)
        finish(*request, "the session bus takes no request");
}

/// Listens before it calls, because the response may come right behind the answer.
void Portal::awaitResponse(Request& request, const std::string& token) {
    if (!bus_.open())
        return;
    const std::string path = requestPath(bus_.name(), token);
    request.response = bus_.match<&Request::responded>(
        signalRule({service, path.c_str(), requestInterface}, "Response"), request);
}

void Portal::answered(Request& request, sd_bus_message* message) {
    if (const auto* error = sd_bus_message_get_error(message))
        finish(request, error->message != nullptr ? error->message : error->name);
}

void Portal::responded(Request& request, sd_bus_message* message) {
    std::uint32_t code = 2; // "ended in some other way", also for an answer that cannot be read
    sd_bus_message_read_basic(message, SD_BUS_TYPE_UINT32, &code);
    finish(request, code == 0 ? "" : "the desktop refused");
}

void Portal::finish(Request& request, const std::string& why) {
    const auto found = std::find_if(requests_.begin(), requests_.end(),
                                    [&request](const auto& one) { return one.get() == &request; });
    const auto held = *found; // its own callback may be running
    requests_.erase(found);
    if (!why.empty() && held->refused)
        held->refused(why);
}

} // namespace kelpa
