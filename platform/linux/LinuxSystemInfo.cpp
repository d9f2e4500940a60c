#include "platform/linux/LinuxSystemInfo.h"

#include "platform/linux/BuildConfig.h"
#include "platform/linux/Folders.h"

#include <charconv>
#include <fstream>
#include <sys/utsname.h>

namespace kelpa {

namespace {

std::optional<SystemInfo::Version> distributionVersion() {
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"})
        if (const auto id = versionId(std::ifstream(path)))
            return leadingVersion(*id);
    return std::nullopt;
}

std::string_view unquoted(std::string_view value) {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'');
    return quoted && value.back() == value.front() ? value.substr(1, value.size() - 2) : value;
}

} // namespace

std::optional<SystemInfo::Version> leadingVersion(std::string_view text) {
    SystemInfo::Version version;
    const char* position = text.data();
    const char* end = position + text.size();
    for (int* number : {&version.major, &version.minor, &version.patch}) {
        unsigned short value = 0; // unsigned: a minus ends the version
        const auto [next, error] = std::from_chars(position, end, value);
        if (error != std::errc())
            return number == &version.major ? std::nullopt : std::optional(version);
        *number = value;
        if (next == end || *next != '.')
            return version;
        position = next + 1;
    }
    return version;
}

std::optional<std::string> versionId(std::istream&& osRelease) {
    constexpr std::string_view name = "VERSION_ID=";
    for (std::string line; std::getline(osRelease, line);)
        if (line.starts_with(name))
            return std::string(unquoted(std::string_view(line).substr(name.size())));
    return std::nullopt;
}

SystemInfo linuxSystemInfo() {
    utsname kernel{};
    uname(&kernel);
    auto version = distributionVersion();
    if (!version)
        version = leadingVersion(kernel.release);
    const auto state = stateHome();
    return {{{"CFBundleDisplayName", build::displayName},
             {"CFBundleIdentifier", build::identifier},
             {"CFBundleShortVersionString", build::version},
             {"CFBundleVersion", build::number}},
            build::identifier,
            kernel.machine,
            version.value_or(SystemInfo::Version()),
            state ? std::optional(*state + "/" + build::identifier) : std::nullopt,
            build::identifier};
}

} // namespace kelpa
