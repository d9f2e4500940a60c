#include "app/AppInfo.h"

#include "tests/core/Play.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

TEST(AppInfo, HasDefaultsForWhatTheBundleDoesNotSay) {
    test::Play play;
    play.desk.system.bundleInfo = {{"CFBundleVersion", std::int64_t{7}}};
    play.desk.system.bundleIdentifier = std::nullopt;
    play("start 2027-01-01T00:00:01\nzone Asia/Shanghai\nlaunch\n");
    EXPECT_EQ(AppInfo::name(), "Kelpa");
    EXPECT_EQ(AppInfo::version(), "1.0.0");
    EXPECT_EQ(AppInfo::build(), "1");
    EXPECT_EQ(AppInfo::identifier(), "1");
    EXPECT_EQ(AppInfo::copyright(), "Copyright © 2027 The Kelpa Authors.");
    EXPECT_EQ(AppInfo::osVersion(), "12.0.0");
}

} // namespace
} // namespace kelpa
