#pragma once

#include "base/Text.h"

namespace kelpa {

/// The string tables through the C library. Takes the user's language from the environment for the whole
/// process; how numbers are written is left alone.
class GettextTranslations final : public Translations {
  public:
    /// `folder` holds LANGUAGE/LC_MESSAGES/kelpa.mo.
    explicit GettextTranslations(const std::string& folder);
    [[nodiscard]] std::string lookUp(const std::string& key) const override;
    /// The first of the user's languages, as in "zh_CN".
    [[nodiscard]] const std::string& language() const { return language_; }
    /// False when the user's language has a table that the C library cannot be brought to use.
    [[nodiscard]] bool usable() const { return usable_; }

  private:
    std::string language_;
    bool usable_ = true;
};

} // namespace kelpa
