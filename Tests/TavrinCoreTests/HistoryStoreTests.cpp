#include "Support/OrdinaryUser.h"
#include "Support/OwnMounts.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Cleaning/HistoryCodec.h"
#include "TavrinCore/Cleaning/HistoryList.h"
#include "TavrinCore/Cleaning/HistoryStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::contentsOf;
using test::ScopedVariable;
using test::somethingAt;
using test::TestFolder;
using testing::IsEmpty;
using testing::SizeIs;

/// A user whose application support is a folder of the test's.
class HistoryStoreTest : public testing::Test {
  protected:
    [[nodiscard]] URL file() const { return world / "support/Tavrin Clean/history.json"; }
    [[nodiscard]] URL damaged() const { return world / "support/Tavrin Clean/history-damaged.json"; }
    void write(std::string_view text) const { world.file("support/Tavrin Clean/history.json", text); }

    TestFolder world;

  private:
    ScopedVariable home_{"HOME", world.path().c_str()};
    ScopedVariable dataHome_{"XDG_DATA_HOME", (world.path() + "/support").c_str()};
};

CleanupRecord record(std::int64_t items) {
    return {.id = UUID::random(),
            .date = Date::now(),
            .module = "System Junk",
            .moduleKey = "systemJunk",
            .itemCount = items,
            .reclaimedBytes = 4096,
            .entries = {{URL::fromPath("/a/b\xFF/"), URL::fromPath("/t/b\xFF/")}}};
}

std::string textOf(const std::vector<CleanupRecord>& records) {
    return encodeHistory(records).value();
}

std::string withBadDate(std::string text, std::size_t occurrence) {
    std::size_t at = 0;
    for (std::size_t i = 0; i <= occurrence; ++i)
        at = text.find("\"date\": ", at) + 8;
    return text.replace(at, text.find(',', at) - at, "\"x\"");
}

TEST_F(HistoryStoreTest, aFirstStartFindsNothingAndWritesNothing) {
    HistoryStore store;
    EXPECT_EQ(store.fileURL(), file());
    EXPECT_EQ(store.damagedURL(), damaged());
    EXPECT_THAT(store.load(), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_directory((world / "support/Tavrin Clean").path()));
    EXPECT_FALSE(somethingAt(file()));
    EXPECT_FALSE(somethingAt(damaged()));

    std::vector<CleanupRecord> records;
    addRecord(records, {.module = "m", .moduleKey = std::nullopt, .removedItems = 1, .restorable = {}});
    EXPECT_TRUE(store.save(records));
    EXPECT_TRUE(somethingAt(file()));
}

TEST_F(HistoryStoreTest, aFileWithoutAByteIsAFirstStartAndNoDamage) {
    write("");
    EXPECT_THAT(HistoryStore().load(), IsEmpty());
    EXPECT_EQ(contentsOf(file()), "");
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, whatIsSavedIsLoadedEqual) {
    const std::vector<CleanupRecord> records{record(3), record(2), record(1)};
    EXPECT_TRUE(HistoryStore().save(records));
    EXPECT_EQ(HistoryStore().load(), records);
    EXPECT_EQ(contentsOf(file()), textOf(records));
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, onlyTheUserMayReadIt) {
    EXPECT_TRUE(HistoryStore().save({}));
    write("damaged");
    struct stat status {};
    (void)HistoryStore().load();
    for (const URL& url : {file(), damaged()}) {
        ASSERT_EQ(::stat(url.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0600U) << url.path();
    }
}

TEST_F(HistoryStoreTest, clearingWritesAnEmptyArrayAndKeepsTheFile) {
    HistoryStore store;
    EXPECT_TRUE(store.save({record(1)}));
    EXPECT_TRUE(store.save({}));
    EXPECT_EQ(contentsOf(file()), "[]");
    EXPECT_THAT(store.load(), IsEmpty());
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, aRecordWithoutAModuleKeyAndOneWithAnUnknownAreNoDamage) {
    std::vector<CleanupRecord> records{record(1), record(2)};
    records[0].moduleKey = std::nullopt;
    records[1].moduleKey = "aModuleOfTomorrow";
    write(textOf(records));
    EXPECT_EQ(HistoryStore().load(), records);
    EXPECT_EQ(records[0].displayName(), "System Junk");
    EXPECT_EQ(records[1].displayName(), "System Junk");
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, aBadRecordInTheMiddleCostsThatRecordAndTheOldFileIsKeptAside) {
    const std::vector<CleanupRecord> records{record(3), record(2), record(1)};
    const std::string text = withBadDate(textOf(records), 1);
    write(text);
    const std::vector<CleanupRecord> whole{records[0], records[2]};
    EXPECT_EQ(HistoryStore().load(), whole);
    EXPECT_EQ(contentsOf(damaged()), text);
    EXPECT_EQ(contentsOf(file()), textOf(whole));
    EXPECT_EQ(HistoryStore().load(), whole);
    EXPECT_EQ(contentsOf(damaged()), text);
}

TEST_F(HistoryStoreTest, whatIsNoArrayStaysAsItIsUntilTheNextSave) {
    for (const std::string& text : {std::string("{}"), std::string("not json\0\xFF", 10), std::string("[")}) {
        write(text);
        HistoryStore store;
        EXPECT_THAT(store.load(), IsEmpty());
        EXPECT_EQ(contentsOf(file()), text);
        EXPECT_EQ(contentsOf(damaged()), text);
        EXPECT_TRUE(store.save({record(1)}));
        EXPECT_THAT(store.load(), SizeIs(1));
        EXPECT_EQ(contentsOf(damaged()), text);
    }
}

TEST_F(HistoryStoreTest, anArrayOfBadRecordsOnlyStaysAsItIsToo) {
    const std::string text = withBadDate(textOf({record(1)}), 0);
    write(text);
    EXPECT_THAT(HistoryStore().load(), IsEmpty());
    EXPECT_EQ(contentsOf(file()), text);
    EXPECT_EQ(contentsOf(damaged()), text);
}

TEST_F(HistoryStoreTest, aSecondDamageReplacesTheFirst) {
    write("{\"first\": 1}");
    (void)HistoryStore().load();
    write("second");
    (void)HistoryStore().load();
    EXPECT_EQ(contentsOf(damaged()), "second");
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator((world / "support/Tavrin Clean").path()))
        ++files;
    EXPECT_EQ(files, 2U);
}

TEST_F(HistoryStoreTest, anUnreadableFileIsAnEmptyHistoryAndNoDamage) {
    write(textOf({record(1)}));
    test::setMode(file(), 0000);
    const test::OrdinaryUser user;
    EXPECT_THAT(HistoryStore().load(), IsEmpty());
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, aFileThatCouldNotBeReadIsKeptAsideBeforeTheFirstSaveReplacesIt) {
    const std::string unread = textOf({record(1)});
    write(unread);
    test::setMode(file(), 0000);
    const std::vector<CleanupRecord> later{record(2)};
    {
        const test::OrdinaryUser user;
        HistoryStore store;
        (void)store.load();
        EXPECT_TRUE(store.save(later));
        EXPECT_TRUE(store.save({}));
        EXPECT_TRUE(store.save(later));
    }
    EXPECT_EQ(contentsOf(file()), textOf(later));
    EXPECT_EQ(contentsOf(damaged()), unread);
}

TEST_F(HistoryStoreTest, aFileThatCouldBeReadIsNotKeptAside) {
    write(textOf({record(1)}));
    HistoryStore store;
    (void)store.load();
    EXPECT_TRUE(store.save({record(2)}));
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, aFolderOrAPipeInTheFilesPlaceIsAnEmptyHistory) {
    world.folder("support/Tavrin Clean/history.json/inside");
    EXPECT_THAT(HistoryStore().load(), IsEmpty());
    EXPECT_FALSE(HistoryStore().save({record(1)}));
    EXPECT_TRUE(somethingAt(file().appendingPathComponent("inside")));
    std::filesystem::remove_all(file().path());
    ASSERT_EQ(::mkfifo(file().path().c_str(), 0600), 0);
    EXPECT_THAT(HistoryStore().load(), IsEmpty());
    EXPECT_FALSE(somethingAt(damaged()));
}

TEST_F(HistoryStoreTest, whatCannotBeKeptAsideStopsNothing) {
    // A folder with something in it neither goes away nor gives way to a file.
    world.file("support/Tavrin Clean/history-damaged.json/inside", "theirs");
    const std::vector<CleanupRecord> records{record(2), record(1)};
    write(withBadDate(textOf(records), 0));
    EXPECT_EQ(HistoryStore().load(), std::vector{records[1]});
    EXPECT_EQ(contentsOf(file()), textOf({records[1]}));
    EXPECT_EQ(contentsOf(damaged().appendingPathComponent("inside")), "theirs");
}

TEST_F(HistoryStoreTest, aFailedSaveLeavesTheOldFileAndTheNextOneSucceeds) {
    HistoryStore store;
    const std::vector<CleanupRecord> records{record(1)};
    ASSERT_TRUE(store.save(records));
    test::setMode(world / "support/Tavrin Clean", 0500);
    {
        const test::OrdinaryUser user;
        EXPECT_FALSE(store.save({}));
    }
    EXPECT_EQ(store.load(), records);
    test::setMode(world / "support/Tavrin Clean", 0700);
    EXPECT_TRUE(store.save({}));
    EXPECT_THAT(store.load(), IsEmpty());
}

TEST_F(HistoryStoreTest, aHistoryThatCannotBeEncodedIsNotWritten) {
    HistoryStore store;
    const std::vector<CleanupRecord> records{record(1)};
    ASSERT_TRUE(store.save(records));
    std::vector<CleanupRecord> endless = records;
    endless[0].date = Date::fromReference(HUGE_VAL);
    EXPECT_FALSE(store.save(endless));
    EXPECT_EQ(store.load(), records);
}

TEST_F(HistoryStoreTest, aFullDiskKeepsTheDamagedFileAndWhatIsWholeInMemory) {
    const std::vector<CleanupRecord> records{record(2), record(1)};
    const URL disk = world.folder("support");
    test::withOwnMounts([&] {
        test::mountTmpfs(disk, 1);
        const std::string text = withBadDate(textOf(records), 0);
        write(text);
        std::error_code error;
        const auto room = std::filesystem::space(disk.path(), error).available;
        world.fileOfSize("support/filler", room);
        EXPECT_EQ(HistoryStore().load(), std::vector{records[1]});
        EXPECT_EQ(contentsOf(file()), text);
        EXPECT_FALSE(somethingAt(damaged()));
    });
}

TEST_F(HistoryStoreTest, whereNoFolderCanBeMadeLoadsFindNothingAndSavesFail) {
    const URL taken = world.file("taken");
    const ScopedVariable home("HOME", (taken.path() + "/home").c_str());
    const ScopedVariable dataHome("XDG_DATA_HOME", (taken.path() + "/support").c_str());
    HistoryStore store;
    EXPECT_EQ(store.fileURL(),
              taken.appendingPathComponent("home/Library/Application Support/Tavrin Clean/history.json"));
    EXPECT_THAT(store.load(), IsEmpty());
    EXPECT_FALSE(store.save({record(1)}));
}

TEST_F(HistoryStoreTest, withoutApplicationSupportItLiesBelowTheHome) {
    world.file("support", "a file in its place");
    HistoryStore store;
    EXPECT_EQ(store.fileURL(), world / "Library/Application Support/Tavrin Clean/history.json");
    EXPECT_TRUE(store.save({record(1)}));
    EXPECT_THAT(HistoryStore().load(), SizeIs(1));
}

TEST_F(HistoryStoreTest, whatACrashLeftBehindIsNeitherReadNorTouched) {
    const URL leftOver =
        world.file("support/Tavrin Clean/.tavrin-E621E1F8-C36C-495A-93FC-0C247A3E6E5F.tmp", textOf({record(9)}));
    HistoryStore store;
    EXPECT_THAT(store.load(), IsEmpty());
    EXPECT_TRUE(store.save({record(1)}));
    EXPECT_EQ(store.load().at(0).itemCount, 1);
    EXPECT_TRUE(somethingAt(leftOver));
}

}  // namespace
}  // namespace tavrin
