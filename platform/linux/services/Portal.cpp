#include "platform/linux/services/Portal.h"

#include "platform/linux/status/BusWriter.h"
#include "platform/linux/store/FileAccess.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* object = "/org/freedesktop/portal/desktop";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";

void textOption(BusWriter& out, const char* name, const std::string& value) {
    out.open('e', "sv").text(name).open('v', "s").text(value).close().close();
}

void textsOption(BusWriter& out, const char* name, const std::vector<std::string>& values) {
    out.open('e', "sv").text(name).open('v', "as").open('a', "s");
    for (const auto& value : values)
        out.text(value);
    out.close().close().close();
}

/// The mail program gets the open file, because it cannot see into the sandbox. A log that cannot be opened
/// is left out.
void attachmentOption(BusWriter& out, const std::string& path) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.valid())
        out.open('e', "sv")
            .text("attachment_fds")
            .open('v', "ah")
            .open('a', "h")
            .file(file.get())
            .close()
            .close()
            .close();
}

/// Where the portal will tell how the request ended.
std::string requestPath(sd_bus* bus, const std::string& token) {
    const char* name = nullptr;
    sd_bus_get_unique_name(bus, &name);
    std::string sender = name != nullptr ? name + 1 : ""; // without its leading colon
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

    static int answered(sd_bus_message* message, void* self, sd_bus_error*) noexcept {
        auto& request = *static_cast<Request*>(self);
        request.portal.answered(request, message);
        return 0;
    }
    static int responded(sd_bus_message* message, void* self, sd_bus_error*) noexcept {
        auto& request = *static_cast<Request*>(self);
        request.portal.responded(request, message);
        return 0;
    }
};

void Portal::requestBackground(bool autostart, const std::vector<std::string>& command, Refused refused) {
    call(
        "org.freedesktop.portal.Background", "RequestBackground",
        [&](BusWriter& out) {
            out.open('e', "sv").text("autostart").open('v', "b").boolean(autostart).close().close();
            textsOption(out, "commandline", command);
        },
        std::move(refused));
}

void Portal::composeEmail(const Mail& mail, Refused refused) {
    call(
        "org.freedesktop.portal.Email", "ComposeEmail",
        [&](BusWriter& out) {
            textOption(out, "address", mail.recipient);
            textOption(out, "subject", mail.subject);
            textOption(out, "body", mail.body);
            if (!mail.attachment.empty())
                attachmentOption(out, mail.attachment);
        },
        std::move(refused));
}

void Portal::call(const char* interface, const char* member, const Options& options, Refused refused) {
    const auto request = std::make_shared<Request>(Request{*this, std::move(refused), {}, {}});
    requests_.push_back(request);
    const std::string token = "kelpa" + std::to_string(++calls_);
    awaitResponse(*request, token);
    sd_bus_message* message = nullptr;
    int result = sd_bus_message_new_method_call(bus_.handle(), &message, service, object, interface, member);
    if (result >= 0) {
        BusWriter out(message);
        out.text("").open('a', "{sv}");
        textOption(out, "handle_token", token);
        options(out);
        result = out.close().result();
    }
    sd_bus_slot* slot = nullptr;
    if (result >= 0)
        result = sd_bus_call_async(bus_.handle(), &slot, message, Request::answered, request.get(), 0);
    sd_bus_message_unref(message);
    request->answer.reset(slot);
    if (result < 0)
        finish(*request, std::strerror(-result));
}

/// Listens before it calls, because the response may come right behind the answer.
void Portal::awaitResponse(Request& request, const std::string& token) {
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal_async(bus_.handle(), &slot, service, requestPath(bus_.handle(), token).c_str(),
                              requestInterface, "Response", Request::responded, nullptr, &request);
    request.response.reset(slot);
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
