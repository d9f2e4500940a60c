#include "base/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace kelpa {

namespace {
FatalErrors* chosen = nullptr;
}

void setFatalErrors(FatalErrors& how) {
    chosen = &how;
}

void fatalError(const std::string& message) {
    if (chosen)
        chosen->end(message);
    std::fprintf(stderr, "kelpa: fatal error: %s\n", message.c_str());
    std::abort();
}

} // namespace kelpa
