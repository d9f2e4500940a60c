#pragma once

#include <string>

namespace kelpa {

/// The string table of the user's language.
class Translations {
  public:
    virtual ~Translations() = default;
    /// The translation of `key`, or `key` itself when there is none.
    [[nodiscard]] virtual std::string lookUp(const std::string& key) const = 0;
};

} // namespace kelpa
