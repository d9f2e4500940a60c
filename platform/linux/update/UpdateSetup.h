#pragma once

#include "platform/linux/update/UpdateDialog.h"
#include "platform/ports/System.h"

#include <string>

namespace kelpa {

/// What the updater has to know of this copy of the program.
struct UpdateSetup {
    UpdateSupport support = UpdateSupport::NoFeed;
    std::string feed;
    std::string key;       ///< public, of whoever signs the packages
    std::string package;   ///< how the names of the packages end that can be installed here
    std::string version;   ///< by which releases are ordered
    std::string name;      ///< the version that people are shown
    std::string system;    ///< version of the system
    std::string processor; ///< as the system calls its kind
    std::string language;  ///< as in "zh_CN"
    std::string folder;    ///< for downloads, and nothing else
    std::string helper;    ///< path of kelpa-update
    int feedSeconds = 30;  ///< that the feed may take
    int stallSeconds = 60; ///< that a download may stand still

    /// As it was configured when it was built, for the system that it runs on and the language of its user.
    static UpdateSetup ofThisCopy(const SystemInfo& system, const std::string& language);
};

} // namespace kelpa
