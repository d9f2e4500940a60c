#include "platform/linux/GettextTranslations.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <libintl.h>
#include <string_view>

namespace kelpa {

namespace {

constexpr const char* domain = "kelpa";

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The locale that the environment asks for in messages, by the order that the C library keeps.
std::string wantedLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (auto value = variable(name); !value.empty())
            return value;
    return "C";
}

/// "zh_CN" of "zh_CN.UTF-8@pinyin".
std::string languageOf(const std::string& locale) {
    return locale.substr(0, locale.find_first_of(".@"));
}

bool useUserLocale() {
    return std::setlocale(LC_CTYPE, "") != nullptr && std::setlocale(LC_MESSAGES, "") != nullptr;
}

/// A machine knows only the locales that were generated on it, and a bare one has no more than this. Messages
/// do not depend on the rest of a locale, so its name alone is handed to gettext.
void useBareLocale() {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::setlocale(LC_MESSAGES, "C.UTF-8");
    setenv("LANGUAGE", languageOf(wantedLocale()).c_str(), 0);
}

bool tableExists(const std::string& folder, const std::string& language) {
    const auto has = [&folder](const std::string& name) {
        std::error_code none;
        return std::filesystem::exists(folder + "/" + name + "/LC_MESSAGES/" + domain + ".mo", none);
    };
    return has(language) || has(language.substr(0, language.find('_')));
}

/// The translation of the empty text is the table's own header, so there is one only where a table is in use.
bool tableInUse() {
    return *dgettext(domain, "") != '\0';
}

} // namespace

GettextTranslations::GettextTranslations(const std::string& folder) {
    bindtextdomain(domain, folder.c_str());
    bind_textdomain_codeset(domain, "UTF-8");
    if (useUserLocale())
        return;
    useBareLocale();
    usable_ = tableInUse() || !tableExists(folder, languageOf(variable("LANGUAGE")));
}

std::string GettextTranslations::lookUp(const std::string& key) const {
    return key.empty() ? key : dgettext(domain, key.c_str());
}

} // namespace kelpa
