#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelpa {

/// Writes JSON text piece by piece. Texts may hold anything: what is no UTF-8 becomes U+FFFD, because a
/// reader would refuse the whole for it. Whoever writes closes what was opened.
class JsonWriter {
  public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    /// The name of the value that follows, in an object.
    JsonWriter& key(std::string_view name);
    JsonWriter& text(std::string_view value);
    JsonWriter& number(std::int64_t value);
    /// A member of an object whose value is a text.
    JsonWriter& member(std::string_view name, std::string_view value) { return key(name).text(value); }

    [[nodiscard]] const std::string& written() const { return written_; }

  private:
    void separate();
    void quote(std::string_view value);

    std::string written_;
    bool afterValue_ = false; ///< a comma is due before the next value
};

} // namespace kelpa
