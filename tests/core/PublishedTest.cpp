#include "base/Published.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kelpa {
namespace {

using Heard = std::vector<std::string>;

TEST(Published, TellsInOrderBeforeStoringAndAlsoEqualValues) {
    Published<int> value(1);
    Heard heard;
    const auto hear = [&](const char* who) {
        return [&heard, &value, who](int told) {
            heard.push_back(who + std::to_string(told) + " was " + std::to_string(value.value()));
        };
    };
    const auto a = value.subscribe(hear("a"));
    const auto b = value.subscribe(hear("b"));
    value.set(2);
    value.set(2);
    EXPECT_EQ(heard, (Heard{"a2 was 1", "b2 was 1", "a2 was 2", "b2 was 2"}));
}

TEST(Published, OuterOfNestedAssignmentsIsStoredLast) {
    Published<int> value(0);
    std::vector<int> heard;
    const auto nested = value.subscribe([&](int told) {
        if (told == 1)
            value.set(2);
    });
    const auto late = value.subscribe([&](int told) { heard.push_back(told); });
    value.set(1);
    EXPECT_EQ(value.value(), 1);
    EXPECT_EQ(heard, (std::vector<int>{2, 1}));
}

TEST(Published, SubscribersMayComeAndGoWhileTheyAreTold) {
    Published<int> value(0);
    Heard heard;
    Subscription itself, other, newcomer;
    itself = value.subscribe([&](int) {
        heard.push_back("itself");
        itself.cancel();
        other.cancel();
        newcomer = value.subscribe([&](int told) { heard.push_back("newcomer " + std::to_string(told)); });
    });
    other = value.subscribe([&](int) { heard.push_back("other"); });
    value.set(1);
    value.set(2);
    EXPECT_EQ(heard, (Heard{"itself", "newcomer 2"}));
}

TEST(Published, SubscriptionEndsWithItsHandleAndMayOutliveTheValue) {
    int heard = 0;
    Subscription left;
    {
        Published<int> value(0);
        {
            const auto handle = value.subscribe([&](int) { ++heard; });
            value.set(1);
        }
        value.set(2);
        left = value.subscribe([&](int) { ++heard; });
        left = value.subscribe([&](int) { heard += 10; });
        value.set(3);
    }
    left.cancel();
    EXPECT_EQ(heard, 11);
}

} // namespace
} // namespace kelpa
