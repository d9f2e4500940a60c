#include "platform/linux/store/PlistDocument.h"

#include "platform/linux/store/PlistChecks.h"

#include <plist/plist.h>

#include <clocale>
#include <cstdlib>
#include <memory>
#include <utility>

namespace kelpa {

namespace {

/// The library reads and writes reals by the locale's decimal point; a property list always has a full stop.
class DecimalPoint {
  public:
    DecimalPoint() : old_(uselocale(plain())) {}
    ~DecimalPoint() { uselocale(old_); }
    DecimalPoint(const DecimalPoint&) = delete;
    DecimalPoint& operator=(const DecimalPoint&) = delete;

  private:
    static locale_t plain() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t old_;
};

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

std::string xmlOf(plist_t node) {
    const DecimalPoint point;
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &xml, &length);
    const std::unique_ptr<char, decltype(&plist_to_xml_free)> owned(xml, plist_to_xml_free);
    return xml == nullptr ? std::string() : std::string(xml, length);
}

plist_t parsed(const std::string& bytes) {
    const DecimalPoint point;
    plist_t root = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    return root;
}

/// Read anew from its XML: of the binary form the library would take a zero byte into a key, and end the
/// program when it is asked for that key.
plist_t parsedBinary(const std::string& bytes) {
    const plist_t root = isTameBinary(bytes) ? parsed(bytes) : nullptr;
    const std::string xml = root == nullptr ? std::string() : xmlOf(root);
    plist_free(root);
    return xml.find('\0') == std::string::npos ? parsed(xml) : nullptr;
}

plist_t parsedXml(const std::string& bytes) {
    const auto xml = tameXml(bytes);
    return xml ? parsed(*xml) : nullptr;
}

/// The library hands out 64 bits without their sign: with the top bit set only the written form tells a
/// negative number from one that is too large.
std::optional<StoreValue> integerOf(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    const auto value = static_cast<std::int64_t>(bits);
    if (value < 0 && xmlOf(node).find("<integer>-") == std::string::npos)
        return std::nullopt;
    return value;
}

std::string textOf(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : std::string(text, length);
}

std::optional<StoreValue> textsOf(plist_t array) {
    std::vector<std::string> texts;
    for (std::uint32_t i = 0; i < plist_array_get_size(array); ++i) {
        const plist_t item = plist_array_get_item(array, i);
        if (plist_get_node_type(item) != PLIST_STRING)
            return std::nullopt;
        texts.push_back(textOf(item));
    }
    return texts;
}

std::optional<StoreValue> valueOf(plist_t node) {
    std::uint8_t truth = 0;
    double number = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &truth);
        return truth != 0;
    case PLIST_UINT:
        return integerOf(node);
    case PLIST_REAL:
        plist_get_real_val(node, &number);
        return number;
    case PLIST_STRING:
        return textOf(node);
    case PLIST_ARRAY:
        return textsOf(node);
    default:
        return std::nullopt;
    }
}

std::string representable(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n' || c == '\r')
            result += c;
        else
            result += "\xEF\xBF\xBD";
    }
    return result;
}

struct MakeNode {
    plist_t operator()(bool value) const { return plist_new_bool(value ? 1 : 0); }
    plist_t operator()(std::int64_t value) const {
        if (value >= 0)
            return plist_new_uint(static_cast<std::uint64_t>(value));
        // There is no constructor for negative numbers that every version of the library has.
        return parsed("<plist version=\"1.0\"><integer>" + std::to_string(value) + "</integer></plist>");
    }
    plist_t operator()(double value) const { return plist_new_real(value); }
    plist_t operator()(const std::string& value) const {
        return plist_new_string(representable(value).c_str());
    }
    plist_t operator()(const std::vector<std::string>& values) const {
        const plist_t array = plist_new_array();
        for (const std::string& value : values)
            plist_array_append_item(array, (*this)(value));
        return array;
    }
};

} // namespace

PlistDocument::PlistDocument() : PlistDocument(plist_new_dict()) {}

PlistDocument::PlistDocument(void* root) : root_(root, plist_free) {}

std::optional<PlistDocument> PlistDocument::parse(const std::string& bytes) {
    const plist_t root = bytes.starts_with("bplist") ? parsedBinary(bytes) : parsedXml(bytes);
    if (root == nullptr)
        return std::nullopt;
    PlistDocument document(root);
    if (plist_get_node_type(root) != PLIST_DICT)
        return std::nullopt;
    return document;
}

StoreValues PlistDocument::values() const {
    StoreValues values;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(root_.get(), &position);
    const std::unique_ptr<void, Free> owned(position);
    for (;;) {
        char* key = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(root_.get(), position, &key, &node);
        const std::unique_ptr<char, Free> ownedKey(key);
        if (node == nullptr)
            return values;
        if (auto value = valueOf(node))
            values.insert_or_assign(key, std::move(*value));
    }
}

void PlistDocument::set(const std::string& key, const StoreValue& value) {
    plist_dict_set_item(root_.get(), key.c_str(), std::visit(MakeNode(), value));
}

std::string PlistDocument::xml() const {
    return xmlOf(root_.get());
}

} // namespace kelpa
