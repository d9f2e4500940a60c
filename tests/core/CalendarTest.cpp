#include "base/Calendar.h"

#include "desk/VirtualTime.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

constexpr WeekRule iso{1, 4};
constexpr WeekRule american{0, 1};

TEST(WeekBasedYear, IsTheYearOfTheWeekNotOfTheDay) {
    EXPECT_EQ(weekBasedYear(2026, 6, 1, iso), 2026);
    EXPECT_EQ(weekBasedYear(2024, 12, 29, iso), 2024); // a Sunday: the old year's last week
    EXPECT_EQ(weekBasedYear(2024, 12, 30, iso), 2025); // the Monday of a week that is mostly 2025's
    EXPECT_EQ(weekBasedYear(2025, 12, 29, iso), 2026); // the Monday of a week with four days in 2026
    EXPECT_EQ(weekBasedYear(2027, 1, 3, iso), 2026);   // the Sunday of a week that is mostly 2026's
    EXPECT_EQ(weekBasedYear(2027, 1, 4, iso), 2027);
    EXPECT_EQ(weekBasedYear(2022, 12, 31, american), 2022);
    EXPECT_EQ(weekBasedYear(2026, 12, 27, american), 2027); // the Sunday before a New Year's Friday
    EXPECT_EQ(weekBasedYear(2027, 1, 3, american), 2027);
}

class CalendarTest : public testing::Test {
  protected:
    void at(const char* zone, const CivilTime& civil) {
        ASSERT_TRUE(desk::VirtualClock::setZone(zone));
        clock.set(*clock.date(civil));
    }
    desk::VirtualTime time;
    desk::VirtualClock clock{time};
    Calendar calendar{clock};
};

TEST_F(CalendarTest, TodayFollowsTheLocalDay) {
    at("Europe/Berlin", {2026, 11, 23, 0, 30, 0});
    const double now = calendar.now().secondsSince1970;
    EXPECT_TRUE(calendar.isInToday(Date{now - 1800}));
    EXPECT_FALSE(calendar.isInToday(Date{now - 1801}));
    EXPECT_FALSE(calendar.isInToday(Date{0}));
    EXPECT_FALSE(calendar.isInToday(*clock.date({2026, 10, 23, 0, 30, 0})));
    EXPECT_FALSE(calendar.isInToday(*clock.date({2025, 11, 23, 0, 30, 0})));
    at("America/Sao_Paulo", clock.civil(calendar.now()));
    EXPECT_EQ(calendar.weekYearDay(calendar.now()), "20261123");
    EXPECT_EQ(calendar.weekYearDay(*clock.date({2026, 12, 27, 12, 0, 0})), "20261227");
    EXPECT_EQ(calendar.weekYearDay(*clock.date({2024, 12, 30, 12, 0, 0})), "20251230");
}

TEST_F(CalendarTest, DaysThatSummerTimeLengthensOrAJourneyCutsOffAreToday) {
    at("Europe/Berlin", {2026, 10, 25, 23, 30, 0});
    const auto hoursAgo = [this](double hours) {
        return Date{calendar.now().secondsSince1970 - hours * 3600};
    };
    EXPECT_TRUE(calendar.isInToday(hoursAgo(24)));
    at("Europe/Berlin", {2026, 3, 30, 0, 0, 0});
    EXPECT_FALSE(calendar.isInToday(hoursAgo(22.5)));
    ASSERT_TRUE(desk::VirtualClock::setZone("America/Los_Angeles"));
    EXPECT_TRUE(calendar.isInToday(hoursAgo(14.5))) << "midnight lies nine hours further west";
    EXPECT_FALSE(calendar.isInToday(hoursAgo(-9.5))) << "tomorrow, where a clock was set back";
}

TEST_F(CalendarTest, SkippedAndDoubledTimesOfDay) {
    at("Europe/Berlin", {2026, 3, 29, 12, 0, 0});
    EXPECT_EQ(clock.civil(calendar.today(2, 30, 0)), (CivilTime{2026, 3, 29, 3, 0, 0}));
    at("Europe/Berlin", {2026, 10, 25, 12, 0, 0});
    const Date first = calendar.today(2, 30, 0);
    EXPECT_EQ(clock.utcOffset(first), 7200);
    EXPECT_EQ(clock.civil(Date{first.secondsSince1970 + 3600}), clock.civil(first));
    EXPECT_EQ(calendar.today(12, 0, 0).secondsSince1970 - calendar.today(0, 0, 0).secondsSince1970,
              13 * 3600);
}

TEST_F(CalendarTest, MidnightThatDoesNotExistAndADayThatNeverWas) {
    at("America/Sao_Paulo", {2018, 11, 4, 12, 0, 0});
    EXPECT_EQ(clock.civil(calendar.today(0, 0, 0)), (CivilTime{2018, 11, 4, 1, 0, 0}));
    ASSERT_TRUE(desk::VirtualClock::setZone("Pacific/Apia"));
    EXPECT_EQ(clock.civil(*clock.date({2011, 12, 30, 10, 0, 0})), (CivilTime{2011, 12, 31, 0, 0, 0}));
    EXPECT_EQ(clock.date({2026, 2, 30, 0, 0, 0}), std::nullopt);
    // Of these a calendar whose months are small numbers would keep a January.
    EXPECT_EQ(clock.date({2026, 257, 1, 0, 0, 0}), std::nullopt);
    EXPECT_EQ(clock.date({2026, 1, 257, 0, 0, 0}), std::nullopt);
}

TEST_F(CalendarTest, TodayDateKeepsOnlyTheTimeOfDay) {
    at("Asia/Shanghai", {2026, 7, 1, 8, 0, 0});
    const Date old = *clock.date({1999, 12, 31, 22, 15, 30});
    EXPECT_EQ(clock.civil(calendar.todayDate(old)), (CivilTime{2026, 7, 1, 22, 15, 30}));
}

/// The clock of somebody whose years are counted from another one.
class BuddhistClock final : public LocalClock {
  public:
    [[nodiscard]] Date now() const override { return *date({2026, 12, 30, 12, 0, 0}); }
    [[nodiscard]] std::optional<CalendarDay> ownDay(Date) const override {
        return CalendarDay{2569, 2570, 12, 30};
    }
    [[nodiscard]] std::optional<WeekRule> weekRule() const override { return WeekRule{0, 1}; }
    [[nodiscard]] Subscription at(Date, std::function<void()>) override { return {}; }
};

TEST_F(CalendarTest, TheUsersOwnCalendarNamesTheYearAndTheClockItsHours) {
    ASSERT_TRUE(desk::VirtualClock::setZone("Asia/Bangkok"));
    const BuddhistClock buddhist;
    const Calendar own{buddhist};
    EXPECT_EQ(own.day(own.now()), (CalendarDay{2569, 2570, 12, 30}));
    EXPECT_EQ(own.weekYearDay(own.now()), "25701230");
    EXPECT_TRUE(own.isInToday(*buddhist.date({2026, 12, 30, 23, 59, 59})));
    EXPECT_EQ(buddhist.civil(own.today(7, 0, 0)), (CivilTime{2026, 12, 30, 7, 0, 0}));
}

} // namespace
} // namespace kelpa
