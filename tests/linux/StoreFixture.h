#pragma once

#include "Support.h"
#include "platform/linux/store/PlistStore.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <unistd.h>

namespace kelpa::test {

struct KeptReports : StoreReport {
    std::vector<std::string> warnings;
    std::vector<std::string> errors;
    void warning(const std::string& message) override { warnings.push_back(message); }
    void error(const std::string& message) override { errors.push_back(message); }
    [[nodiscard]] std::string all() const {
        std::string text;
        for (const auto* list : {&warnings, &errors})
            for (const std::string& message : *list)
                text += message + "\n";
        return text;
    }
};

struct PlistStoreTest : testing::Test {
    TempFolder folder;
    std::string path = folder.file("settings.plist");
    KeptReports report;
    EventLoop loop;
    static constexpr double rest = 0.1; ///< seconds
    std::unique_ptr<DefaultsStore> owned = makePlistStore(path, report, loop, rest);
    DefaultsStore& store = *owned;

    ~PlistStoreTest() override {
        if (geteuid() != getuid() && seteuid(getuid()) != 0)
            ADD_FAILURE() << "still nobody";
    }

    static std::string dict(const std::string& body) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + body +
               "</dict></plist>";
    }
    void writeDict(const std::string& body) const { writeFile(path, dict(body)); }
    /// Rights on files mean nothing to root, whom tests may run as.
    void beNobody(unsigned mode) const {
        constexpr uid_t nobody = 65534;
        std::filesystem::permissions(folder.path(), std::filesystem::perms(mode));
        ASSERT_TRUE(geteuid() != 0 || seteuid(nobody) == 0);
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            found.push_back(entry.path().filename());
        std::sort(found.begin(), found.end());
        return found;
    }
};

} // namespace kelpa::test
