#pragma once

#include "app/AppDelegate.h"
#include "logging/SharedLogger.h"
#include "platform/ports/Ports.h"

namespace kelpa {

/// The composition root: the only place that knows every part. There is one in a process.
class Application final : private LogClient {
  public:
    /// Wires the parts to the ports and to each other; starts nothing. Ports and log files must outlive it.
    Application(Ports& ports, LogFiles& logFiles);
    ~Application() override = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Runs the start-up sequence; from then on the main loop drives the program.
    void launch();
    void willTerminate();
    [[nodiscard]] bool supportsSecureRestorableState() const;

  private:
    [[nodiscard]] const Clock& clock() const override { return ports_.clock; }
    [[nodiscard]] std::string identifier() const override;
    [[nodiscard]] std::string displayName() const override;
    [[nodiscard]] std::optional<std::string> homeDirectory() const override;
    [[nodiscard]] LogFiles& logFiles() const override { return logFiles_; }

    Ports& ports_;
    LogFiles& logFiles_;
    AppDelegate delegate_;
};

} // namespace kelpa
