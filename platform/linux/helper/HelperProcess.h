#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/helper/Message.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa {

/// Path of one of the program's own helper programs: beside the program in a build tree, in
/// the folder for helpers where it is installed, usually `../libexec/kelpa`.
[[nodiscard]] std::string helperPath(const std::string& name);

/// Told of a helper program, always from the main loop.
class HelperClient {
  public:
    virtual ~HelperClient() = default;
    virtual void helperSaid(const wire::Message& message) = 0;
    /// It ended without having been asked to; `how` says it in words for the log.
    virtual void helperFailed(const std::string& how) = 0;
};

/// One helper program and the connection to it, which the helper has as descriptor 3. Nothing here ever waits
/// for the helper: one that does not read what it is sent, or does not end when it should, is killed, and
/// none outlives this program.
class HelperProcess {
  public:
    /// `client` outlives the process object.
    HelperProcess(EventLoop& loop, std::string path, HelperClient& client);
    /// Takes half a second at most.
    ~HelperProcess();
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    /// Starts the helper unless it runs. Gives the reason when it cannot be started, else an empty text.
    std::string start();
    [[nodiscard]] bool running() const { return child_ != nullptr; }
    /// Process id of the helper; 0 when none runs.
    [[nodiscard]] int pid() const;
    /// Does nothing when no helper runs. Needs no memory for messages of a size that was sent before.
    void send(std::initializer_list<std::string_view> fields);
    /// Hands over what the helper said already, also when the loop has not come to it yet.
    void takeIn();
    /// Closes the connection, on which the helper ends by itself.
    void end();
    /// Ends a helper that hangs, without a word to the client.
    void kill();

  private:
    struct Child;
    void watch(const std::shared_ptr<Child>& child);
    void readable(Child& child);
    void retryLater(Child& child);
    void disconnect(Child& child);
    void ended(Child& child, int status);

    EventLoop& loop_;
    std::string path_;
    HelperClient& client_;
    std::shared_ptr<Child> child_;
    std::vector<std::shared_ptr<Child>> leaving_;
};

} // namespace kelpa
