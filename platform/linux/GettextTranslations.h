#pragma once

#include "platform/ports/Translations.h"

namespace kelpa {

/// The string tables through the C library. Takes the user's language from the environment for the whole
/// process; how numbers are written is left alone.
class GettextTranslations final : public Translations {
  public:
    /// `folder` holds LANGUAGE/LC_MESSAGES/kelpa.mo.
    explicit GettextTranslations(const std::string& folder);
    [[nodiscard]] std::string lookUp(const std::string& key) const override;
    /// False when the user's language has a table that the C library cannot be brought to use.
    [[nodiscard]] bool usable() const { return usable_; }

  private:
    bool usable_ = true;
};

} // namespace kelpa
