#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

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

} // namespace kelpa::test
