#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kelpa::desk {

class Desk;

/// The assignment of a preference by its name, as a pane makes it. `problem` says what is wrong where there
/// is none.
struct Assignment {
    std::function<void(Desk&)> run;
    std::string problem;
};
[[nodiscard]] Assignment assignment(std::string_view name, std::string_view value);

} // namespace kelpa::desk
