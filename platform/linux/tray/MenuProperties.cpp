#include "platform/linux/tray/MenuProperties.h"

#include <algorithm>
#include <string_view>

namespace kelpa {

namespace {

/// A single underscore would mark the next letter as the one to press.
std::string escaped(const std::string& title) {
    std::string label;
    for (const char c : title)
        label.append(c == '_' ? 2 : 1, c);
    return label;
}

/// Keys go by the names that the window system gives them; those of letters and digits are the letters.
std::string keyName(const std::string& key) {
    return key == "," ? "comma" : key;
}

struct WriteValue {
    BusWriter& writer;
    void operator()(const std::string& value) const { writer.open('v', "s").text(value).close(); }
    void operator()(bool value) const { writer.open('v', "b").boolean(value).close(); }
    void operator()(const MenuProperty::Bytes& value) const {
        writer.open('v', "ay").bytes(value.data).close();
    }
    void operator()(const MenuProperty::Shortcut& value) const {
        writer.open('v', "aas").open('a', "as").open('a', "s");
        writer.text("Control").text(value.key);
        writer.close().close().close();
    }
};

bool isAmong(const std::vector<std::string>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

MenuProperties menuProperties(const MenuLine& line, const ItemPictures& pictures) {
    if (line.id == 0)
        return {{"children-display", std::string("submenu")}};
    if (line.separator)
        return {{"type", std::string("separator")}};
    MenuProperties properties = {{"label", escaped(line.title)},
                                 {"enabled", line.enabled},
                                 {"visible", true},
                                 {"disposition", std::string("normal")}};
    if (auto picture = pictures.symbol(line.image))
        properties.push_back({"icon-data", MenuProperty::Bytes{std::move(*picture)}});
    if (!line.keyEquivalent.empty())
        properties.push_back({"shortcut", MenuProperty::Shortcut{keyName(line.keyEquivalent)}});
    return properties;
}

MenuProperties selected(MenuProperties properties, const std::vector<std::string>& names) {
    if (!names.empty())
        std::erase_if(properties, [&names](const auto& property) { return !isAmong(names, property.name); });
    return properties;
}

std::vector<const char*> missingProperties(const MenuProperties& properties) {
    std::vector<const char*> missing = {"icon-data", "shortcut"};
    for (const MenuProperty& property : properties)
        std::erase_if(missing, [&property](std::string_view name) { return name == property.name; });
    return missing;
}

void writeValue(BusWriter& writer, const MenuProperty& property) {
    std::visit(WriteValue{writer}, property.value);
}

void writeProperties(BusWriter& writer, const MenuProperties& properties) {
    writer.open('a', "{sv}");
    for (const MenuProperty& property : properties) {
        writer.open('e', "sv").text(property.name);
        writeValue(writer, property);
        writer.close();
    }
    writer.close();
}

} // namespace kelpa
