#pragma once

#include <functional>
#include <utility>

namespace kelpa {

/// Owns the right to be told of something: destroying, cancelling or overwriting the handle ends it.
/// Cancelling from inside the callback that it belongs to is allowed.
class [[nodiscard]] Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            auto next = std::exchange(other.cancel_, nullptr);
            cancel();
            cancel_ = std::move(next);
        }
        return *this;
    }
    ~Subscription() { cancel(); }

    void cancel() {
        if (auto end = std::exchange(cancel_, nullptr))
            end();
    }
    [[nodiscard]] bool active() const { return static_cast<bool>(cancel_); }

  private:
    std::function<void()> cancel_;
};

} // namespace kelpa
