#include "platform/linux/update/UpdateDialog.h"

#include "base/Localized.h"
#include "base/Text.h"

#include <utility>

namespace kelpa {

namespace {

std::string filled(const std::string& key, const std::string& first, const std::string& second = {}) {
    return replacingAll(replacingAll(localized(key), "%2", second), "%1", first);
}

/// With one digit behind the point, which is as exact as anybody wants it.
std::string megabytes(std::int64_t bytes) {
    const std::int64_t tenths = (bytes + 50'000) / 100'000;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

UpdateButton button(UpdateAction action, const std::string& text) {
    return {action, text};
}

std::string inWords(UpdateFailure failure) {
    switch (failure) {
    case UpdateFailure::Unreachable:
        return localized("The update server cannot be reached. Is this computer connected to the internet?");
    case UpdateFailure::Insecure:
        return localized("There is no secure connection to the update server. Nothing was downloaded.");
    case UpdateFailure::Answer:
        return localized("The update server did not answer as expected. Please try again later.");
    case UpdateFailure::Slow:
        return localized("The update server took too long to answer. Please try again later.");
    case UpdateFailure::TooLarge:
        return localized("The list of updates is too large, so it was not read.");
    case UpdateFailure::Malformed:
        return localized("The list of updates is damaged, so it was not read.");
    case UpdateFailure::Length:
        return localized("The download does not have the announced size, so it was thrown away.");
    case UpdateFailure::Signature:
        return localized("The download is not signed by the makers of Kelpa, so it was thrown away.");
    case UpdateFailure::Disk:
        return localized("The download cannot be stored. Is the disk full?");
    case UpdateFailure::Helper:
        break;
    }
    return localized("Something went wrong inside Kelpa. The log tells more.");
}

} // namespace

UpdateDialog::UpdateDialog(UpdateSupport support, std::string running, UpdateWindow& window, UpdateWork& work)
    : support_(support), running_(std::move(running)), window_(window), work_(work) {}

void UpdateDialog::tell(const std::string& headline, const std::string& text) {
    state_ = State::Telling;
    window_.setPage({headline, text, {}, {button(UpdateAction::Close, localized("OK"))}});
}

void UpdateDialog::explain(const std::string& why) {
    tell(localized("Kelpa does not update itself here"), why);
    window_.present();
}

void UpdateDialog::asked() {
    if (support_ == UpdateSupport::NoFeed) {
        explain(
            localized("This copy of Kelpa does not look for updates. New versions come the way it came."));
    } else if (support_ == UpdateSupport::Store) {
        explain(localized("The software store that Kelpa came from also brings its new versions."));
    } else if (state_ == State::Idle || state_ == State::Telling) {
        showChecking();
        work_.check(UpdateWork::Cause::Asked);
    } else if (state_ == State::CheckingQuietly) {
        showChecking();
    } else {
        window_.present();
    }
}

void UpdateDialog::showChecking() {
    state_ = State::Checking;
    window_.setPage({localized("Looking for updates"),
                     {},
                     {},
                     {button(UpdateAction::Cancel, localized("Cancel"))},
                     UpdatePage::Progress::Busy});
    window_.present();
}

void UpdateDialog::due() {
    if (support_ != UpdateSupport::Feed || state_ != State::Idle)
        return;
    state_ = State::CheckingQuietly;
    work_.check(UpdateWork::Cause::Due);
}

bool UpdateDialog::endQuietly() {
    if (state_ == State::CheckingQuietly)
        state_ = State::Idle;
    return state_ == State::Idle;
}

void UpdateDialog::latest() {
    if (!endQuietly())
        tell(localized("Kelpa is up to date"), filled("You have the newest version, %1.", running_));
}

void UpdateDialog::outgrown() {
    if (!endQuietly())
        tell(localized("A newer system is needed"),
             localized("There is a new version of Kelpa, but not for this version of your system."));
}

void UpdateDialog::found(const Release& release) {
    const bool quiet = state_ == State::CheckingQuietly;
    if (quiet && work_.isSkipped(release.version)) {
        work_.stop();
        state_ = State::Idle;
        return;
    }
    release_ = release;
    state_ = State::Offering;
    window_.setPage({localized("A new version of Kelpa is available"),
                     filled("Version %1 is available; you have %2.", release.name, running_),
                     release.notes.empty() ? "" : localized("Release Notes"),
                     {button(UpdateAction::Skip, localized("Skip This Version")),
                      button(UpdateAction::Later, localized("Later")),
                      button(UpdateAction::Install, localized("Install"))}});
    if (quiet)
        window_.present();
}

void UpdateDialog::startDownload() {
    state_ = State::Downloading;
    received(0);
    work_.download();
}

void UpdateDialog::received(std::int64_t bytes) {
    if (state_ != State::Downloading)
        return;
    const double fraction =
        release_.length > 0 ? static_cast<double>(bytes) / static_cast<double>(release_.length) : 0;
    window_.setPage({filled("Downloading version %1", release_.name),
                     filled("%1 of %2 MB", megabytes(bytes), megabytes(release_.length)),
                     {},
                     {button(UpdateAction::Cancel, localized("Cancel"))},
                     UpdatePage::Progress::Known,
                     fraction});
}

void UpdateDialog::ready(const std::string& path) {
    package_ = path;
    state_ = State::Opening;
    work_.openPackage(path);
}

void UpdateDialog::packageOpened(bool taken) {
    if (state_ != State::Opening)
        return;
    if (taken)
        tell(
            localized("The update is ready"),
            localized("The program that installs software on this computer has it now. When it is installed, "
                      "quit Kelpa and start it again."));
    else
        tell(localized("No program installs the update"),
             filled("The update is safe and lies here: %1", package_));
}

void UpdateDialog::failed(UpdateFailure failure) {
    if (!endQuietly())
        tell(localized("The update did not work"), inWords(failure));
}

void UpdateDialog::act(UpdateAction action) {
    switch (action) {
    case UpdateAction::Install:
        if (state_ == State::Offering)
            startDownload();
        return;
    case UpdateAction::Notes:
        if (!release_.notes.empty())
            work_.openPage(release_.notes);
        return;
    case UpdateAction::Skip:
        if (state_ == State::Offering)
            work_.setSkipped(release_.version);
        return leave();
    case UpdateAction::Later:
    case UpdateAction::Cancel:
    case UpdateAction::Close:
        return leave();
    }
}

void UpdateDialog::leave() {
    if (state_ != State::Telling)
        work_.stop();
    state_ = State::Idle;
    window_.close();
}

} // namespace kelpa
