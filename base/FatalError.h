#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace kelpa {

/// Ends the process on a programming error, of which it is given the message.
using FatalErrorHandler = std::function<void(const std::string& message)>;

/// Chooses how programming errors end the process. Without a choice `fatalError` writes to standard error and
/// aborts, as it does where `how` comes back.
void setFatalErrors(FatalErrorHandler how);

/// Ends the process because the program itself is wrong: going on would only spread the fault.
[[noreturn]] void fatalError(const std::string& message);

[[nodiscard]] inline bool productFits(std::int64_t a, std::int64_t b) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    return a == 0 || b == 0 ||
           (a > 0 ? (b > 0 ? a <= highest / b : b >= lowest / a)
                  : (b > 0 ? a >= lowest / b : b >= highest / a));
}

/// Integer arithmetic that ends the process instead of wrapping round: a wrong length would be worse.
inline std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) {
    if (!productFits(a, b))
        fatalError("Integer overflow in multiplication");
    return a * b;
}

inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    if (b > 0 ? a > highest - b : a < lowest - b)
        fatalError("Integer overflow in addition");
    return a + b;
}

inline std::int64_t checkedSubtract(std::int64_t a, std::int64_t b) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    if (b < 0 ? a > highest + b : a < lowest + b)
        fatalError("Integer overflow in subtraction");
    return a - b;
}

/// What a controller of shared members keeps, from `wire` on until the process ends. A use before that ends
/// the process: the program was put together in a wrong order.
template <class T>
class Wired {
  public:
    /// `what` begins the message of a use too soon, as "The countdown was"; it is a literal.
    explicit constexpr Wired(const char* what) : what_(what) {}

    /// Puts another object in the place of any before.
    void wire(T value) { value_ = std::make_unique<T>(std::move(value)); }

    [[nodiscard]] T& operator*() const {
        if (!value_)
            fatalError(std::string(what_) + " used before the program was set up");
        return *value_;
    }
    [[nodiscard]] T* operator->() const { return &**this; }

  private:
    const char* what_;
    std::unique_ptr<T> value_;
};

} // namespace kelpa
