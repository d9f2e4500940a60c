#include "platform/linux/bus/BusMessage.h"

#include <string_view>

namespace kelpa {

namespace {

/// A value of a type that the interface does not have is passed over.
void readEntry(sd_bus_message* message, BusValues& values) {
    const char *name = nullptr, *contents = nullptr, *text = nullptr;
    std::int64_t number = 0;
    int truth = 0;
    if (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &name) < 0 ||
        sd_bus_message_peek_type(message, nullptr, &contents) < 0 || contents == nullptr)
        return;
    const std::string_view type = contents;
    if (type == "s" && sd_bus_message_read(message, "v", "s", &text) >= 0)
        values.insert_or_assign(name, BusValue(std::string(text)));
    else if (type == "x" && sd_bus_message_read(message, "v", "x", &number) >= 0)
        values.insert_or_assign(name, BusValue(number));
    else if (type == "b" && sd_bus_message_read(message, "v", "b", &truth) >= 0)
        values.insert_or_assign(name, BusValue(truth != 0));
    else
        sd_bus_message_skip(message, "v");
}

} // namespace

std::string signalRule(const BusAddress& from, const char* member) {
    std::string rule = "type='signal'";
    const auto must = [&rule](const char* key, const char* value) {
        if (value != nullptr)
            rule.append(",").append(key).append("='").append(value).append("'");
    };
    must("sender", from.service);
    must("path", from.path);
    must("interface", from.interface);
    must("member", member);
    return rule;
}

std::string signalRule(const BusAddress& from, const char* member, const std::string& first) {
    return signalRule(from, member) + ",arg0='" + first + "'";
}

BusMessage newAnswer(sd_bus_message* call) {
    return ownedBy<BusMessage>([call](auto** made) { sd_bus_message_new_method_return(call, made); });
}

const char* typeOf(const BusValue& value) {
    if (std::holds_alternative<std::string>(value))
        return "s";
    return std::holds_alternative<bool>(value) ? "b" : "x";
}

void writeValue(BusWriter& writer, const BusValue& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        writer.text(*text);
    else if (const auto* truth = std::get_if<bool>(&value))
        writer.boolean(*truth);
    else
        writer.number(std::get<std::int64_t>(value));
}

void writeEntry(BusWriter& writer, const char* name, const BusValue& value) {
    writer.entry(name, typeOf(value), [&value](BusWriter& out) { writeValue(out, value); });
}

bool readValues(sd_bus_message* message, BusValues& values) {
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0)
        return false;
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        readEntry(message, values);
        if (sd_bus_message_exit_container(message) < 0)
            return false;
    }
    return sd_bus_message_exit_container(message) >= 0;
}

} // namespace kelpa
