#include "base/Localized.h"

#include "platform/ports/Translations.h"

namespace kelpa {

namespace {
const Translations* chosen = nullptr;
}

void setTranslations(const Translations& table) {
    chosen = &table;
}

std::string localized(const std::string& key) {
    return chosen ? chosen->lookUp(key) : key;
}

} // namespace kelpa
