#include "platform/linux/update/LinuxUpdater.h"

#include "base/Text.h"
#include "platform/linux/BuildConfig.h"
#include "platform/linux/Folders.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/helper/UpdateProtocol.h"
#include "platform/linux/services/Launcher.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelpa {

namespace update = wire::update;

namespace {

/// The queue's clock stands still while the machine sleeps, so the wall clock is asked again now and then.
constexpr double longestNap = 3600;

UpdateSupport supportOfThisCopy() {
    if (inSandbox())
        return UpdateSupport::Store;
    return *build::feedUrl == '\0' ? UpdateSupport::NoFeed : UpdateSupport::Feed;
}

std::int64_t bytesIn(const wire::Message& message, std::size_t field) {
    return wholeNumber<std::int64_t>(message.field(field)).value_or(0);
}

/// The reasons stand in the order of the cases.
UpdateFailure failureOf(const std::string& reason) {
    constexpr std::array<std::string_view, 11> reasons = {
        update::unreachable, update::insecure,    update::answer, update::slow,
        update::tooLarge,    update::malformed,   update::length, update::signature,
        update::older,       update::unversioned, update::disk};
    return caseOf<UpdateFailure>(reasons, reason).value_or(UpdateFailure::Helper);
}

} // namespace

UpdateSchedule::UpdateSchedule(const Clock& clock, Queue& queue, DefaultsStore& store,
                               std::function<void()> due)
    : clock_(clock), queue_(queue), store_(store), due_(std::move(due)) {}

UpdateSchedule::~UpdateSchedule() {
    if (item_)
        item_->cancel();
}

void UpdateSchedule::start(double interval) {
    interval_ = interval;
    arm(remaining());
}

void UpdateSchedule::noteCheck() {
    store_.set(lastCheckKey, clock_.now().secondsSince1970);
}

/// Nothing remains where no check is known, or one of a time that has not come: the clock was wrong then.
double UpdateSchedule::remaining() const {
    const double now = clock_.now().secondsSince1970;
    const double last = store_.get<double>(lastCheckKey).value_or(0);
    return last <= now ? last + interval_ - now : 0;
}

void UpdateSchedule::arm(double seconds) {
    item_ = std::make_shared<WorkItem>([this] { wake(); });
    queue_.asyncAfter(std::clamp(seconds, soonest, longestNap), item_);
}

void UpdateSchedule::wake() {
    if (remaining() <= 0)
        due_();
    // What could not be done now, because a person has yet to answer, is not tried again all the time.
    arm(remaining() <= 0 ? longestNap : remaining());
}

UpdateSetup UpdateSetup::ofThisCopy(const SystemInfo& system, const std::string& language) {
    const auto os = system.osVersion;
    UpdateSetup setup;
    setup.support = supportOfThisCopy();
    setup.feed = build::feedUrl;
    setup.key = build::updateKey;
    setup.package = build::updatePackage;
    setup.version = build::number;
    setup.name = build::version;
    setup.system = std::to_string(os.major) + "." + std::to_string(os.minor) + "." + std::to_string(os.patch);
    setup.processor = system.machine;
    setup.language = language;
    setup.folder = cacheHome().value_or("/nonexistent") + "/" + build::identifier + "/update";
    setup.helper = helperPath("kelpa-update");
    return setup;
}

namespace {

/// The release that this user wants to hear of no more.
constexpr std::string_view skippedKey = "update.skippedVersion";

class LinuxUpdater final : public Updater, private UpdateWork, private HelperClient {
  public:
    LinuxUpdater(const UpdateParts& parts, UpdateSetup setup)
        : parts_(parts), setup_(std::move(setup)), dialog_(setup_.support, setup_.name, parts.window, *this),
          schedule_(parts.clock, parts.loop, parts.store, [this] { dialog_.due(); }),
          helper_(parts.loop, setup_.helper, *this), launcher_(parts.loop) {}

    void setAutomaticallyChecks(bool checks) override { automatic_ = checks; }
    void setCheckInterval(double seconds) override { interval_ = seconds; }
    void setSendsSystemProfile(bool sends) override { profile_ = sends; }
    void checkForUpdates() override { dialog_.asked(); }
    void start() override {
        if (automatic_ && setup_.support == UpdateSupport::Feed)
            schedule_.start(interval_);
    }

  private:
    void stop() override { helper_.end(); }
    void startCheck() override {
        schedule_.noteCheck();
        helper_.end();
        if (const std::string refused = helper_.start(); !refused.empty())
            return helperFailed("cannot be started: " + refused);
        configure();
        if (profile_)
            sendProfile();
        helper_.send({update::check});
    }

    void configure() {
        helper_.send({update::source, setup_.feed, setup_.key, setup_.package});
        helper_.send({update::running, setup_.version, setup_.name, setup_.system});
        helper_.send({update::folder, setup_.folder});
        helper_.send(
            {update::patience, std::to_string(setup_.feedSeconds), std::to_string(setup_.stallSeconds)});
    }

    /// Nothing by which one user could be told from another.
    void sendProfile() {
        helper_.send({update::profile, "appVersion", setup_.version});
        helper_.send({update::profile, "osVersion", setup_.system});
        helper_.send({update::profile, "cputype", setup_.processor});
        helper_.send({update::profile, "lang", setup_.language});
    }

    void download() override { helper_.send({update::download}); }

    void helperSaid(const wire::Message& message) override {
        const std::string& verb = message.verb();
        if (verb == update::found)
            return dialog_.found({message.field(1), message.field(2), message.field(3), bytesIn(message, 4)});
        if (verb == update::progress)
            return dialog_.received(bytesIn(message, 1));
        helper_.end();
        if (verb == update::latest)
            dialog_.latest();
        else if (verb == update::outgrown)
            dialog_.outgrown();
        else if (verb == update::ready)
            dialog_.ready(message.field(1));
        else
            failed(message);
    }

    void failed(const wire::Message& message) {
        parts_.report.warning("No update: " + message.field(1) + ": " + message.field(2));
        dialog_.failed(failureOf(message.field(1)));
    }

    void helperFailed(const std::string& how) override {
        parts_.report.warning("kelpa-update " + how);
        dialog_.failed(UpdateFailure::Helper);
    }

    void openPackage(const std::string& path) override {
        const bool started =
            launcher_.run({"xdg-open", path}, [this](bool well) { dialog_.packageOpened(well); });
        if (!started)
            dialog_.packageOpened(false);
    }

    void setSkipped(const std::string& version) override { parts_.store.set(skippedKey, version); }

    [[nodiscard]] bool isSkipped(const std::string& version) const override {
        return parts_.store.get<std::string>(skippedKey) == version;
    }

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

} // namespace

std::unique_ptr<Updater> makeLinuxUpdater(const UpdateParts& parts, UpdateSetup setup) {
    return std::make_unique<LinuxUpdater>(parts, std::move(setup));
}

} // namespace kelpa
