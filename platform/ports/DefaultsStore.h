#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa {

/// The per-user store of settings. Every read sees what the store holds now, also what another program wrote;
/// a value of another type reads as absent. A write is stored at once; one that cannot be stored holds for
/// this run and is reported by the store itself.
class DefaultsStore {
  public:
    virtual ~DefaultsStore() = default;
    [[nodiscard]] virtual std::optional<bool> boolean(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<double> real(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<std::string> text(std::string_view key) const = 0;
    /// An array whose every element is a text; any other array reads as absent.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> texts(std::string_view key) const = 0;

    virtual void setBoolean(std::string_view key, bool value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setReal(std::string_view key, double value) = 0;
    virtual void setText(std::string_view key, const std::string& value) = 0;
    virtual void setTexts(std::string_view key, const std::vector<std::string>& value) = 0;
};

} // namespace kelpa
