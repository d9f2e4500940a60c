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

bool isPlain(const std::string& locale) {
    return locale == "C" || locale == "POSIX";
}

/// The user's languages in their order, and English behind them: some texts have a key that is not what is
/// shown.
std::string languages() {
    const std::string locale = wantedLocale();
    std::string wanted = isPlain(locale) ? "" : variable("LANGUAGE");
    if (wanted.empty() && !isPlain(locale) && !locale.starts_with("C."))
        wanted = languageOf(locale);
    return wanted.empty() ? "en" : wanted + ":en";
}

/// A machine knows only the locales that were generated on it, and gettext looks at no language in the plain
/// one. Messages do not depend on the rest of a locale, so that the barest one serves for them.
void chooseLocale() {
    if (isPlain(wantedLocale()) || std::setlocale(LC_CTYPE, "") == nullptr ||
        std::setlocale(LC_MESSAGES, "") == nullptr) {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        std::setlocale(LC_MESSAGES, "C.UTF-8");
    }
}

bool tableExists(const std::string& folder) {
    std::error_code none;
    return std::filesystem::exists(folder + "/en/LC_MESSAGES/" + domain + ".mo", none);
}

/// The translation of the empty text is the table's own header, so there is one only where a table is in use.
bool tableInUse() {
    return *dgettext(domain, "") != '\0';
}

} // namespace

GettextTranslations::GettextTranslations(const std::string& folder) {
    const std::string wanted = languages();
    language_ = wanted.substr(0, wanted.find(':'));
    setenv("LANGUAGE", wanted.c_str(), 1);
    chooseLocale();
    bindtextdomain(domain, folder.c_str());
    bind_textdomain_codeset(domain, "UTF-8");
    usable_ = tableInUse() || !tableExists(folder);
}

std::string GettextTranslations::lookUp(const std::string& key) {
    return key.empty() ? key : dgettext(domain, key.c_str());
}

} // namespace kelpa
