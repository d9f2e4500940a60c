#import "platform/macos/MacSystemInfo.h"

#import <AppKit/AppKit.h>
#import <CoreFoundation/CoreFoundation.h>

#import "platform/macos/Bridge.h"

#include <sys/utsname.h>

namespace kelpa {

namespace {

/// The texts, numbers and truth values of an information dictionary; the core has no use for anything else in
/// it.
std::optional<InfoValue> infoValue(id value) {
    if ([value isKindOfClass:[NSString class]])
        return InfoValue(toString(value));
    if (![value isKindOfClass:[NSNumber class]])
        return std::nullopt;
    if (CFGetTypeID((__bridge CFTypeRef)value) == CFBooleanGetTypeID())
        return InfoValue(static_cast<bool>([value boolValue]));
    if (CFNumberIsFloatType((__bridge CFNumberRef)value))
        return InfoValue([value doubleValue]);
    return InfoValue(std::int64_t{[value longLongValue]});
}

} // namespace

std::map<std::string, InfoValue> MacSystemInfo::bundleInfo() const {
    std::map<std::string, InfoValue> all;
    NSDictionary* infos = [[NSBundle mainBundle] infoDictionary];
    for (NSString* key in infos)
        if (auto value = infoValue([infos objectForKey:key]))
            all.emplace(toString(key), *std::move(value));
    return all;
}

std::optional<std::string> MacSystemInfo::bundleIdentifier() const {
    NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
    return identifier ? std::optional(toString(identifier)) : std::nullopt;
}

std::string MacSystemInfo::machine() const {
    utsname names{};
    uname(&names);
    return names.machine;
}

SystemInfo::Version MacSystemInfo::osVersion() const {
    const NSOperatingSystemVersion version = [[NSProcessInfo processInfo] operatingSystemVersion];
    return {static_cast<int>(version.majorVersion), static_cast<int>(version.minorVersion),
            static_cast<int>(version.patchVersion)};
}

std::optional<std::string> MacSystemInfo::homeDirectory() const {
    NSString* home = NSHomeDirectory();
    return [home length] > 0 ? std::optional(toString(home)) : std::nullopt;
}

std::optional<std::string> MacSystemInfo::applicationIcon() const {
    return [NSApp applicationIconImage] ? std::optional(toString(NSImageNameApplicationIcon)) : std::nullopt;
}

} // namespace kelpa
