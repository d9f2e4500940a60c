#pragma once

#include "platform/linux/services/DesktopEntry.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kelpa {

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

} // namespace kelpa
