#pragma once

#include "platform/linux/status/SessionBus.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace kelpa {

/// The clients on the bus that want to hear of changes: from when they say so until they take it back or
/// leave the bus, each once however often it asks.
class Watchers {
  public:
    /// `changed` is told when the first comes and when the last goes.
    Watchers(SessionBus& bus, std::function<void(bool any)> changed);
    ~Watchers();
    Watchers(const Watchers&) = delete;
    Watchers& operator=(const Watchers&) = delete;

    /// `client` is the name that the bus itself gave it.
    void add(const std::string& client);
    void remove(const std::string& client);

  private:
    struct Watcher;
    void removeAll();

    SessionBus& bus_;
    std::function<void(bool)> changed_;
    std::map<std::string, std::unique_ptr<Watcher>> watchers_;
    Subscription lost_;
};

} // namespace kelpa
