#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/ports/Services.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

class BusWriter;

/// Whether the program runs in a sandbox, from which the desktop is reached through its portals alone.
[[nodiscard]] bool inSandbox();

/// What a sandboxed program may ask of the desktop. Nothing here waits: a refusal comes from the main loop,
/// or at once where there is no bus to ask on.
class Portal final : private BusClient {
  public:
    /// The bus outlives the portal.
    explicit Portal(Bus& bus) : bus_(bus), joined_(bus.join(*this)) {}

    using Refused = std::function<void(const std::string& why)>;

    /// Asks to have `program` started at log-in, or not to be any more.
    void requestBackground(bool autostart, const std::string& program, Refused refused);
    /// Opens a new message in the user's mail program.
    void composeEmail(const Mail& mail, Refused refused);

  private:
    void busOpened() override {}
    void busLost() override;
    struct Request;
    using Options = std::function<void(BusWriter&)>;

    void call(const char* interface, const char* member, const Options& options, Refused refused);
    void awaitResponse(Request& request, const std::string& token);
    void answered(Request& request, sd_bus_message* message);
    void responded(Request& request, sd_bus_message* message);
    void finish(Request& request, const std::string& why);

    Bus& bus_;
    int calls_ = 0;
    std::vector<std::shared_ptr<Request>> requests_;
    Subscription joined_;
};

} // namespace kelpa
