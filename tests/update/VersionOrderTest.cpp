#include "platform/linux/update/Appcast.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace kelpa;

TEST(VersionOrderTest, LaterVersionsComeBehindEarlierOnes) {
    const std::vector<QString> rising{
        "beta",        "",        "0.9",     "1.0-alpha", "1.0-alpha.1",
        "1.0-alpha.2", "1.0b1",   "1.0-rc2", "1.0",       "1.0.1 beta",
        "1.0.1",       "1.1",     "1.9",     "1.10a",     "1.10",
        "2",           "2.0.0.1", "10",      "20261121",  "99999999999999999999999999999999"};
    for (std::size_t i = 0; i < rising.size(); ++i)
        for (std::size_t j = i + 1; j < rising.size(); ++j) {
            const std::string both = rising[i].toStdString() + " and " + rising[j].toStdString();
            EXPECT_TRUE(versionOrder(rising[i], rising[j]) < 0) << both;
            EXPECT_TRUE(versionOrder(rising[j], rising[i]) > 0) << both;
        }
}

TEST(VersionOrderTest, WhatMeansTheSameIsTheSame) {
    const std::vector<std::vector<QString>> same{{"1", "1.0", "1.0.0", "01", "1.", " 1", "1+7"},
                                                 {"1.0-beta.2", "1.0BETA2", "1.0 beta 2.0", "1.0_Beta-02"},
                                                 {"", "0", "0.0", "...", "+1"}};
    for (const auto& row : same)
        for (const auto& version : row)
            EXPECT_TRUE(versionOrder(row[0], version) == 0) << version.toStdString();
}
