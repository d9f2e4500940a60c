#pragma once

#include "base/Published.h"
#include "platform/ports/DefaultsStore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kelpa {

/// How many cases an enumeration that is stored has, which are numbered from 0; each says it of itself.
template <class E>
extern const std::int64_t caseCount;

/// The case that a number stands for; nothing where it stands for none.
template <class E>
[[nodiscard]] constexpr std::optional<E> fromRawValue(std::int64_t rawValue) {
    return rawValue >= 0 && rawValue < caseCount<E> ? std::optional(static_cast<E>(rawValue)) : std::nullopt;
}

/// How a type is kept in the store: as one of its kinds of values. An enumeration with a `caseCount` is kept
/// as its integer; a number that names no case reads as absent.
template <class T>
struct StoredAs {
    static std::optional<T> read(const DefaultsStore& store, std::string_view key) {
        return store.get<T>(key);
    }
    static void write(DefaultsStore& store, std::string_view key, const T& value) { store.set(key, value); }
};

template <class E>
requires std::is_enum_v<E>
struct StoredAs<E> {
    static std::optional<E> read(const DefaultsStore& store, std::string_view key) {
        const auto raw = store.get<std::int64_t>(key);
        return raw ? fromRawValue<E>(*raw) : std::nullopt;
    }
    static void write(DefaultsStore& store, std::string_view key, E value) {
        store.set(key, static_cast<std::int64_t>(value));
    }
};

/// A value that is read anew at every access, written with all that a change sets in motion, and observed for
/// what this program writes. Controls of panes work on it.
template <class T>
class Setting {
  public:
    using Told = std::function<void(const T&)>;

    Setting() = default;
    virtual ~Setting() = default;
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    [[nodiscard]] virtual T operator()() const = 0;
    virtual void set(const T& value) = 0;
    /// Told after each write by this program, also of an equal value.
    virtual Subscription observe(Told told) = 0;
};

/// A setting that is stored nowhere.
template <class T>
class TransientSetting final : public Setting<T> {
  public:
    using Told = typename Setting<T>::Told;

    explicit TransientSetting(T value) : value_(std::move(value)) {}

    [[nodiscard]] T operator()() const override { return value_; }
    void set(const T& value) override {
        value_ = value;
        changed_.tell(value);
    }
    Subscription observe(Told told) override { return changed_.add(std::move(told)); }

  private:
    T value_;
    Listeners<const T&> changed_;
};

/// A setting in the store: a key, a type and the default that holds while the key is absent. It is written
/// through at every assignment; then its side effect runs, and then those who observe it are told.
template <class T, class Storage = StoredAs<T>>
class StoredSetting final : public Setting<T> {
  public:
    using Told = typename Setting<T>::Told;

    StoredSetting(DefaultsStore& store, std::string_view key, T defaultValue, Told afterWrite = {})
        : store_(store), key_(key), default_(std::move(defaultValue)), afterWrite_(std::move(afterWrite)) {}

    [[nodiscard]] T operator()() const override { return Storage::read(store_, key_).value_or(default_); }

    void set(const T& value) override {
        const bool changes = afterChange_ && (*this)() != value;
        Storage::write(store_, key_, value);
        if (afterWrite_)
            afterWrite_(value);
        changed_.tell(value);
        if (changes)
            afterChange_(value);
    }

    Subscription observe(Told told) override { return changed_.add(std::move(told)); }
    /// Runs at the end of each assignment of another value.
    void whenChanged(Told run) { afterChange_ = std::move(run); }

    [[nodiscard]] std::string_view key() const { return key_; }

  private:
    DefaultsStore& store_;
    std::string_view key_; ///< of a literal
    T default_;
    Told afterWrite_;
    Told afterChange_;
    Listeners<const T&> changed_;
};

} // namespace kelpa
