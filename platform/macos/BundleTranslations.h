#pragma once

#include "base/Text.h"

namespace kelpa {

/// The string tables of the main bundle, in the language that the system chose for the user.
class BundleTranslations final : public Translations {
  public:
    [[nodiscard]] std::string lookUp(const std::string& key) const override;
};

} // namespace kelpa
