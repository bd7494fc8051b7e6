#include "TavrinCore/Cleaning/HistoryList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TrashedEntry entry(std::string_view name) {
    return {URL::fromPath("/home/n").appendingPathComponent(name),
            URL::fromPath("/trash/files").appendingPathComponent(name)};
}

FinishedClean cleanOf(std::int64_t items, std::vector<TrashedEntry> restorable = {}) {
    return {.module = "System Junk",
            .moduleKey = "systemJunk",
            .removedItems = items,
            .reclaimedBytes = items * 10,
            .restorable = std::move(restorable)};
}

CleanupRecord reclaiming(std::int64_t bytes, std::optional<std::string> key) {
    return {.id = UUID::random(),
            .date = {},
            .module = "m",
            .moduleKey = std::move(key),
            .itemCount = 1,
            .reclaimedBytes = bytes,
            .entries = {}};
}

TEST(HistoryList, aCleanThatRemovedNothingAddsNoRecord) {
    std::vector<CleanupRecord> records;
    EXPECT_FALSE(addRecord(records, cleanOf(0)));
    EXPECT_FALSE(addRecord(records, cleanOf(-1)));
    EXPECT_THAT(records, IsEmpty());
}

TEST(HistoryList, aCleanWithOneSuccessAmongFailuresAddsARecordOfOneItem) {
    std::vector<CleanupRecord> records;
    const UUID id = UUID::random();
    const Date date = Date::fromReference(812'345'678.25);
    EXPECT_TRUE(addRecord(records, cleanOf(1, {entry("a")}), date, id));
    EXPECT_THAT(records, ElementsAre(CleanupRecord{.id = id,
                                                   .date = date,
                                                   .module = "System Junk",
                                                   .moduleKey = "systemJunk",
                                                   .itemCount = 1,
                                                   .reclaimedBytes = 10,
                                                   .entries = {entry("a")}}));
}

TEST(HistoryList, aRecordWithNothingToPutBackStands) {
    std::vector<CleanupRecord> records;
    EXPECT_TRUE(addRecord(records, cleanOf(3)));
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].itemCount, 3);
    EXPECT_THAT(records[0].entries, IsEmpty());
}

TEST(HistoryList, theNewestStandsFirstAndEachHasAnIdAndADateOfItsOwn) {
    std::vector<CleanupRecord> records;
    const Date before = Date::now();
    addRecord(records, cleanOf(1));
    addRecord(records, cleanOf(2));
    ASSERT_THAT(records, SizeIs(2));
    EXPECT_EQ(records[0].itemCount, 2);
    EXPECT_NE(records[0].id, records[1].id);
    EXPECT_LE(before, records[1].date);
    EXPECT_LE(records[1].date, records[0].date);
}

TEST(HistoryList, aFullRestoreRemovesEveryRecordOfTheId) {
    std::vector<CleanupRecord> records;
    const UUID id = UUID::random();
    addRecord(records, cleanOf(1, {entry("a")}), {}, id);
    addRecord(records, cleanOf(2));
    addRecord(records, cleanOf(3, {entry("b")}), {}, id);
    settleRestore(records, records[0].id, {});
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].itemCount, 2);
}

TEST(HistoryList, aPartialRestoreKeepsTheRestAndTheFiguresOfTheClean) {
    std::vector<CleanupRecord> records;
    addRecord(records, cleanOf(3, {entry("a"), entry("b"), entry("c")}));
    settleRestore(records, records[0].id, {entry("b")});
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_THAT(records[0].entries, ElementsAre(entry("b")));
    EXPECT_EQ(records[0].itemCount, 3);
    EXPECT_EQ(records[0].reclaimedBytes, 30);
}

TEST(HistoryList, whatNeverComesBackStaysHoweverOftenItIsTried) {
    std::vector<CleanupRecord> records;
    addRecord(records, cleanOf(1, {entry("gone")}));
    const std::vector<CleanupRecord> before = records;
    for (int i = 0; i < 3; ++i)
        settleRestore(records, before[0].id, {entry("gone")});
    EXPECT_EQ(records, before);
}

TEST(HistoryList, aRecordThatVanishedDuringItsRestoreIsNoFault) {
    std::vector<CleanupRecord> records;
    addRecord(records, cleanOf(1, {entry("a")}));
    const std::vector<CleanupRecord> before = records;
    settleRestore(records, UUID::random(), {entry("b")});
    settleRestore(records, UUID::random(), {});
    EXPECT_EQ(records, before);
}

TEST(HistoryList, onlyTheEmptiedTrashCountsAsReclaimed) {
    EXPECT_EQ(totalReclaimed({}), 0);
    EXPECT_EQ(totalReclaimed({reclaiming(5, "systemJunk"), reclaiming(6, "smartScan"), reclaiming(7, std::nullopt)}),
              0);
    EXPECT_EQ(totalReclaimed({reclaiming(5, "emptyTrash"), reclaiming(6, "smartScan"), reclaiming(7, "emptyTrash")}),
              12);
}

TEST(HistoryListDeathTest, aTotalBeyond64BitsEndsTheProgram) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(totalReclaimed({reclaiming(most, "emptyTrash"), reclaiming(1, "systemJunk")}), most);
    EXPECT_DEATH((void)totalReclaimed({reclaiming(most, "emptyTrash"), reclaiming(1, "emptyTrash")}), "64 bits");
}

}  // namespace
}  // namespace tavrin
