#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kelpa {

/// A setting as it is stored; the kinds are never converted into each other.
using StoreValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

/// The per-user store of settings. Every read sees what the store holds now, also what another program wrote.
/// A write is stored at once; one that cannot be stored holds for this run and is reported by the store
/// itself.
class DefaultsStore {
  public:
    virtual ~DefaultsStore() = default;
    /// The value of a kind that the program knows; an array is one if its every element is a text.
    [[nodiscard]] virtual std::optional<StoreValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, const StoreValue& value) = 0;

    /// The value of this kind; one of another reads as absent.
    template <class T>
    [[nodiscard]] std::optional<T> get(std::string_view key) const {
        auto found = value(key);
        T* const wanted = found ? std::get_if<T>(&*found) : nullptr;
        return wanted ? std::optional<T>(std::move(*wanted)) : std::nullopt;
    }
};

} // namespace kelpa
