#pragma once

// Whether the system has something is asked of the macOS that is played. For another system than that one the
// compiler would answer by itself, always with yes.
namespace standin {
/// Whether that macOS is at least `needed`, as in "macOS 13.0".
[[nodiscard]] bool systemIs(const char* needed);
} // namespace standin
#define available(needed, others) selector(class) && standin::systemIs(#needed)
