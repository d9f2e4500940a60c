#include "platform/linux/LinuxSystemInfo.h"

#include "platform/linux/BuildConfig.h"
#include "platform/linux/Folders.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <sys/utsname.h>

namespace kelpa {

namespace {

std::optional<std::string> contentOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::optional<SystemInfo::Version> distributionVersion() {
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"})
        if (const auto text = contentOf(path))
            if (const auto id = versionId(*text))
                return leadingVersion(*id);
    return std::nullopt;
}

utsname system() {
    utsname names{};
    uname(&names);
    return names;
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

std::optional<std::string> versionId(std::string_view osRelease) {
    constexpr std::string_view name = "VERSION_ID=";
    while (!osRelease.empty()) {
        const auto line = osRelease.substr(0, osRelease.find('\n'));
        if (line.starts_with(name))
            return std::string(unquoted(line.substr(name.size())));
        osRelease.remove_prefix(std::min(osRelease.size(), line.size() + 1));
    }
    return std::nullopt;
}

std::map<std::string, InfoValue> LinuxSystemInfo::bundleInfo() const {
    return {{"CFBundleDisplayName", build::displayName},
            {"CFBundleIdentifier", build::identifier},
            {"CFBundleShortVersionString", build::version},
            {"CFBundleVersion", build::number}};
}

std::optional<std::string> LinuxSystemInfo::bundleIdentifier() const {
    return build::identifier;
}

std::string LinuxSystemInfo::machine() const {
    return system().machine;
}

SystemInfo::Version LinuxSystemInfo::osVersion() const {
    if (const auto version = distributionVersion())
        return *version;
    return leadingVersion(system().release).value_or(Version{});
}

std::optional<std::string> LinuxSystemInfo::homeDirectory() const {
    const auto state = stateHome();
    return state ? std::optional(*state + "/" + build::identifier) : std::nullopt;
}

std::optional<std::string> LinuxSystemInfo::applicationIcon() const {
    return build::identifier;
}

} // namespace kelpa
