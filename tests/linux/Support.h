#pragma once

#include "platform/linux/EventLoop.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <systemd/sd-event.h>

namespace kelpa::test {

/// A folder of its own for a test, gone with it.
class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kelpa-test-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code none;
        std::filesystem::remove_all(path_, none);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string file(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

inline void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// Makes a locale known to this process that the machine need not have; false where its sources are missing.
bool useLocaleFolder(const TempFolder& folder, const std::string& name);

inline double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Serves the loop until `reached` or until the time is up; gives what `reached` says at the end.
inline bool spinUntil(EventLoop& loop, const std::function<bool()>& reached, double seconds = 5) {
    const double end = secondsNow() + seconds;
    while (!reached() && secondsNow() < end)
        sd_event_run(loop.handle(), 5'000);
    return reached();
}

inline void spin(EventLoop& loop, double seconds) {
    spinUntil(
        loop, [] { return false; }, seconds);
}

} // namespace kelpa::test
