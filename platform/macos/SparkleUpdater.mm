#import "platform/macos/MacPorts.h"

#import <Sparkle/Sparkle.h>

namespace kelpa {

namespace {

/// Sparkle with its standard windows. It finds feed and key in the bundle's information.
class SparkleUpdater final : public Updater {
  public:
    void setAutomaticallyChecks(bool checks) override { [updater() setAutomaticallyChecksForUpdates:checks]; }
    void setCheckInterval(double seconds) override { [updater() setUpdateCheckInterval:seconds]; }
    void setSendsSystemProfile(bool sends) override { [updater() setSendsSystemProfile:sends]; }
    /// Sparkle's controller starts what it makes.
    void start() override {}
    void checkForUpdates() override { [updater() checkForUpdates]; }

  private:
    /// Made on first use, which is when the program sets it up, after the application has finished launching.
    SPUUpdater* updater() {
        if (!controller_)
            controller_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                        updaterDelegate:nil
                                                                     userDriverDelegate:nil];
        return [controller_ updater];
    }

    SPUStandardUpdaterController* controller_ = nil;
};

} // namespace

std::unique_ptr<Updater> makeMacUpdater() {
    return std::make_unique<SparkleUpdater>();
}

} // namespace kelpa
