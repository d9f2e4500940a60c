#pragma once

#include "platform/linux/services/Portal.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa {

/// One argument of an Exec key: quoted where it must be, so that the desktop passes exactly `argument` on.
[[nodiscard]] std::string execArgument(const std::string& argument);
/// A string value of a desktop entry.
[[nodiscard]] std::string entryValue(const std::string& text);

/// What an autostart entry says of itself that decides whether it starts something.
struct DesktopEntry {
    std::string program; ///< first argument of Exec; empty when there is none
    bool hidden = false; ///< it stands for "do not start"
    bool ours = false;   ///< this program wrote it
};

/// Reads a desktop entry file's text; nothing when it has no such group.
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(std::string_view text);

/// Where the desktop looks for what it starts at log-in. An entry of the user's folder takes the place of one
/// of the same name in the system's.
struct AutostartFolders {
    std::filesystem::path user;
    std::vector<std::filesystem::path> system;

    /// As the environment says; nothing in `user` when there is no home.
    [[nodiscard]] static AutostartFolders ofEnvironment();
};

/// What an autostart entry is to start.
struct AutostartProgram {
    std::string identifier; ///< the entry is `identifier`.desktop
    std::string name;       ///< as it is shown in the desktop's list of what it starts
    std::string path;       ///< of the program file
};

/// Makes the desktop start the program at log-in, exactly once: where the user or a package already has an
/// entry that does, none is added.
class Autostart {
  public:
    Autostart(AutostartFolders folders, AutostartProgram program)
        : folders_(std::move(folders)), program_(std::move(program)) {}

    [[nodiscard]] const AutostartProgram& program() const { return program_; }
    /// Both throw `std::system_error` or `std::runtime_error` with what stood there before still in place.
    void enable() const;
    /// A package's entry is overridden, one that the user wrote is kept and hidden.
    void disable() const;

  private:
    struct Found {
        std::filesystem::path path;
        DesktopEntry entry;
    };

    [[nodiscard]] std::filesystem::path ownPath() const;
    [[nodiscard]] std::vector<Found> entriesThatStartUs(const std::filesystem::path& folder) const;
    [[nodiscard]] std::vector<Found> systemEntries() const;
    [[nodiscard]] std::vector<Found> userEntries() const;
    [[nodiscard]] bool startsUs(const Found& found) const;
    void write(const std::filesystem::path& path, const std::string& keys) const;

    AutostartFolders folders_;
    AutostartProgram program_;
};

/// Writes an error into the system's own log.
void writeToSystemLog(const std::string& line);

/// An entry among those programs that the desktop starts at log-in; in a sandbox the desktop keeps it.
class LinuxLoginItem final : public LoginItem {
  public:
    /// `portal` gives the desktop's portal in a sandbox and null outside; `fail` writes a line for the
    /// machine's administrator.
    LinuxLoginItem(Autostart autostart, std::function<Portal*()> portal,
                   std::function<void(const std::string& line)> fail = writeToSystemLog)
        : autostart_(std::move(autostart)), portal_(std::move(portal)), fail_(std::move(fail)) {}

    void setEnabled(bool enabled) override;

  private:
    void failed() const;

    Autostart autostart_;
    std::function<Portal*()> portal_;
    std::function<void(const std::string& line)> fail_;
};

} // namespace kelpa
