#pragma once

#include "platform/ports/System.h"

namespace kelpa {

/// What happens when the platform has started the program and when it ends it.
class AppDelegate {
  public:
    /// `system` must outlive the delegate.
    explicit AppDelegate(const SystemInfo& system) : system_(system) {}

    void applicationDidFinishLaunching();
    /// Nothing is saved at the end: each setting is stored when it changes, and the cycle is not kept.
    void applicationWillTerminate() {}
    [[nodiscard]] bool applicationSupportsSecureRestorableState() const { return true; }

  private:
    const SystemInfo& system_;
};

} // namespace kelpa
