#pragma once

#include "prefs/Setting.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace kelpa {

/// A value as a control works on it: read anew whenever it is shown, written with all that a change sets in
/// motion, and observed for changes that this program makes. What it is bound to must outlive it.
template <class T>
struct Binding {
    std::function<T()> get;
    std::function<void(const T&)> set;
    std::function<Subscription(std::function<void()>)> observe;
};

/// Binds to a setting whose changes go through `set`.
template <class T, class Storage, class Set>
Binding<T> bindingTo(Setting<T, Storage>& setting, Set set) {
    return {[&setting] { return setting(); }, std::move(set),
            [&setting](std::function<void()> told) {
                return setting.observe([told = std::move(told)](const T&) { told(); });
            }};
}

template <class T, class Storage>
Binding<T> bindingTo(Setting<T, Storage>& setting) {
    return bindingTo(setting, [&setting](const T& value) { setting.set(value); });
}

/// Binds to the number that stands for a case of an enumeration. Only numbers of cases may be set.
template <class E, class Storage, class Set>
Binding<std::int64_t> rawBindingTo(Setting<E, Storage>& setting, Set set) {
    return {[&setting] { return static_cast<std::int64_t>(setting()); },
            [set = std::move(set)](std::int64_t raw) { set(static_cast<E>(raw)); },
            bindingTo(setting).observe};
}

/// A number and the range of what a person may type for it. The stored one may lie outside.
struct NumberBinding {
    Binding<std::int64_t> value;
    std::int64_t lowest = 0;
    std::int64_t highest = 0;
};

} // namespace kelpa
