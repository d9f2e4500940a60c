#pragma once

#include "desk/Desk.h"

#include <functional>
#include <stdexcept>
#include <string_view>

namespace kelpa::desk {

/// What is wrong with a command, or with the moment it comes at; whoever knows its line says that before it.
struct Problem : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads a command, without blanks around it, and gives what it does to a desk. `first` is the one that the
/// script begins with. Throws `Problem`, as does what it gives.
[[nodiscard]] std::function<void(Desk&)> readVerb(std::string_view line, bool first);

/// The assignment of a preference by its name, as a pane makes it. Throws `Problem` where there is none.
[[nodiscard]] std::function<void(Desk&)> assignment(std::string_view name, std::string_view value);

} // namespace kelpa::desk
