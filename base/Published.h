#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

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

/// Those who want to hear of something, in the order they asked. Telling them allocates nothing, and they may
/// come, go and cause further telling while they are told.
template <class... Args>
class Listeners {
  public:
    using Callback = std::function<void(Args...)>;

    Subscription add(Callback callback) {
        auto slot = std::make_shared<Slot>(Slot{std::move(callback), true});
        list_->slots.push_back(slot);
        return Subscription([list = std::weak_ptr<List>(list_), slot] {
            slot->alive = false;
            if (auto living = list.lock())
                living->sweep();
        });
    }

    /// Calls each who was there when the telling began and still is when its turn comes.
    void tell(const Args&... args) const {
        const std::shared_ptr<List> list = list_;
        const std::size_t count = list->slots.size();
        const Telling telling(*list);
        for (std::size_t i = 0; i < count; ++i) {
            const std::shared_ptr<Slot> slot = list->slots[i];
            if (slot->alive)
                slot->callback(args...);
        }
    }

  private:
    struct Slot {
        Callback callback;
        bool alive = true;
    };
    struct List {
        std::vector<std::shared_ptr<Slot>> slots;
        int depth = 0;
        void sweep() {
            if (depth == 0)
                std::erase_if(slots, [](const auto& slot) { return !slot->alive; });
        }
    };
    struct Telling {
        explicit Telling(List& l) : list(l) { ++list.depth; }
        ~Telling() {
            --list.depth;
            list.sweep();
        }
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;
        List& list;
    };

    std::shared_ptr<List> list_ = std::make_shared<List>();
};

/// A value whose every assignment is first handed to each subscriber and only then stored, also when it is
/// equal to the old one. A subscriber that reads it meanwhile sees the old value; where a subscriber assigns
/// it again, the outer assignment is stored last.
template <class T>
class Published {
  public:
    explicit Published(T initial = T()) : value_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const T& value() const { return value_; }

    void set(T value) {
        listeners_.tell(value);
        value_ = std::move(value);
    }

    /// Hears every later assignment until the handle ends; the current value is not replayed.
    Subscription subscribe(std::function<void(const T&)> callback) {
        return listeners_.add(std::move(callback));
    }

  private:
    T value_;
    Listeners<const T&> listeners_;
};

} // namespace kelpa
