#pragma once

#include "base/FatalError.h"

#include <memory>
#include <string>
#include <utility>

namespace kelpa {

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
