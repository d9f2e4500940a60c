#pragma once

#include "platform/ports/UpdateWindow.h"

#include <cstdint>
#include <string>

namespace kelpa {

/// Whether this copy of the program can look for new versions at all.
enum class UpdateSupport {
    Feed,   ///< it has a feed
    NoFeed, ///< whoever built it gave it none
    Store,  ///< it runs in a sandbox, where the store that installed it brings new versions
};

/// What a copy that cannot tells a person who asks it for updates.
[[nodiscard]] UpdatePage noUpdatesPage(UpdateSupport support);

enum class UpdateFailure {
    Unreachable,
    Insecure,
    Answer,
    Slow,
    TooLarge,
    Malformed,
    Length,
    Signature,
    Older,
    Unversioned,
    Disk,
    Helper,
};

/// A release that the feed offers.
struct Release {
    std::string version;     ///< by which releases are told apart
    std::string name;        ///< the version that people are shown
    std::string notes;       ///< address of the release notes; empty for none
    std::int64_t length = 0; ///< bytes of the package
};

/// What is done for the dialog while it waits.
class UpdateWork {
  public:
    virtual ~UpdateWork() = default;
    virtual void startCheck() = 0;
    /// Fetches the release that was found.
    virtual void download() = 0;
    /// Ends whatever goes on; nothing more is heard of it.
    virtual void stop() = 0;
    /// Hands a verified package to the desktop.
    virtual void openPackage(const std::string& path) = 0;
    virtual void setSkipped(const std::string& version) = 0;
    [[nodiscard]] virtual bool isSkipped(const std::string& version) const = 0;
};

/// Decides what a person who is offered an update sees, and what happens then. A check that nobody asked for
/// is seen only when it finds something that is not to be skipped.
class UpdateDialog final : private UpdateWindowClient {
  public:
    /// Both outlive the dialog. `running` is the version that people are shown.
    UpdateDialog(UpdateSupport support, std::string running, UpdateWindow& window, UpdateWork& work);
    ~UpdateDialog() override;
    UpdateDialog(const UpdateDialog&) = delete;
    UpdateDialog& operator=(const UpdateDialog&) = delete;

    /// Somebody wants to know.
    void asked();
    /// It is time for a check by itself.
    void due();

    // How the work went.
    void latest();
    void outgrown();
    void found(const Release& release);
    void received(std::int64_t bytes);
    void ready(const std::string& path);
    void failed(UpdateFailure failure);
    /// Whether some program took the package.
    void packageOpened(bool taken);

  private:
    enum class State { Idle, CheckingQuietly, Checking, Offering, Downloading, Opening, Telling };

    void act(UpdateAction action) override;
    void tell(const std::string& headline, const std::string& text);
    void showChecking();
    void startDownload();
    void leave();
    /// Ends a check that nobody asked for; true when it was one.
    bool endQuietly();

    UpdateSupport support_;
    std::string running_;
    UpdateWindow& window_;
    UpdateWork& work_;
    State state_ = State::Idle;
    Release release_;
    std::string package_;
};

} // namespace kelpa
