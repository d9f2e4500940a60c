#include "platform/linux/update/LinuxUpdater.h"

#include "platform/linux/helper/UpdateProtocol.h"

#include <charconv>
#include <utility>

namespace kelpa {

namespace update = wire::update;

namespace {

/// 0 for what is no number.
std::int64_t count(const std::string& text) {
    std::int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

UpdateFailure failureOf(const std::string& reason) {
    constexpr std::pair<std::string_view, UpdateFailure> failures[] = {
        {update::unreachable, UpdateFailure::Unreachable},
        {update::insecure, UpdateFailure::Insecure},
        {update::answer, UpdateFailure::Answer},
        {update::slow, UpdateFailure::Slow},
        {update::tooLarge, UpdateFailure::TooLarge},
        {update::malformed, UpdateFailure::Malformed},
        {update::length, UpdateFailure::Length},
        {update::signature, UpdateFailure::Signature},
        {update::older, UpdateFailure::Older},
        {update::unversioned, UpdateFailure::Unversioned},
        {update::disk, UpdateFailure::Disk}};
    for (const auto& [word, failure] : failures)
        if (word == reason)
            return failure;
    return UpdateFailure::Helper;
}

} // namespace

LinuxUpdater::LinuxUpdater(const UpdateParts& parts, UpdateSetup setup)
    : parts_(parts), setup_(std::move(setup)), dialog_(setup_.support, setup_.name, parts.window, *this),
      schedule_(parts.clock, parts.loop, parts.store, [this] { dialog_.due(); }),
      helper_(parts.loop, setup_.helper, *this), launcher_(parts.loop) {}

LinuxUpdater::~LinuxUpdater() = default;

void LinuxUpdater::start() {
    if (automatic_ && setup_.support == UpdateSupport::Feed)
        schedule_.start(interval_);
}

void LinuxUpdater::check() {
    schedule_.noteCheck();
    helper_.end();
    if (const std::string refused = helper_.start(); !refused.empty())
        return helperFailed("cannot be started: " + refused);
    configure();
    if (profile_)
        sendProfile();
    helper_.send({update::check});
}

void LinuxUpdater::configure() {
    helper_.send({update::source, setup_.feed, setup_.key, setup_.package});
    helper_.send({update::running, setup_.version, setup_.name, setup_.system});
    helper_.send({update::folder, setup_.folder});
    helper_.send({update::patience, std::to_string(setup_.feedSeconds), std::to_string(setup_.stallSeconds)});
}

/// Nothing by which one user could be told from another.
void LinuxUpdater::sendProfile() {
    helper_.send({update::profile, "appVersion", setup_.version});
    helper_.send({update::profile, "osVersion", setup_.system});
    helper_.send({update::profile, "cputype", setup_.processor});
    helper_.send({update::profile, "lang", setup_.language});
}

void LinuxUpdater::download() {
    helper_.send({update::download});
}

void LinuxUpdater::helperSaid(const wire::Message& message) {
    const std::string& verb = message.verb();
    if (verb == update::found)
        return dialog_.found({message.field(1), message.field(2), message.field(3), count(message.field(4))});
    if (verb == update::progress)
        return dialog_.received(count(message.field(1)));
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

void LinuxUpdater::failed(const wire::Message& message) {
    parts_.report.warning("No update: " + message.field(1) + ": " + message.field(2));
    dialog_.failed(failureOf(message.field(1)));
}

void LinuxUpdater::helperFailed(const std::string& how) {
    parts_.report.warning("kelpa-update " + how);
    dialog_.failed(UpdateFailure::Helper);
}

void LinuxUpdater::openPackage(const std::string& path) {
    const bool started =
        launcher_.run({"xdg-open", path}, [this](bool well) { dialog_.packageOpened(well); });
    if (!started)
        dialog_.packageOpened(false);
}

void LinuxUpdater::setSkipped(const std::string& version) {
    parts_.store.setText(skippedKey, version);
}

bool LinuxUpdater::isSkipped(const std::string& version) const {
    return parts_.store.text(skippedKey) == version;
}

} // namespace kelpa
