#include "platform/linux/tray/DBusMenu.h"

#include "platform/linux/tray/ItemPictures.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace kelpa {

namespace {

constexpr const char* interface = "com.canonical.dbusmenu";

/// What every host reads the same, at any time.
struct Constants {
    std::uint32_t version = 3;
    const char* textDirection = "ltr";
    const char* status = "normal";
    const char* const* noFolders = nullptr;
};
constexpr Constants constants;

std::size_t placeOf(const void* constant) {
    return reinterpret_cast<std::size_t>(constant);
}

constexpr auto fixed = SD_BUS_VTABLE_PROPERTY_CONST | SD_BUS_VTABLE_ABSOLUTE_OFFSET;

const sd_bus_vtable vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", nullptr, placeOf(&constants.version), fixed),
    SD_BUS_PROPERTY("TextDirection", "s", nullptr, placeOf(&constants.textDirection), fixed),
    SD_BUS_PROPERTY("Status", "s", nullptr, placeOf(&constants.status), fixed),
    SD_BUS_PROPERTY("IconThemePath", "as", nullptr, placeOf(&constants.noFolders), fixed),
    SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", BusHandler<&DBusMenu::getLayout>::call, 0),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", BusHandler<&DBusMenu::getGroupProperties>::call,
                  0),
    SD_BUS_METHOD("GetProperty", "is", "v", BusHandler<&DBusMenu::getProperty>::call, 0),
    SD_BUS_METHOD("Event", "isvu", "", BusHandler<&DBusMenu::event>::call, 0),
    SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", BusHandler<&DBusMenu::eventGroup>::call, 0),
    SD_BUS_METHOD("AboutToShow", "i", "b", BusHandler<&DBusMenu::aboutToShow>::call, 0),
    SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", BusHandler<&DBusMenu::aboutToShowGroup>::call, 0),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END,
};

/// One property of a menu line as hosts know it.
struct MenuProperty {
    const char* name;
    const char* type;
    std::function<void(BusWriter&)> write;
};
using MenuProperties = std::vector<MenuProperty>;

MenuProperty text(const char* name, std::string value) {
    return {name, "s", [value = std::move(value)](BusWriter& out) { out.text(value); }};
}

MenuProperty truth(const char* name, bool value) {
    return {name, "b", [value](BusWriter& out) { out.boolean(value); }};
}

/// A key to be pressed together with Control.
MenuProperty shortcut(const std::string& key) {
    return {"shortcut", "aas", [key](BusWriter& out) {
                out.open('a', "as").open('a', "s").text("Control").text(key).close().close();
            }};
}

void writeProperties(BusWriter& writer, const MenuProperties& properties) {
    writer.open('a', "{sv}");
    for (const MenuProperty& property : properties)
        writer.entry(property.name, property.type, property.write);
    writer.close();
}

/// A single underscore would mark the next letter as the one to press.
std::string escaped(const std::string& title) {
    std::string label;
    for (const char c : title)
        label.append(c == '_' ? 2 : 1, c);
    return label;
}

/// How a reader of the menu names keys. Those of letters and digits are the letters to everybody.
enum class Keys {
    Named,     ///< as the window system names them
    Characters ///< as what they write
};

std::string keyName(const std::string& key, Keys keys) {
    return key == "," && keys == Keys::Named ? "comma" : key;
}

/// Nothing says how keys are named. Hosts made with GTK read the whole menu at once and know the window
/// system's names, those made with Qt read level by level and know characters.
Keys keysOf(int depth) {
    return depth == 1 ? Keys::Characters : Keys::Named;
}

/// Everything that hosts can know of a line. The line with the id 0 is the menu itself.
MenuProperties propertiesOf(const MenuLine& line, const std::string& data, Keys keys = Keys::Named) {
    if (line.id == 0)
        return {text("children-display", "submenu")};
    if (line.separator)
        return {text("type", "separator")};
    MenuProperties properties = {text("label", escaped(line.title)), truth("enabled", line.enabled),
                                 truth("visible", true), text("disposition", "normal")};
    if (auto picture = symbolPicture(data, line.image))
        properties.push_back(
            {"icon-data", "ay", [bytes = std::move(*picture)](BusWriter& out) { out.bytes(bytes); }});
    if (!line.keyEquivalent.empty())
        properties.push_back(shortcut(keyName(line.keyEquivalent, keys)));
    return properties;
}

/// Those of `properties` that are among `names`; all of them when no names are given.
MenuProperties selected(MenuProperties properties, const std::vector<std::string>& names) {
    const auto unwanted = [&names](const MenuProperty& property) {
        return std::find(names.begin(), names.end(), property.name) == names.end();
    };
    if (!names.empty())
        std::erase_if(properties, unwanted);
    return properties;
}

/// The properties that a line can have and this one has not.
std::vector<const char*> missingFrom(const MenuProperties& properties) {
    std::vector<const char*> missing = {"icon-data", "shortcut"};
    for (const MenuProperty& property : properties)
        std::erase_if(missing, [&property](std::string_view name) { return name == property.name; });
    return missing;
}

/// The array that comes next, of elements of a basic type, which the library reads as `Read`.
template <typename Element, typename Read = Element>
std::vector<Element> readArray(sd_bus_message* message, const char* type) {
    std::vector<Element> elements;
    Read element{};
    sd_bus_message_enter_container(message, 'a', type);
    while (sd_bus_message_read_basic(message, *type, &element) > 0)
        elements.push_back(element);
    sd_bus_message_exit_container(message);
    return elements;
}

std::vector<std::string> readTexts(sd_bus_message* message) {
    return readArray<std::string, const char*>(message, "s");
}

std::vector<int> readIds(sd_bus_message* message) {
    return readArray<int>(message, "i");
}

void writeIds(BusWriter& writer, const std::vector<int>& ids) {
    writer.open('a', "i");
    for (const int id : ids)
        writer.integer(id);
    writer.close();
}

int unknownLine(sd_bus_error* error, int id) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "The menu has no line %d", id);
}

} // namespace

DBusMenu::DBusMenu(EventLoop& loop, Bus& bus, const std::string& data, const StatusItemModel& model,
                   MenuClicks& clicks, ItemActivation& activation)
    : loop_(loop), bus_(bus), data_(data), model_(model), clicks_(clicks), activation_(activation),
      object_(bus.serve(path, interface, vtable, this)) {}

const MenuLine* DBusMenu::find(int id) const {
    if (id == 0)
        return &root_;
    const auto found = std::find_if(model_.lines.begin(), model_.lines.end(),
                                    [id](const MenuLine& line) { return line.id == id; });
    return found == model_.lines.end() ? nullptr : &*found;
}

void DBusMenu::layoutChanged() {
    ++revision_;
    if (bus_.keepsUp())
        sd_bus_emit_signal(bus_.handle(), path, interface, "LayoutUpdated", "ui", revision_, 0);
}

void DBusMenu::lineChanged(const MenuLine& line) {
    const BusMessage signal =
        bus_.keepsUp() ? bus_.newSignal(path, interface, "ItemsPropertiesUpdated") : nullptr;
    if (!signal)
        return;
    const auto properties = propertiesOf(line, data_);
    BusWriter writer(signal.get());
    writer.open('a', "(ia{sv})").open('r', "ia{sv}").integer(line.id);
    writeProperties(writer, properties);
    writer.close().close().open('a', "(ias)").open('r', "ias").integer(line.id).open('a', "s");
    for (const char* name : missingFrom(properties))
        writer.text(name);
    writer.close().close().close();
    if (writer.result() >= 0)
        bus_.send(signal);
}

// The library has compared the types of a call with those of the method.

/// The line whose number comes next in a call; null where the menu has none, which the caller is told.
const MenuLine* DBusMenu::readLine(sd_bus_message* call, sd_bus_error* error) const {
    int id = 0;
    sd_bus_message_read_basic(call, 'i', &id);
    const MenuLine* line = find(id);
    if (line == nullptr)
        unknownLine(error, id);
    return line;
}

int DBusMenu::getLayout(sd_bus_message* call, sd_bus_error* error) {
    const MenuLine* parent = readLine(call, error);
    if (parent == nullptr)
        return 0;
    int depth = 0;
    sd_bus_message_read_basic(call, 'i', &depth);
    const auto names = readTexts(call);
    return answer(call, [&](BusWriter& out) { writeLayout(out, *parent, depth, names); });
}

void DBusMenu::writeLayout(BusWriter& writer, const MenuLine& parent, int depth,
                           const std::vector<std::string>& names) const {
    const auto open = [&](const MenuLine& line) {
        writer.open('r', "ia{sv}av").integer(line.id);
        writeProperties(writer, selected(propertiesOf(line, data_, keysOf(depth)), names));
        writer.open('a', "v");
    };
    writer.natural(revision_);
    open(parent);
    if (parent.id == 0 && depth != 0) {
        for (const MenuLine& line : model_.lines) {
            writer.open('v', "(ia{sv}av)");
            open(line);
            writer.close().close().close();
        }
    }
    writer.close().close();
}

int DBusMenu::getGroupProperties(sd_bus_message* call, sd_bus_error*) {
    auto ids = readIds(call);
    const auto names = readTexts(call);
    if (ids.empty())
        for (const MenuLine& line : model_.lines)
            ids.push_back(line.id);
    return answer(call, [&](BusWriter& out) {
        out.open('a', "(ia{sv})");
        for (const int id : ids) {
            const MenuLine* line = find(id);
            if (line == nullptr)
                continue;
            out.open('r', "ia{sv}").integer(id);
            writeProperties(out, selected(propertiesOf(*line, data_), names));
            out.close();
        }
        out.close();
    });
}

int DBusMenu::getProperty(sd_bus_message* call, sd_bus_error* error) {
    const MenuLine* line = readLine(call, error);
    if (line == nullptr)
        return 0;
    const char* name = nullptr;
    sd_bus_message_read_basic(call, 's', &name);
    const auto properties = selected(propertiesOf(*line, data_), {name});
    if (properties.empty())
        return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "Line %d has no property %s", line->id,
                                 name);
    return answer(call, [&property = properties.front()](BusWriter& out) {
        out.open('v', property.type);
        property.write(out);
        out.close();
    });
}

/// The click is carried out after the answer has gone out: it may change the menu or end the program.
void DBusMenu::obey(const MenuLine& line, sd_bus_message* event) {
    const char* told = nullptr;
    sd_bus_message_read_basic(event, 's', &told);
    const std::string_view what = told;
    // A host may be behind and click on a line that cannot be chosen any more.
    if (what == "clicked" && line.id != 0 && line.enabled && !line.separator)
        loop_.async([&clicks = clicks_, id = line.id] { clicks.didClick(id); });
    if (line.id == 0 && (what == "opened" || what == "closed"))
        activation_.hostsMenuMoved(what == "opened");
}

int DBusMenu::event(sd_bus_message* call, sd_bus_error* error) {
    const MenuLine* line = readLine(call, error);
    if (line == nullptr)
        return 0;
    obey(*line, call);
    return sd_bus_reply_method_return(call, nullptr);
}

int DBusMenu::eventGroup(sd_bus_message* call, sd_bus_error* error) {
    std::vector<int> unknown;
    bool anyKnown = false;
    int id = 0;
    sd_bus_message_enter_container(call, 'a', "(isvu)");
    while (sd_bus_message_enter_container(call, 'r', "isvu") > 0) {
        sd_bus_message_read_basic(call, 'i', &id);
        const MenuLine* line = find(id);
        if (line != nullptr)
            obey(*line, call);
        else
            unknown.push_back(id);
        anyKnown = anyKnown || line != nullptr;
        sd_bus_message_skip(call, line != nullptr ? "vu" : "svu");
        sd_bus_message_exit_container(call);
    }
    if (!unknown.empty() && !anyKnown)
        return unknownLine(error, unknown.front());
    return answer(call, [&unknown](BusWriter& out) { writeIds(out, unknown); });
}

/// The menu is up to date at any time, so nothing needs to be fetched again.
int DBusMenu::aboutToShow(sd_bus_message* call, sd_bus_error* error) {
    const MenuLine* line = readLine(call, error);
    if (line == nullptr)
        return 0;
    if (line->id == 0)
        activation_.hostsMenuMoved(true);
    return sd_bus_reply_method_return(call, "b", 0);
}

int DBusMenu::aboutToShowGroup(sd_bus_message* call, sd_bus_error*) {
    auto ids = readIds(call);
    if (std::find(ids.begin(), ids.end(), 0) != ids.end())
        activation_.hostsMenuMoved(true);
    std::erase_if(ids, [this](int id) { return find(id) != nullptr; });
    return answer(call, [&ids](BusWriter& out) {
        writeIds(out, {});
        writeIds(out, ids);
    });
}

} // namespace kelpa
