#include "base/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace kelpa {

namespace {
FatalErrorHandler chosen;
}

void setFatalErrors(FatalErrorHandler how) {
    chosen = std::move(how);
}

void fatalError(const std::string& message) {
    if (chosen)
        chosen(message);
    std::fprintf(stderr, "kelpa: fatal error: %s\n", message.c_str());
    std::abort();
}

} // namespace kelpa
