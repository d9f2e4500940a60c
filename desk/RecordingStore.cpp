#include "desk/RecordingStore.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace kelpa::desk {

namespace {

/// Reads the arrays of texts that scripts hold.
class TextArrayReader {
  public:
    explicit TextArrayReader(std::string_view text) : text_(text) {}

    std::optional<std::vector<std::string>> read() {
        std::vector<std::string> texts;
        if (!accept('['))
            return std::nullopt;
        if (accept(']'))
            return atEnd() ? std::optional(texts) : std::nullopt;
        do {
            std::string text;
            if (!accept('"') || !string(text))
                return std::nullopt;
            texts.push_back(std::move(text));
        } while (accept(','));
        return accept(']') && atEnd() ? std::optional(texts) : std::nullopt;
    }

  private:
    void skipSpace() {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t'))
            ++at_;
    }
    bool accept(char wanted) {
        skipSpace();
        const bool there = at_ < text_.size() && text_[at_] == wanted;
        at_ += there ? 1 : 0;
        return there;
    }
    bool atEnd() {
        skipSpace();
        return at_ == text_.size();
    }
    bool string(std::string& out) {
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '"')
                return true;
            if (c != '\\')
                out.push_back(c);
            else if (!escape(out))
                return false;
        }
        return false;
    }
    bool escape(std::string& out) {
        constexpr std::string_view names = "\"\\/bfnrt";
        constexpr std::string_view values = "\"\\/\b\f\n\r\t";
        if (next('u'))
            return character(out);
        const auto which = at_ < text_.size() ? names.find(text_[at_++]) : std::string_view::npos;
        if (which == std::string_view::npos)
            return false;
        out.push_back(values[which]);
        return true;
    }

    bool next(char wanted) {
        const bool there = at_ < text_.size() && text_[at_] == wanted;
        at_ += there ? 1 : 0;
        return there;
    }
    std::optional<char32_t> fourDigits() {
        constexpr std::size_t count = 4;
        const std::string_view digits = text_.substr(std::min(at_, text_.size()), count);
        std::uint32_t unit = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
        if (error != std::errc() || end != digits.data() + count)
            return std::nullopt;
        at_ += count;
        return unit;
    }
    /// Behind "\\u": a character of the basic plane, or the first half of one beyond it, whose other half
    /// follows.
    bool character(std::string& out) {
        const auto isHalf = [](char32_t unit, char32_t first) {
            return unit >= first && unit < first + 0x400;
        };
        const auto unit = fourDigits();
        if (!unit || isHalf(*unit, 0xDC00))
            return false;
        if (!isHalf(*unit, 0xD800))
            return append(*unit, out);
        const auto low = next('\\') && next('u') ? fourDigits() : std::nullopt;
        return low && isHalf(*low, 0xDC00) &&
               append(0x10000 + (*unit - 0xD800) * 0x400 + (*low - 0xDC00), out);
    }
    /// Always true.
    static bool append(char32_t code, std::string& out) {
        const auto byte = [&out](char32_t bits) { out.push_back(static_cast<char>(bits)); };
        const auto more = [&](unsigned shift) { byte(0x80U | (code >> shift & 0x3FU)); };
        if (code < 0x80)
            byte(code);
        else if (code < 0x800)
            byte(0xC0U | code >> 6U);
        else if (code < 0x10000)
            byte(0xE0U | code >> 12U);
        else
            byte(0xF0U | code >> 18U);
        for (unsigned shift : {12U, 6U, 0U})
            if (code >= (shift == 12U ? 0x10000U : shift == 6U ? 0x800U : 0x80U))
                more(shift);
        return true;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

std::string jsonTexts(const std::vector<std::string>& texts) {
    std::string json;
    for (const std::string& text : texts)
        json += (json.empty() ? "" : ",") + inQuotes(text);
    return "[" + json + "]";
}

std::optional<std::vector<std::string>> textsFromJson(std::string_view json) {
    return TextArrayReader(json).read();
}

void RecordingStore::write(std::string_view key, StoredValue value, const std::string& noted) {
    values_.insert_or_assign(std::string(key), std::move(value));
    journal_.note("set", std::string(key) + " " + noted);
}

void RecordingStore::setBoolean(std::string_view key, bool value) {
    write(key, value, value ? "bool true" : "bool false");
}

void RecordingStore::setInteger(std::string_view key, std::int64_t value) {
    write(key, value, "int " + std::to_string(value));
}

void RecordingStore::setReal(std::string_view key, double value) {
    write(key, value, "real " + decimalText(value));
}

void RecordingStore::setText(std::string_view key, const std::string& value) {
    write(key, value, "text " + oneLine(value));
}

void RecordingStore::setTexts(std::string_view key, const std::vector<std::string>& value) {
    write(key, value, "list " + jsonTexts(value));
}

} // namespace kelpa::desk
