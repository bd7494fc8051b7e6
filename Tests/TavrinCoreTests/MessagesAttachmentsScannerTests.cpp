#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/MessagesAttachmentsScanner.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::doneReport;
using test::LockedFolder;
using test::RecordedScan;
using test::setTimes;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

const Date kSomeDay = Date::fromUnix(1'600'000'000);

RecordedScan scanOf(const URL& root, std::int64_t minSize = 50'000) {
    return test::record(MessagesAttachmentsScanner(minSize, root));
}

TEST(MessagesAttachmentsScanner, withoutAStoreThereIsNothingAndNoReport) {
    const TestFolder world;
    const RecordedScan scan = scanOf(world / "missing");
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, IsEmpty());
}

TEST(MessagesAttachmentsScanner, anEmptyStoreGivesTheDoneText) {
    const TestFolder world;
    EXPECT_THAT(scanOf(world.url()).reports, ElementsAre(doneReport(0, 0)));
}

TEST(MessagesAttachmentsScanner, aStoreThatIsNoFolderIsAnEmptyOne) {
    const TestFolder world;
    const RecordedScan scan = scanOf(world.fileOfSize("Attachments", 60'000));
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, ElementsAre(doneReport(0, 0)));
}

TEST(MessagesAttachmentsScanner, eachLargeFileIsAFindingOfItsOwn) {
    const TestFolder world;
    const URL photo = world.fileOfSize("0a/10/UUID/photo.heic", 60'000);
    const URL film = world.fileOfSize("ff/film.mov", 90'000);
    world.fileOfSize("ff/small.jpg", 4'000);
    setTimes(photo, Date::now(), kSomeDay);
    setTimes(film, Date::now(), kSomeDay);

    const RecordedScan scan = scanOf(world.url());

    EXPECT_THAT(scan.paths(world), ElementsAre("ff/film.mov", "0a/10/UUID/photo.heic"));
    for (const CleanableItem& item : scan.items) {
        EXPECT_EQ(item.size, FileSystemUtils::size(item.url));
        EXPECT_EQ(item.category, ScanCategory::messagesAttachment);
        EXPECT_FALSE(item.isSelected);
        EXPECT_EQ(item.detail, S::categoryMessagesAttachment() + " · " + dateText(kSomeDay));
        EXPECT_EQ(item.groupID, std::nullopt);
    }
    ASSERT_EQ(scan.reports.size(), 3U);
    EXPECT_EQ(scan.reports[0].phase, S::scanMessagesAttachments());
    EXPECT_EQ(scan.reports[0].itemsFound, 0);
    EXPECT_EQ(scan.reports[1].itemsFound, 1);
    EXPECT_THAT((std::vector{*scan.reports[0].currentPath, *scan.reports[1].currentPath}),
                testing::UnorderedElementsAre("photo.heic", "film.mov"));
    EXPECT_EQ(scan.reports.back(), doneReport(2, scan.items[0].size + scan.items[1].size));
}

TEST(MessagesAttachmentsScanner, aFileIsListedFromTheLeastSizeOn) {
    const TestFolder world;
    const std::int64_t size = FileSystemUtils::size(world.fileOfSize("film.mov", 60'000));
    EXPECT_EQ(scanOf(world.url(), size).items.size(), 1U);
    EXPECT_THAT(scanOf(world.url(), size + 1).items, IsEmpty());
    EXPECT_EQ(scannerDefaults::MessagesAttachments::minSizeBytes, 5'000'000);
}

TEST(MessagesAttachmentsScanner, hiddenFilesPackagesAndLinksAreNeverListed) {
    const TestFolder world;
    world.fileOfSize(".hidden", 60'000);
    world.fileOfSize(".folder/film.mov", 60'000);
    world.fileOfSize("deck.key/film.mov", 60'000);
    world.link("link.mov", ".hidden");
    world.link("loop", ".");
    test::makeFifo(world / "fifo");
    EXPECT_THAT(scanOf(world.url()).items, IsEmpty());
}

TEST(MessagesAttachmentsScanner, equalSizesKeepTheOrderOfTheWalk) {
    const TestFolder world;
    for (const char* name : {"c", "a", "e", "b", "d"})
        world.fileOfSize(name, 60'000);
    std::vector<std::string> walked;
    FileSystemUtils::enumerateRegularFiles(world.url(), {}, nullptr, neverCancelled, [&](const FileInfo& file) {
        walked.emplace_back(file.url.lastPathComponent());
    });
    EXPECT_EQ(scanOf(world.url()).paths(world), walked);
}

TEST(MessagesAttachmentsScanner, aRefusedStoreFailsAtOnce) {
    const TestFolder world;
    const URL store = world.folder("store");
    const LockedFolder lock(store);
    const RecordedScan scan = scanOf(store);
    EXPECT_EQ(scan.failure, ScanError::accessDenied(store));
    EXPECT_THAT(scan.reports, IsEmpty());
}

TEST(MessagesAttachmentsScanner, aRefusedSubfolderIsRecordedAndTheRestIsFound) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    const LockedFolder lock(locked);
    EXPECT_EQ(scanOf(world.url()).failure, ScanError::accessDenied(locked));
    world.fileOfSize("film.mov", 60'000);
    const RecordedScan scan = scanOf(world.url());
    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
}

TEST(MessagesAttachmentsScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder world;
    world.fileOfSize("a/film.mov", 60'000);
    world.fileOfSize("b/photo.heic", 60'000);
    test::expectCancellableAtEveryPoll(MessagesAttachmentsScanner(50'000, world.url()));
}

TEST(MessagesAttachmentsScanner, theFactorysScannerLooksIntoTheStoreOfTheHome) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    home.fileOfSize("Library/Messages/Attachments/film.mov", 5'000'000);
    home.fileOfSize("Library/Messages/Attachments/small.mov", 4'997'120);  // 1,220 blocks of 4 KiB
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::messagesAttachments);
    EXPECT_EQ(scanner->kind(), ModuleKind::messagesAttachments);
    EXPECT_THAT(test::record(*scanner).paths(home), ElementsAre("Library/Messages/Attachments/film.mov"));
}

}  // namespace
}  // namespace tavrin
