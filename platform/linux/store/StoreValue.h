#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace kelpa {

/// A setting as the program knows it; the kinds are never converted into each other.
using StoreValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;
/// Looked up without making a text of the key.
using StoreValues = std::map<std::string, StoreValue, std::less<>>;

} // namespace kelpa
