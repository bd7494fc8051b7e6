#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/DetailText.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace tavrin {
namespace {

constexpr std::int64_t kSecondOfJanuary = 1'704'207'840;  // 2024-01-02 15:04 UTC

struct Row {
    DateSettings settings;
    std::string date;
    std::string dateAndTime;
};

TEST(DateText, followsTheLanguageAndTheRegion) {
    const Date date = Date::fromUnix(kSecondOfJanuary);
    for (const Row& row : std::vector<Row>{
             {{Language::english, "US", "UTC"}, "Jan 2, 2024", "Jan 2, 2024, 3:04\u202fPM"},
             {{Language::english, "", "UTC"}, "Jan 2, 2024", "Jan 2, 2024, 3:04\u202fPM"},
             {{Language::english, "GB", "UTC"}, "2 Jan 2024", "2 Jan 2024, 15:04"},
             {{Language::english, "ES", "UTC"}, "2 Jan 2024", "2 Jan 2024, 15:04"},
             {{Language::english, "CO", "UTC"}, "2 Jan 2024", "2 Jan 2024, 3:04\u202fpm"},
             {{Language::spanish, "ES", "UTC"}, "2 ene 2024", "2 ene 2024, 15:04"},
             {{Language::spanish, "", "UTC"}, "2 ene 2024", "2 ene 2024, 15:04"},
             // A region of another language still gives the words of the running one.
             {{Language::spanish, "DE", "UTC"}, "2 ene 2024", "2 ene 2024, 15:04"},
         }) {
        SCOPED_TRACE(row.settings.region);
        EXPECT_EQ(dateText(date, row.settings), row.date);
        EXPECT_EQ(dateAndTimeText(date, row.settings), row.dateAndTime);
    }
}

TEST(DateText, isOfTheUsersTimeZone) {
    const Date beforeMidnight = Date::fromUnix(1'704'239'940);  // 2024-01-02 23:59 UTC
    EXPECT_EQ(dateText(beforeMidnight, {Language::spanish, "ES", "Europe/Madrid"}), "3 ene 2024");
    EXPECT_EQ(dateAndTimeText(beforeMidnight, {Language::spanish, "ES", "Europe/Madrid"}), "3 ene 2024, 0:59");
    EXPECT_EQ(dateText(beforeMidnight, {Language::spanish, "ES", "America/New_York"}), "2 ene 2024");
}

TEST(DateText, bothExtremesHaveAText) {
    const DateSettings settings{Language::english, "US", "UTC"};
    EXPECT_EQ(dateText(Date::distantFuture, settings), "Jan 1, 4001");
    EXPECT_FALSE(dateText(Date::distantPast, settings).empty());
    EXPECT_FALSE(dateText(Date::fromUnix(std::int64_t{1} << 52U), settings).empty());
    EXPECT_FALSE(dateText(Date::fromUnix(-(std::int64_t{1} << 52U)), settings).empty());
}

TEST(DateText, threadsMayAskForItAllAtOnce) {
    const Date date = Date::fromUnix(kSecondOfJanuary);
    std::vector<std::string> texts(8);
    {
        std::vector<std::jthread> threads;
        for (std::string& text : texts) {
            threads.emplace_back([&text, date] {
                for (int i = 0; i < 200; ++i)
                    text = dateAndTimeText(date) + dateText(date);
            });
        }
    }
    for (const std::string& text : texts)
        EXPECT_EQ(text, texts.front());
    EXPECT_NE(texts.front(), "");
}

TEST(DetailText, aNameOfSomebodyElsesKeepsToItsLineAndItsLength) {
    EXPECT_EQ(detailName("Ana's iPhone"), "Ana's iPhone");
    EXPECT_EQ(detailName("two\nlines"), "two\uFFFDlines");
    EXPECT_EQ(detailName("turned \u202E round"), "turned \uFFFD round");
    EXPECT_EQ(detailName(std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(detailName(std::string(10'000'000, 'x')), std::string(255, 'x') + "\u2026");
    EXPECT_EQ(detailName(std::string(254, 'x') + "ñandú"), std::string(254, 'x') + "\u2026") << "characters stay whole";
}

TEST(DetailText, aDateStandsBehindADot) {
    const Date date = Date::fromUnix(kSecondOfJanuary);
    EXPECT_EQ(joinedDetail("app", "node_modules"), "app · node_modules");
    EXPECT_EQ(detailWithDate("text", date), "text · " + dateText(date));
    EXPECT_EQ(detailWithDate("text", std::nullopt), "text");
}

}  // namespace
}  // namespace tavrin
