#pragma once

#include "platform/ports/DefaultsStore.h"

#include <functional>
#include <map>
#include <memory>

namespace kelpa {

/// Looked up without making a text of the key.
using StoreValues = std::map<std::string, StoreValue, std::less<>>;

/// A property list whose root is a dictionary. What the program does not know in it (other kinds of values,
/// other programs' keys) stays as it is.
class PlistDocument {
  public:
    /// An empty dictionary.
    PlistDocument();

    /// Reads a property list in XML, as UTF-8 or UTF-16, or a binary one; nothing when it is damaged, nested
    /// beyond reason, or its root is no dictionary.
    static std::optional<PlistDocument> parse(const std::string& bytes);
    /// Every value of a kind that the program knows.
    [[nodiscard]] StoreValues values() const;
    /// Characters that XML cannot hold are replaced by U+FFFD.
    void set(const std::string& key, const StoreValue& value);
    [[nodiscard]] std::string xml() const;

  private:
    /// Takes the library's node over.
    explicit PlistDocument(void* root);
    std::unique_ptr<void, void (*)(void*)> root_;
};

} // namespace kelpa
