#pragma once

#include "platform/linux/Descriptors.h"
#include "platform/linux/EventLoop.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/un.h>
#include <utility>

namespace kelpa {

/// What another start has the running program show.
enum class StartWish { Preferences, History };

/// What the holder of the lock is asked by other starts, from the main loop.
class InstanceClient {
  public:
    virtual ~InstanceClient() = default;
    virtual void show(StartWish what) = 0;
    /// Another start has given this one up and takes its place.
    virtual void replaced() = 0;
    /// A second Kelpa could start now; `why` says it for the log.
    virtual void doubted(const std::string& why) = 0;
};

/// A lock on one display of the user that dies with its process, and a socket beside it by which another
/// start asks the holder. It needs no bus.
class InstanceLock {
  public:
    enum class State { Free, Held, HeldByAnother, Unavailable };

    /// The lock `name` in `folder`, which only the user can write to.
    InstanceLock(const std::string& folder, std::string name);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// Takes the lock unless another process has it.
    State take();
    /// Has the holder show that. False when it did not answer within `seconds`; then, or before, the lock may
    /// have become free, and `state` tells. Gives up when the loop is told to end.
    bool askHolder(EventLoop& loop, StartWish wish, double seconds);
    /// Takes the lock from a holder that does not answer. False when meanwhile another process took it.
    bool takeOver();
    [[nodiscard]] State state() const { return state_; }

    /// Answers other starts from now on. Loop and client outlive the lock.
    void serve(EventLoop& loop, InstanceClient& client);

  private:
    void listen();
    void readRequest(InstanceClient& client);
    [[nodiscard]] bool ourFile(int fd) const;
    [[nodiscard]] sockaddr_un socketAddress() const;
    bool send(int from, std::string_view request) const;

    std::string name_;
    Descriptor folder_;
    Descriptor lock_;
    Descriptor socket_;
    std::optional<ino_t> held_; ///< the file that another process holds
    State state_ = State::Free;
    Subscription requests_;
};

/// The folder for the lock: the session's runtime folder, else one of the user's own below /tmp; nothing
/// where neither can be had.
[[nodiscard]] std::optional<std::string> lockFolder();
/// The lock's name: the program's, and the display's of the environment, so that each desktop of a user has
/// one.
[[nodiscard]] std::string lockName();

} // namespace kelpa
