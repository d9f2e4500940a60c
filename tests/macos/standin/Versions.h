#pragma once

// Whether the system has something is asked of the macOS that is played. For another system than that one the
// compiler would answer by itself, always with yes.
namespace standin {
[[nodiscard]] bool systemIs(const char* needed);
}
#define available(needed, others) selector(class) && standin::systemIs(#needed)
