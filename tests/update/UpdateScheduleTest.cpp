#include "desk/RecordingStore.h"
#include "desk/VirtualTime.h"
#include "platform/linux/update/LinuxUpdater.h"

#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <vector>

using namespace kelpa;

namespace {

constexpr double interval = 43200;

struct SilentJournal final : desk::Journal {
    using Journal::Journal;
    void line(const std::string& /*text*/) override {}
};

class UpdateScheduleTest : public testing::Test {
  protected:
    UpdateScheduleTest() { clock.set(Date{1'800'000'000}); }

    /// A run of the program from now on.
    void launch() {
        schedule.emplace(clock, time, store, [this] {
            checks.push_back(time.seconds());
            if (answered)
                schedule->noteCheck();
        });
        schedule->start(interval);
    }
    void pass(double seconds) { time.pass(static_cast<std::int64_t>(seconds * 1e6)); }

    desk::VirtualTime time;
    desk::VirtualClock clock{time};
    SilentJournal journal{time};
    desk::RecordingStore store{journal};
    std::vector<double> checks;
    bool answered = true;
    std::optional<UpdateSchedule> schedule;
};

} // namespace

TEST_F(UpdateScheduleTest, TheFirstCheckIsSoonAndTheOthersComeInTheirInterval) {
    launch();
    pass(2 * interval + 100);
    EXPECT_EQ(checks, (std::vector<double>{60, 60 + interval, 60 + 2 * interval}));
}

TEST_F(UpdateScheduleTest, TheIntervalGoesOnAcrossRestarts) {
    launch();
    pass(10000);
    launch();
    pass(interval - 10000);
    launch();
    EXPECT_EQ(checks.size(), 1U);
    pass(61);
    EXPECT_EQ(checks.size(), 2U);
    EXPECT_NEAR(checks[1], 60 + interval, 1);
}

TEST_F(UpdateScheduleTest, ACheckThatSomebodyAskedForCounts) {
    launch();
    pass(10060);
    schedule->noteCheck();
    pass(2 * interval);
    EXPECT_EQ(checks, (std::vector<double>{60, 10060 + interval, 10060 + 2 * interval}));
}

TEST_F(UpdateScheduleTest, TheTimeThatTheMachineSleptCounts) {
    launch();
    pass(100);
    clock.step(interval);
    pass(3600);
    EXPECT_EQ(checks.size(), 2U);
}

TEST_F(UpdateScheduleTest, ACheckInTheFutureOrNoTimeAtAllIsNoReasonToWait) {
    for (const double stored : {clock.now().secondsSince1970 + 1e9, std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity(), -1e300}) {
        store.put("update.lastCheck", stored);
        checks.clear();
        launch();
        pass(61);
        EXPECT_EQ(checks.size(), 1U) << stored;
    }
}

TEST_F(UpdateScheduleTest, WhatCannotBeDoneNowIsTriedAgainButNotAllTheTime) {
    answered = false;
    launch();
    pass(interval);
    EXPECT_EQ(checks.size(), 12U);
}
