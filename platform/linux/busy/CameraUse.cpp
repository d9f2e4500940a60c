#include "base/Text.h"
#include "platform/linux/busy/DesktopBusyness.h"
#include "platform/linux/services/Portal.h"

#include <array>
#include <dirent.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kelpa {

namespace {

using Folder = std::unique_ptr<DIR, int (*)(DIR*)>;

Folder openFolder(const std::string& path) {
    return {::opendir(path.c_str()), ::closedir};
}

/// The next entry's name; empty at the end.
std::string nextName(const Folder& folder) {
    const dirent* entry = folder ? ::readdir(folder.get()) : nullptr;
    return entry != nullptr ? entry->d_name : "";
}

bool isNumber(std::string_view name) {
    return !name.empty() && name.find_first_not_of("0123456789") == std::string_view::npos;
}

bool leadsToVideo(const std::string& link) {
    constexpr std::string_view devices = "/dev/video";
    std::array<char, 64> target{};
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    return length > 0 &&
           std::string_view(target.data(), static_cast<std::size_t>(length)).starts_with(devices);
}

bool isOurs(const std::string& path) {
    struct stat about {};
    return ::stat(path.c_str(), &about) == 0 && about.st_uid == ::getuid();
}

/// Whether a process, told by its folder, holds a video device.
bool holdsVideo(const std::string& process) {
    if (!isOurs(process))
        return false;
    const auto files = openFolder(process + "/fd");
    for (std::string name = nextName(files); !name.empty(); name = nextName(files))
        if (isNumber(name) && leadsToVideo(process + "/fd/" + name))
            return true;
    return false;
}

/// Looks through the processes, some at a time: there may be hundreds, and a tick must not wait for them.
class Search {
  public:
    Search(EventLoop& loop, const std::string& root, BusySource::Answer answer)
        : loop_(loop), folder_(root + "/proc/"), processes_(openFolder(folder_)), answer_(std::move(answer)) {
        goOn();
    }

  private:
    void goOn() {
        turn_ = loop_.afterReal(0, [this] { look(); });
    }
    void look() {
        for (int count = 0; count < processesATurn; ++count) {
            const std::string name = nextName(processes_);
            const bool found = isNumber(name) && holdsVideo(folder_ + name);
            if (found || name.empty())
                return answer_(found);
        }
        goOn();
    }

    static constexpr int processesATurn = 20;
    EventLoop& loop_;
    std::string folder_;
    Folder processes_;
    BusySource::Answer answer_;
    Subscription turn_;
};

bool hasVideoDevice(const std::string& root) {
    const auto devices = openFolder(root + "/dev");
    for (std::string name = nextName(devices); !name.empty(); name = nextName(devices))
        if (name.starts_with("video"))
            return true;
    return false;
}

} // namespace

BusySource cameraUse(EventLoop& loop, const std::string& root) {
    const auto ask = [&loop, root](BusySource::Answer answer) {
        if (hasVideoDevice(root))
            return keeping(std::make_shared<Search>(loop, root, std::move(answer)));
        answer(false);
        return Subscription();
    };
    const auto unavailable = []() -> std::optional<std::string> {
        if (!inSandbox())
            return std::nullopt;
        return localized("From inside a sandbox the other programs cannot be seen.");
    };
    return {ask, unavailable};
}

} // namespace kelpa
