#include "TavrinCore/Models/Date.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

TEST(Date, isCountedFromTheFirstOfJanuary2001) {
    EXPECT_EQ(Date::fromUnix(978'307'200).secondsSinceReference(), 0.0);
    EXPECT_EQ(Date::fromReference(0.5), Date::fromUnix(978'307'200, 500'000'000));
    EXPECT_EQ(Date::fromUnix(0).secondsSinceUnix(), 0.0);
}

TEST(Date, keepsWhatIsBelowASecond) {
    const Date date = Date::fromUnix(1'790'000'000, 123'456'789);
    EXPECT_NEAR(date.secondsSinceReference() - 811'692'800.0, 0.123456789, 1e-6);
}

TEST(Date, nowLiesBetweenTheExtremes) {
    const Date now = Date::now();
    EXPECT_LT(Date::distantPast, now);
    EXPECT_LT(now, Date::distantFuture);
    EXPECT_GT(now, Date::fromUnix(1'700'000'000));
}

TEST(Date, intervalsAreSeconds) {
    const Date date = Date::fromReference(10);
    EXPECT_EQ(date.adding(std::chrono::hours(1)), Date::fromReference(3610));
    EXPECT_EQ(date.since(Date::fromReference(4)).count(), 6.0);
}

}  // namespace
}  // namespace tavrin
