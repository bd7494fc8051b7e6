// What is known of a clean whose process ended in the middle of it.
#include "Support/TrashWorld.h"
#include "TavrinCore/Cleaning/CleanJournal.h"
#include "TavrinCore/Cleaning/HistoryCodec.h"
#include "TavrinCore/Cleaning/HistoryStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <utility>

namespace tavrin {
namespace {

using test::contentsOf;
using test::somethingAt;
using test::TestFolder;
using test::TrashWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TrashedEntry moved(const std::string& name) {
    return {.original = URL::fromPath("/home/me/" + name), .trashed = URL::fromPath("/Trash/" + name)};
}

CleanupRecord recordOf(const UUID& id, Date date, std::string module) {
    return {.id = id, .date = date, .module = std::move(module), .moduleKey = {}, .entries = {}};
}

void append(const URL& file, std::string_view text) {
    std::ofstream(file.path(), std::ios::app) << text;
}

TEST(CleanJournal, aCleanThatMovedNothingLeavesNone) {
    const TestFolder folder;
    const CleanJournal journal(folder.url(), "System Junk", "systemJunk");
    EXPECT_FALSE(somethingAt(journal.url()));
    EXPECT_THAT(unfinishedCleans(folder.url()), IsEmpty());
}

TEST(CleanJournal, eachMoveIsKnownAtOnce) {
    const TestFolder folder;
    CleanJournal journal(folder.url(), "two\nlines", std::nullopt);
    const Date before = Date::now();
    journal.note(moved("a\xFF\nb"), 5);
    EXPECT_THAT(unfinishedCleans(folder.url()).at(0).record->entries, ElementsAre(moved("a\xFF\nb")));
    journal.note(moved("c"), 7);

    const std::vector<UnfinishedClean> found = unfinishedCleans(folder.url());
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].journal, journal.url());
    const CleanupRecord& record = found[0].record.value();
    EXPECT_EQ(record.id, journal.id());
    EXPECT_EQ(record.module, "two\nlines");
    EXPECT_EQ(record.moduleKey, std::nullopt);
    EXPECT_EQ(record.itemCount, 2);
    EXPECT_EQ(record.reclaimedBytes, 12);
    EXPECT_THAT(record.entries, ElementsAre(moved("a\xFF\nb"), moved("c")));
    EXPECT_GE(record.date, before);
    EXPECT_LE(record.date, Date::now());
}

TEST(CleanJournal, aLineThatWasCutOffCostsNoOther) {
    const TestFolder folder;
    CleanJournal journal(folder.url(), "System Junk", "systemJunk");
    journal.note(moved("a"), 5);
    append(journal.url(), "\n[{\"id\": \"cut o");
    journal.note(moved("b"), 7);
    append(journal.url(), "\n[{\"id\"");
    EXPECT_THAT(unfinishedCleans(folder.url()).at(0).record->entries, ElementsAre(moved("a"), moved("b")));
}

TEST(CleanJournal, whatCannotBeReadIsNoRecordAndStays) {
    const TestFolder folder;
    folder.file("unfinished-0.json", "no journal");
    folder.file("unfinished-1.json", "");
    folder.file("history.json", "[]");
    const std::vector<UnfinishedClean> found = unfinishedCleans(folder.url());
    EXPECT_THAT(found, SizeIs(2));
    for (const UnfinishedClean& clean : found)
        EXPECT_FALSE(clean.record.has_value());
    EXPECT_THAT(unfinishedCleans(folder / "nowhere"), IsEmpty());
}

TEST(CleanJournal, sumsBeyondAllBoundsStayWithin) {
    const TestFolder folder;
    CleanJournal journal(folder.url(), "m", "k");
    journal.note(moved("a"), std::numeric_limits<std::int64_t>::max());
    journal.note(moved("b"), 1);
    EXPECT_EQ(unfinishedCleans(folder.url()).at(0).record->reclaimedBytes, std::numeric_limits<std::int64_t>::max());
}

TEST(CleanJournal, onlyTheUserMayReadIt) {
    const TestFolder folder;
    CleanJournal journal(folder.url(), "m", "k");
    journal.note(moved("a"), 1);
    struct stat status {};
    ASSERT_EQ(::stat(journal.url().path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST(CleanJournal, aFolderThatIsNoneStopsNothing) {
    const TestFolder folder;
    CleanJournal journal(folder / "nowhere", "m", "k");
    journal.note(moved("a"), 1);
    EXPECT_FALSE(somethingAt(journal.url()));
}

// The history takes it over.

TEST(HistoryStoreAndJournals, anUnfinishedCleanIsARecordByItsDate) {
    const TrashWorld world;
    HistoryStore store;
    const std::shared_ptr<CleanJournal> journal = store.journal("System Junk", "systemJunk");
    journal->note(moved("a"), 5);
    const CleanupRecord older = recordOf(UUID::random(), Date::fromUnix(1'000'000'000), "older");
    const CleanupRecord newer = recordOf(UUID::random(), Date::fromUnix(4'000'000'000), "newer");
    ASSERT_TRUE(store.save({newer, older}));

    const std::vector<CleanupRecord> records = HistoryStore().load();
    ASSERT_THAT(records, SizeIs(3));
    EXPECT_EQ(records[0], newer);
    EXPECT_EQ(records[1].id, journal->id());
    EXPECT_EQ(records[2], older);
    EXPECT_FALSE(somethingAt(journal->url()));
    EXPECT_EQ(HistoryStore().load(), records);
}

TEST(HistoryStoreAndJournals, oneThatTheHistoryKnowsIsNotTakenTwice) {
    const TrashWorld world;
    HistoryStore store;
    const std::shared_ptr<CleanJournal> journal = store.journal("System Junk", "systemJunk");
    journal->note(moved("a"), 5);
    const CleanupRecord known = recordOf(journal->id(), Date::now(), "known");
    ASSERT_TRUE(store.save({known}));
    EXPECT_THAT(HistoryStore().load(), SizeIs(1));
    EXPECT_FALSE(somethingAt(journal->url()));
}

TEST(HistoryStoreAndJournals, aJournalGoesOnlyWhenItsRecordIsOnTheDisk) {
    const TrashWorld world;
    HistoryStore store;
    const std::shared_ptr<CleanJournal> journal = store.journal("System Junk", "systemJunk");
    journal->note(moved("a"), 5);
    store.settle(*journal);
    // A folder that isn't empty can't be replaced by a file.
    std::filesystem::create_directories(store.fileURL().path() + "/in the way");
    EXPECT_FALSE(store.save({}));
    EXPECT_TRUE(somethingAt(journal->url()));
    std::filesystem::remove_all(store.fileURL().path());
    EXPECT_TRUE(store.save({}));
    EXPECT_FALSE(somethingAt(journal->url()));
}

// The process is killed right after a move of three was noted.
TEST(HistoryStoreAndJournals, whatAKilledCleanHasMovedComesBack) {
    const TrashWorld world;
    const std::vector<URL> urls{world.home().file("a", "one"), world.home().file("b", "two"),
                                world.home().file("c", "three")};
    const pid_t child = ::fork();
    if (child == 0) {
        const std::shared_ptr<CleanJournal> journal = HistoryStore().journal("System Junk", "systemJunk");
        int count = 0;
        (void)Cleaner().clean(
            test::findings(urls), [](const ScanProgress&) {}, neverCancelled,
            [&](const TrashedEntry& entry, std::int64_t bytes) {
                journal->note(entry, bytes);
                if (++count == 2) ::kill(::getpid(), SIGKILL);
            });
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));

    const std::vector<CleanupRecord> records = HistoryStore().load();
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].moduleKey, "systemJunk");
    EXPECT_EQ(records[0].itemCount, 2);
    EXPECT_FALSE(somethingAt(urls[1]));
    EXPECT_EQ(Cleaner().restore(records[0].entries).restored, 2);
    EXPECT_EQ(contentsOf(urls[0]) + contentsOf(urls[1]) + contentsOf(urls[2]), "onetwothree");
}

}  // namespace
}  // namespace tavrin
