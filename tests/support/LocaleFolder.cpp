#include "tests/support/Files.h"

// While LOCPATH is set, the C library itself loses a few bytes with every locale that it looks up.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:argz_add_sep";
}

namespace kelpa::test {

bool useLocaleFolder(const TempFolder& folder, const std::string& name) {
    const std::string locale = folder.file(name + ".UTF-8");
    const std::string command =
        "localedef -i " + name + " -f UTF-8 --no-archive " + locale + " >/dev/null 2>&1";
    setenv("LOCPATH", folder.path().c_str(), 1);
    // Warnings about the sources, which are not ours, make a status other than 0.
    return std::system(command.c_str()) >= 0 && std::filesystem::exists(locale + "/LC_TIME");
}

} // namespace kelpa::test
