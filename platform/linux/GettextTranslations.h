#pragma once

#include <string>

namespace kelpa {

/// The string tables through the C library. Takes the user's language from the environment for the whole
/// process; how numbers are written is left alone.
class GettextTranslations {
  public:
    /// `folder` holds LANGUAGE/LC_MESSAGES/kelpa.mo.
    explicit GettextTranslations(const std::string& folder);
    /// `Translations` of the process, once there was an object.
    [[nodiscard]] static std::string lookUp(const std::string& key);
    /// The first of the user's languages, as in "zh_CN".
    [[nodiscard]] const std::string& language() const { return language_; }
    /// False when the user's language has a table that the C library cannot be brought to use.
    [[nodiscard]] bool usable() const { return usable_; }

  private:
    std::string language_;
    bool usable_ = true;
};

} // namespace kelpa
