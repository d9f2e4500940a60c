#include "app/AppInfo.h"

#include "app/Distribution.h"
#include "base/Calendar.h"
#include "base/FatalError.h"
#include "base/Text.h"

namespace kelpa {

namespace {

struct Sources {
    const SystemInfo& system;
    const Clock& clock;
};

Wired<Sources> sources("The application's information was");

std::string textOr(const char* key, const char* otherwise) {
    const auto& infos = AppInfo::infos();
    const auto found = infos.find(key);
    const auto* text = found == infos.end() ? nullptr : std::get_if<std::string>(&found->second);
    return text ? *text : otherwise;
}

} // namespace

void AppInfo::wire(const SystemInfo& system, const Clock& clock) {
    sources.wire({system, clock});
}

const std::map<std::string, InfoValue>& AppInfo::infos() {
    return sources->system.bundleInfo;
}

std::string AppInfo::name() {
    const std::string key = textOr("CFBundleDisplayName", translatable("Kelpa"));
    return localized(key);
}

std::string AppInfo::version() {
    return textOr("CFBundleShortVersionString", "1.0.0");
}

std::string AppInfo::build() {
    return textOr("CFBundleVersion", "1");
}

std::string AppInfo::identifier() {
    return sources->system.bundleIdentifier.value_or("1");
}

std::string AppInfo::loginItemIdentifier() {
    return distribution::loginItemIdentifier;
}

std::optional<std::string> AppInfo::icon() {
    return sources->system.applicationIcon;
}

std::string AppInfo::copyright() {
    const Calendar calendar(sources->clock);
    const int year = calendar.day(calendar.now()).year;
    return "Copyright © " + std::to_string(year) + " " + distribution::copyrightHolder + ".";
}

std::string AppInfo::releaseNotesLink() {
    return distribution::releaseNotesUrl;
}

std::string AppInfo::feedbackMailbox() {
    return distribution::feedbackMailbox;
}

std::string AppInfo::model() {
    return sources->system.machine;
}

std::string AppInfo::osVersion() {
    const auto version = sources->system.osVersion;
    return std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
           std::to_string(version.patch);
}

} // namespace kelpa
