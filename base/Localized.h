#pragma once

#include <string>

namespace kelpa {

class Translations;

/// Chooses the string table. The object must outlive the core; without one every text stands for itself.
void setTranslations(const Translations& table);

/// Marks a text that is looked up later, for the check of the catalogues.
constexpr const char* translatable(const char* key) {
    return key;
}

/// The user's language for a text that is its own key; the key itself where there is no translation.
[[nodiscard]] std::string localized(const std::string& key);

} // namespace kelpa
