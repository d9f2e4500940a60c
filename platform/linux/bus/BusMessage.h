#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>
#include <utility>
#include <variant>

namespace kelpa {

template <auto Release>
struct ReleaseBy {
    template <typename Thing>
    void operator()(Thing* thing) const {
        Release(thing);
    }
};
using BusMessage = std::unique_ptr<sd_bus_message, ReleaseBy<sd_bus_message_unref>>;

/// Owns what a function of the bus library hands out through a pointer; null when it handed out nothing.
template <typename Owner, typename Make>
[[nodiscard]] Owner ownedBy(const Make& make) {
    typename Owner::pointer made = nullptr;
    make(&made);
    return Owner(made);
}

/// Whom a call goes to, or where signals come from.
struct BusAddress {
    const char* service;
    const char* path;
    const char* interface;
};

inline constexpr BusAddress theBus = {"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                      "org.freedesktop.DBus"};
inline constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

/// The rule by which the bus hands on signals. What is null may be anything.
[[nodiscard]] std::string signalRule(const BusAddress& from, const char* member);
/// The same for signals whose first value is a certain text.
[[nodiscard]] std::string signalRule(const BusAddress& from, const char* member, const std::string& first);

/// Whether there is a message, and no error.
[[nodiscard]] inline bool isGood(sd_bus_message* message) {
    return message != nullptr && sd_bus_message_is_method_error(message, nullptr) == 0;
}
/// Reads values of these types; false when there is no message, an error, or something else in it.
template <typename... Values>
bool readFrom(sd_bus_message* message, const char* types, Values... values) {
    return isGood(message) && sd_bus_message_read(message, types, values...) >= 0;
}
/// Fills a message piece by piece. The first failure sticks, and `result` tells of it at the end.
class BusWriter {
  public:
    explicit BusWriter(sd_bus_message* message) : message_(message) {}

    BusWriter& text(const char* value) { return basic(SD_BUS_TYPE_STRING, value); }
    BusWriter& text(const std::string& value) { return text(value.c_str()); }
    BusWriter& object(const char* path) { return basic(SD_BUS_TYPE_OBJECT_PATH, path); }
    BusWriter& integer(std::int32_t value) { return basic(SD_BUS_TYPE_INT32, &value); }
    BusWriter& natural(std::uint32_t value) { return basic(SD_BUS_TYPE_UINT32, &value); }
    BusWriter& number(std::int64_t value) { return basic(SD_BUS_TYPE_INT64, &value); }
    BusWriter& boolean(bool value) {
        const int number = value ? 1 : 0;
        return basic(SD_BUS_TYPE_BOOLEAN, &number);
    }
    /// The message keeps a descriptor of its own for the same file.
    BusWriter& file(int fd) { return basic(SD_BUS_TYPE_UNIX_FD, &fd); }
    BusWriter& bytes(const std::string& value) {
        return then(sd_bus_message_append_array(message_, SD_BUS_TYPE_BYTE, value.data(), value.size()));
    }
    BusWriter& open(char container, const char* contents) {
        return then(sd_bus_message_open_container(message_, container, contents));
    }
    BusWriter& close() { return then(sd_bus_message_close_container(message_)); }
    /// An entry of an `a{sv}` that is open; `write` writes its value, which has the type `type`.
    template <typename Write>
    BusWriter& entry(const char* name, const char* type, const Write& write) {
        open('e', "sv").text(name).open('v', type);
        write(*this);
        return close().close();
    }
    /// The same of simple values, which the library's own function takes.
    template <typename... Values>
    BusWriter& option(const char* name, const char* types, Values... values) {
        return then(sd_bus_message_append(message_, "{sv}", name, types, values...));
    }
    /// 0, or the first failure as the library numbers them.
    [[nodiscard]] int result() const { return result_; }

  private:
    BusWriter& basic(char type, const void* value) {
        return then(sd_bus_message_append_basic(message_, type, value));
    }
    BusWriter& then(int result) {
        if (result_ >= 0 && result < 0)
            result_ = result;
        return *this;
    }

    sd_bus_message* message_;
    int result_ = 0;
};

/// An answer to `call`, still empty.
[[nodiscard]] BusMessage newAnswer(sd_bus_message* call);
/// Answers with what `write` writes, or with its first failure; gives what the library wants of a method.
template <typename Write>
int answer(sd_bus_message* call, const Write& write) {
    const BusMessage message = newAnswer(call);
    BusWriter writer(message.get());
    write(writer);
    return writer.result() < 0 ? writer.result() : sd_bus_message_send(message.get());
}

/// A property's value: what the interface to scripts is made of.
using BusValue = std::variant<std::string, std::int64_t, bool>;
using BusValues = std::map<std::string, BusValue, std::less<>>;

/// As the bus library names it.
[[nodiscard]] const char* typeOf(const BusValue& value);
void writeValue(BusWriter& writer, const BusValue& value);
/// Writes name and value as an entry of an `a{sv}` that is open.
void writeEntry(BusWriter& writer, const char* name, const BusValue& value);
/// Reads the `a{sv}` that comes next into `values`, over what they hold; entries of other types are passed
/// over. False when there is none.
bool readValues(sd_bus_message* message, BusValues& values);

} // namespace kelpa
