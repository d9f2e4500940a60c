#include "platform/linux/store/PlistChecks.h"

#include <cstdint>

namespace kelpa {

namespace {

/// About the memory of all that is read, copies included, and of one value beside its bytes: far more than
/// any settings need.
constexpr std::uint64_t most = 8 << 20;
constexpr std::uint64_t costOfOne = 64;

/// Walks over a list as the library will, which makes of each use of an object a new one.
class Walk {
  public:
    explicit Walk(std::string_view bytes) : bytes_(bytes) {}

    bool isTame() {
        constexpr std::size_t head = 8, trailer = 32;
        if (bytes_.size() < head + trailer)
            return false;
        const std::size_t at = bytes_.size() - trailer;
        offsetSize_ = number(at + 6, 1);
        referenceSize_ = number(at + 7, 1);
        objects_ = number(at + 8, 8);
        table_ = number(at + 24, 8);
        const bool sizesFit =
            offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
        return sizesFit && object(number(at + 16, 8), 0);
    }

  private:
    enum Kind : std::uint64_t {
        Data = 4,
        Text = 5,
        WideText = 6,
        Array = 10,
        OrderedSet = 11,
        Set = 12,
        Dictionary = 13
    };

    /// Of so many bytes, the highest first; beyond all bounds where they are not there.
    [[nodiscard]] std::uint64_t number(std::uint64_t at, std::uint64_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at)
            return UINT64_MAX;
        std::uint64_t value = 0;
        for (std::uint64_t i = 0; i < size; ++i)
            value = value << 8U | static_cast<unsigned char>(bytes_[at + i]);
        return value;
    }
    bool object(std::uint64_t index, int depth) {
        if (index >= objects_ || index >= bytes_.size() || depth > deepestPlist)
            return false;
        const std::uint64_t at = number(table_ + index * offsetSize_, offsetSize_);
        const std::uint64_t marker = number(at, 1);
        return marker != UINT64_MAX && value(marker >> 4U, marker & 0xFU, at + 1, depth);
    }
    bool value(std::uint64_t kind, std::uint64_t length, std::uint64_t at, int depth) {
        const bool isLong = length == 0xF && kind >= Data;
        if (isLong) {
            const std::uint64_t size = std::uint64_t{1} << (number(at, 1) & 0x3U);
            length = number(at + 1, size);
            at += 1 + size;
        }
        if (length > bytes_.size() || !spend(costOfOne + length))
            return false;
        const std::uint64_t references = kind == Dictionary ? 2 * length : length;
        return kind < Array || kind > Dictionary || contents(references, at, depth);
    }
    bool contents(std::uint64_t references, std::uint64_t at, int depth) {
        for (std::uint64_t i = 0; i < references; ++i)
            if (!object(number(at + i * referenceSize_, referenceSize_), depth + 1))
                return false;
        return true;
    }
    bool spend(std::uint64_t cost) {
        spent_ += cost;
        return spent_ <= most;
    }

    std::string_view bytes_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t table_ = 0;
    std::uint64_t spent_ = 0;
};

} // namespace

bool isTameBinary(std::string_view bytes) {
    return Walk(bytes).isTame();
}

} // namespace kelpa
