#include "platform/linux/update/VersionOrder.h"

#include <algorithm>

namespace kelpa {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A run of digits, a run of letters, or the end.
struct Part {
    enum class Kind { Word, End, Number }; ///< in the order in which they make a version later
    Kind kind = Kind::End;
    std::string_view text;
};

class Parts {
  public:
    explicit Parts(std::string_view version) : rest_(version.substr(0, version.find('+'))) {}

    Part next() {
        while (!rest_.empty() && !isDigit(rest_.front()) && !isLetter(rest_.front()))
            rest_.remove_prefix(1);
        if (rest_.empty())
            return {};
        const bool number = isDigit(rest_.front());
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), number ? isDigit : isLetter);
        const auto length = static_cast<std::size_t>(end - rest_.begin());
        const Part part{number ? Part::Kind::Number : Part::Kind::Word, rest_.substr(0, length)};
        rest_.remove_prefix(length);
        return part;
    }

  private:
    std::string_view rest_;
};

std::string_view withoutZeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

std::weak_ordering numberOrder(std::string_view left, std::string_view right) {
    left = withoutZeros(left);
    right = withoutZeros(right);
    if (left.size() != right.size())
        return left.size() <=> right.size();
    return left <=> right;
}

std::weak_ordering wordOrder(std::string_view left, std::string_view right) {
    return std::lexicographical_compare_three_way(
        left.begin(), left.end(), right.begin(), right.end(),
        [](char a, char b) -> std::weak_ordering { return lower(a) <=> lower(b); });
}

/// The end counts as a zero beside a number: 1 and 1.0 are the same.
std::weak_ordering partOrder(const Part& left, const Part& right) {
    if (left.kind == Part::Kind::Word || right.kind == Part::Kind::Word)
        return left.kind == right.kind ? wordOrder(left.text, right.text) : left.kind <=> right.kind;
    return numberOrder(left.text, right.text);
}

} // namespace

std::weak_ordering versionOrder(std::string_view left, std::string_view right) {
    Parts lefts(left);
    Parts rights(right);
    for (;;) {
        const Part a = lefts.next();
        const Part b = rights.next();
        if (a.kind == Part::Kind::End && b.kind == Part::Kind::End)
            return std::weak_ordering::equivalent;
        if (const auto order = partOrder(a, b); order != 0)
            return order;
    }
}

} // namespace kelpa
