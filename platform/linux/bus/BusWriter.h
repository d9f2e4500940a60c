#pragma once

#include <string>
#include <systemd/sd-bus.h>

namespace kelpa {

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

} // namespace kelpa
