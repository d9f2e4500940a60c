#pragma once

#include "platform/linux/bus/BusMessage.h"
#include "platform/linux/tray/ItemPictures.h"
#include "platform/ports/StatusBar.h"

#include <string>
#include <variant>
#include <vector>

namespace kelpa {

/// One property of a menu line as hosts know it.
struct MenuProperty {
    struct Bytes {
        std::string data;
    };
    struct Shortcut {
        std::string key; ///< to be pressed together with Control
    };
    const char* name;
    std::variant<std::string, bool, Bytes, Shortcut> value;
};

using MenuProperties = std::vector<MenuProperty>;

/// Everything that hosts can know of a line. The line with the id 0 is the menu itself.
[[nodiscard]] MenuProperties menuProperties(const MenuLine& line, const ItemPictures& pictures);
/// Those of `properties` that are among `names`; all of them when no names are given.
[[nodiscard]] MenuProperties selected(MenuProperties properties, const std::vector<std::string>& names);
/// The properties that a line can have and this one has not.
[[nodiscard]] std::vector<const char*> missingProperties(const MenuProperties& properties);

/// Appends a property's value as a variant.
void writeValue(BusWriter& writer, const MenuProperty& property);
/// Appends properties as a{sv}.
void writeProperties(BusWriter& writer, const MenuProperties& properties);

} // namespace kelpa
