#include "ui/UpdateDialog.h"

#include "base/Text.h"

#include <array>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// In megabytes with one digit behind the point, which is as exact as anybody wants it.
std::string soFar(std::int64_t bytes, std::int64_t length) {
    const auto tenths = [](std::int64_t count) { return (count + 50'000) / 100'000; };
    const auto whole = [&](std::int64_t count) { return std::to_string(tenths(count) / 10); };
    const auto digit = [&](std::int64_t count) { return std::to_string(tenths(count) % 10); };
    return withArguments(localized("%1$s.%2$s of %3$s.%4$s MB"),
                         {whole(bytes), digit(bytes), whole(length), digit(length)});
}

/// Something that a person can only take note of.
UpdatePage message(const std::string& headline, const std::string& text) {
    return {headline, text, {}, {}, {{UpdateAction::Close, localized("OK")}}};
}

std::string inWords(UpdateFailure failure) {
    constexpr std::array texts = {
        translatable("The update server cannot be reached. Is this computer connected to the internet?"),
        translatable("There is no secure connection to the update server. Nothing was downloaded."),
        translatable("The update server did not answer as expected. Please try again later."),
        translatable("The update server took too long to answer. Please try again later."),
        translatable("The list of updates is too large, so it is not used."),
        translatable("The list of updates is damaged, so it is not used."),
        translatable("The download does not have the announced size, so it was thrown away."),
        translatable("The update is not signed by the makers of Kelpa, so it is not used."),
        translatable("The download is an older version than yours, so it was thrown away."),
        translatable("Nothing here can tell which version the download is, so it was thrown away."),
        translatable("The download cannot be stored. Is the disk full?"),
        translatable("Something went wrong inside Kelpa. The log tells more.")};
    return localized(texts.at(static_cast<std::size_t>(failure)));
}

} // namespace

UpdatePage noUpdatesPage(UpdateSupport support) {
    return message(
        localized("Kelpa does not update itself here"),
        support == UpdateSupport::Store
            ? localized("The software store that Kelpa came from also brings its new versions.")
            : localized(
                  "This copy of Kelpa does not look for updates. Get new versions where you got this one."));
}

UpdateDialog::UpdateDialog(UpdateSupport support, std::string running, UpdateWindow& window, UpdateWork& work)
    : support_(support), running_(std::move(running)), window_(window), work_(work) {
    window_.setClient(this);
}

UpdateDialog::~UpdateDialog() {
    window_.setClient(nullptr);
}

void UpdateDialog::tell(const std::string& headline, const std::string& text) {
    state_ = State::Telling;
    window_.setPage(message(headline, text));
}

void UpdateDialog::asked() {
    if (support_ != UpdateSupport::Feed) {
        state_ = State::Telling;
        window_.setPage(noUpdatesPage(support_));
        window_.present(UpdateWindow::Attention::Wanted);
    } else if (state_ == State::Idle || state_ == State::Telling) {
        showChecking();
        work_.startCheck();
    } else if (state_ == State::CheckingQuietly) {
        showChecking();
    } else {
        window_.present(UpdateWindow::Attention::Wanted);
    }
}

void UpdateDialog::showChecking() {
    state_ = State::Checking;
    window_.setPage({.headline = localized("Looking for updates"),
                     .buttons = {{UpdateAction::Cancel, localized("Cancel")}},
                     .progress = UpdatePage::Progress::Busy});
    window_.present(UpdateWindow::Attention::Wanted);
}

void UpdateDialog::due() {
    if (support_ != UpdateSupport::Feed || state_ != State::Idle)
        return;
    state_ = State::CheckingQuietly;
    work_.startCheck();
}

bool UpdateDialog::endQuietly() {
    if (state_ == State::CheckingQuietly)
        state_ = State::Idle;
    return state_ == State::Idle;
}

void UpdateDialog::latest() {
    if (!endQuietly())
        tell(localized("Kelpa is up to date"),
             withArguments(localized("You have the newest version, %1$s."), {running_}));
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
    window_.setPage(
        {localized("A new version of Kelpa is available"),
         withArguments(localized("Version %1$s is available; you have %2$s."), {release.name, running_}),
         release.notes.empty() ? "" : localized("Release Notes"),
         release.notes,
         {{UpdateAction::Skip, localized("Skip This Version")},
          {UpdateAction::Later, localized("Later")},
          {UpdateAction::Install, localized("Install")}}});
    if (quiet)
        window_.present(UpdateWindow::Attention::None);
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
    window_.setPage({.headline = withArguments(localized("Downloading version %1$s"), {release_.name}),
                     .text = soFar(bytes, release_.length),
                     .buttons = {{UpdateAction::Cancel, localized("Cancel")}},
                     .progress = UpdatePage::Progress::Known,
                     .fraction = fraction});
}

void UpdateDialog::ready(const std::string& path) {
    package_ = path;
    tell(localized("The update is ready"),
         localized("The program that installs software on this computer opens it now. Once it is installed, "
                   "quit Kelpa and start it again."));
    // Some desktops tell at once that the package has been opened, some only when the installer is closed.
    state_ = State::Opening;
    work_.openPackage(path);
}

void UpdateDialog::packageOpened(bool taken) {
    if (state_ != State::Opening)
        return;
    state_ = State::Telling;
    if (!taken)
        tell(localized("No program installs the update"),
             withArguments(localized("The download was checked and lies in this file:\n%1$s"), {package_}));
}

void UpdateDialog::failed(UpdateFailure failure) {
    if (!endQuietly())
        tell(localized("The update did not work"), inWords(failure));
}

void UpdateDialog::act(UpdateAction action) {
    const bool offers = state_ == State::Offering;
    if (action == UpdateAction::Install) {
        if (offers)
            startDownload();
        return;
    }
    if (action == UpdateAction::Skip && offers)
        work_.setSkipped(release_.version);
    leave();
}

void UpdateDialog::leave() {
    if (state_ != State::Telling)
        work_.stop();
    state_ = State::Idle;
    window_.close();
}

} // namespace kelpa
