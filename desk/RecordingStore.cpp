#include "desk/RecordingStore.h"

#include "base/Text.h"

namespace kelpa::desk {

namespace {

/// Reads the arrays of texts that scripts hold: the usual escapes, but no surrogate pairs.
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
        constexpr std::string_view names = "\"\\/nt";
        constexpr std::string_view values = "\"\\/\n\t";
        const auto which = at_ < text_.size() ? names.find(text_[at_++]) : std::string_view::npos;
        if (which == std::string_view::npos)
            return false;
        out.push_back(values[which]);
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
