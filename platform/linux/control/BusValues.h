#pragma once

#include "platform/linux/bus/BusWriter.h"

#include <cstdint>
#include <map>
#include <string>
#include <variant>

namespace kelpa {

/// A property's value: what the interface to scripts is made of.
using BusValue = std::variant<std::string, std::int64_t, bool>;
using BusValues = std::map<std::string, BusValue, std::less<>>;

void writeValue(BusWriter& writer, const BusValue& value);
/// Writes name and value as an entry of an `a{sv}` that is open.
void writeEntry(BusWriter& writer, const char* name, const BusValue& value);
/// Reads the `a{sv}` that comes next into `values`, over what they hold; entries of other types are passed
/// over. False when there is none.
bool readValues(sd_bus_message* message, BusValues& values);

} // namespace kelpa
