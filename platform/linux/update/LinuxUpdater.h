#pragma once

#include "platform/linux/display/WindowReport.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/services/Launcher.h"
#include "platform/linux/update/UpdateDialog.h"
#include "platform/linux/update/UpdateSchedule.h"
#include "platform/linux/update/UpdateSetup.h"
#include "platform/ports/Services.h"

#include <string>

namespace kelpa {

/// What it works with; all of it outlives the updater.
struct UpdateParts {
    EventLoop& loop;
    const Clock& clock;
    DefaultsStore& store;
    UpdateWindow& window;
    WindowReport& report;
};

/// Looks for new versions through `kelpa-update`, a process that runs only while something is fetched or a
/// person has yet to answer.
class LinuxUpdater final : public Updater, private UpdateWork, private HelperClient {
  public:
    /// The release that this user wants to hear of no more.
    static constexpr std::string_view skippedKey = "update.skippedVersion";

    LinuxUpdater(const UpdateParts& parts, UpdateSetup setup);
    ~LinuxUpdater() override;
    LinuxUpdater(const LinuxUpdater&) = delete;
    LinuxUpdater& operator=(const LinuxUpdater&) = delete;

    void setAutomaticallyChecks(bool checks) override { automatic_ = checks; }
    void setCheckInterval(double seconds) override { interval_ = seconds; }
    void setSendsSystemProfile(bool sends) override { profile_ = sends; }
    void start() override;
    void checkForUpdates() override { dialog_.asked(); }

  private:
    void check() override;
    void download() override;
    void stop() override { helper_.end(); }
    void openPackage(const std::string& path) override;
    void setSkipped(const std::string& version) override;
    [[nodiscard]] bool isSkipped(const std::string& version) const override;

    void helperSaid(const wire::Message& message) override;
    void helperFailed(const std::string& how) override;
    void configure();
    void sendProfile();
    void failed(const wire::Message& message);

    UpdateParts parts_;
    UpdateSetup setup_;
    UpdateDialog dialog_;
    UpdateSchedule schedule_;
    HelperProcess helper_;
    Launcher launcher_;
    bool automatic_ = false;
    double interval_ = 0;
    bool profile_ = false;
};

} // namespace kelpa
