#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/LargeFilesScanner.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using namespace std::chrono_literals;
using test::doneReport;
using test::LockedFolder;
using test::RecordedScan;
using test::ScopedVariable;
using test::setTimes;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr std::int64_t kLarge = 104'857'600;
constexpr std::chrono::seconds kYear{31'536'000};
const Date kNow = Date::fromUnix(1'704'207'840);

// Judging one file

LargeFilesScanner judge() {
    return {std::vector<URL>{}, kLarge, kYear, false};
}

FileInfo fileOf(std::int64_t size, std::optional<Date> accessed, std::optional<Date> modified = std::nullopt) {
    return {.url = URL::fromPath("/home/file"), .size = size, .modified = modified, .accessed = accessed};
}

TEST(LargeFilesJudge, aFileIsLargeFromTheThresholdOn) {
    const auto item = judge().judge(fileOf(kLarge, kNow), kNow);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->category, ScanCategory::largeFile);
    EXPECT_EQ(item->detail, ByteFormatter::string(kLarge));
    EXPECT_EQ(judge().judge(fileOf(kLarge - 1, kNow), kNow), std::nullopt);
}

TEST(LargeFilesJudge, aFileIsOldWhenItsLastUseLiesMoreThanTheIntervalBack) {
    EXPECT_EQ(judge().judge(fileOf(1, kNow.adding(-kYear)), kNow), std::nullopt);
    const auto item = judge().judge(fileOf(1, kNow.adding(-kYear - 1s)), kNow);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->category, ScanCategory::oldFile);
}

TEST(LargeFilesJudge, anOldFileHasNoLowerBoundOnItsSize) {
    EXPECT_TRUE(judge().judge(fileOf(0, kNow.adding(-2 * kYear)), kNow));
}

TEST(LargeFilesJudge, withoutAnAccessDateTheModificationDateDecides) {
    EXPECT_TRUE(judge().judge(fileOf(1, std::nullopt, kNow.adding(-2 * kYear)), kNow));
    EXPECT_FALSE(judge().judge(fileOf(1, std::nullopt, kNow), kNow));
    EXPECT_FALSE(judge().judge(fileOf(1, kNow, kNow.adding(-2 * kYear)), kNow)) << "it was used since";
}

TEST(LargeFilesJudge, withoutAnyDateOnlyTheSizeCounts) {
    EXPECT_EQ(judge().judge(fileOf(kLarge - 1, std::nullopt), kNow), std::nullopt);
    const auto item = judge().judge(fileOf(kLarge, std::nullopt), kNow);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->detail, ByteFormatter::string(kLarge));
}

TEST(LargeFilesJudge, yearsAreRoundedToTheNearest) {
    const auto detail = [](std::chrono::seconds age) {
        return judge().judge(fileOf(5'000, kNow.adding(-age)), kNow)->detail;
    };
    constexpr std::chrono::seconds month = kYear / 12;
    EXPECT_EQ(detail(18 * month), ByteFormatter::string(5'000) + S::detailStaleYears(2));
    EXPECT_EQ(detail(18 * month - 1h), ByteFormatter::string(5'000) + S::detailStaleYears(1));
    EXPECT_EQ(detail(13 * month), ByteFormatter::string(5'000) + S::detailStaleYears(1));
    EXPECT_EQ(S::detailStaleYears.in(Language::english, 1), " · not opened in ~1 year");
    EXPECT_EQ(S::detailStaleYears.in(Language::english, 2), " · not opened in ~2 years");
}

TEST(LargeFilesJudge, aFileMayBeBothAndThenCountsAsLarge) {
    const auto item = judge().judge(fileOf(kLarge, kNow.adding(-3 * kYear)), kNow);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->category, ScanCategory::largeFile);
    EXPECT_EQ(item->detail, ByteFormatter::string(kLarge) + S::detailStaleYears(3));
}

TEST(LargeFilesJudge, aFindingStartsUnselectedAndAlone) {
    const auto item = judge().judge(fileOf(kLarge, kNow), kNow);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->url, URL::fromPath("/home/file"));
    EXPECT_EQ(item->size, kLarge);
    EXPECT_FALSE(item->isSelected);
    EXPECT_EQ(item->groupID, std::nullopt);
    EXPECT_FALSE(item->isGroupKeeper);
    EXPECT_THAT(item->relatedURLs, IsEmpty());
}

// The scan

/// A home with a Trash of its own. A file is large from 100,000 bytes on.
class LargeFilesScan : public testing::Test {
  protected:
    TestFolder home_;
    ScopedVariable homeVariable_{"HOME", home_.path().c_str()};
    ScopedVariable dataVariable_{"XDG_DATA_HOME", nullptr};

    [[nodiscard]] static LargeFilesScanner scanner() { return {std::nullopt, 100'000, kYear, true}; }
    [[nodiscard]] static RecordedScan scan() { return test::record(scanner()); }

    URL old(std::string_view relative) const {
        URL url = home_.file(relative);
        setTimes(url, Date::now().adding(-2 * kYear), Date::now().adding(-2 * kYear));
        return url;
    }
};

TEST_F(LargeFilesScan, theRootsAreTheContentFoldersThatExistInTheirOrder) {
    for (const char* name : {"Public", "Pictures", "Music", "Movies", "Downloads", "Documents", "Desktop", "Library"})
        home_.folder(name);
    const auto names = [&] {
        std::vector<std::string> found;
        for (const URL& root : LargeFilesScanner::userContentRoots(home_.url()))
            found.emplace_back(root.lastPathComponent());
        return found;
    };
    EXPECT_THAT(names(), ElementsAre("Desktop", "Documents", "Downloads", "Movies", "Music", "Pictures", "Public"));
    std::filesystem::remove((home_ / "Movies").path());
    EXPECT_THAT(names(), ElementsAre("Desktop", "Documents", "Downloads", "Music", "Pictures", "Public"));
}

TEST_F(LargeFilesScan, findsWhatIsLargeAndWhatIsOldInTheContentFoldersAlone) {
    home_.fileOfSize("Movies/film.mov", 200'000);
    home_.file("Documents/new.txt");
    old("Documents/deep/down/old.txt");
    old("Library/old.txt");
    home_.fileOfSize("large at the top.bin", 200'000);
    home_.fileOfSize("Documents/.hidden", 200'000);
    home_.fileOfSize("Documents/Mine.app/Contents/large", 200'000);

    const RecordedScan found = scan();

    EXPECT_THAT(found.paths(home_), ElementsAre("Movies/film.mov", "Documents/deep/down/old.txt"));
    EXPECT_EQ(found.items[0].category, ScanCategory::largeFile);
    EXPECT_EQ(found.items[1].category, ScanCategory::oldFile);
    EXPECT_EQ(found.reports.back(), doneReport(2, 0)) << "the bytes are left to the screen";
}

TEST_F(LargeFilesScan, whatOnlyLooksLargeIsNot) {
    home_.file("Movies/sparse.img");
    std::filesystem::resize_file((home_ / "Movies/sparse.img").path(), 1'000'000'000);
    EXPECT_THAT(scan().items, IsEmpty());
}

TEST_F(LargeFilesScan, everythingVisibleInTheTrashIsListedAndSelected) {
    home_.file(".local/share/Trash/files/note.txt");
    home_.file(".local/share/Trash/files/nothing", "");
    home_.file(".local/share/Trash/files/.hidden");
    home_.fileOfSize(".local/share/Trash/files/folder/a", 20'000);
    home_.fileOfSize(".local/share/Trash/files/folder/.b", 20'000);
    home_.file(".local/share/Trash/info/note.txt.trashinfo");

    const RecordedScan found = scan();

    std::vector<std::string> names;
    for (const CleanableItem& item : found.items) {
        names.emplace_back(item.name());
        EXPECT_EQ(item.category, ScanCategory::trash);
        EXPECT_TRUE(item.isSelected);
        EXPECT_EQ(item.detail, S::detailInTheTrash());
    }
    EXPECT_THAT(names, ElementsAre("folder", "note.txt", "nothing"));
    EXPECT_GE(found.items[0].size, 40'000);
    EXPECT_EQ(found.items[2].size, 0);
    EXPECT_EQ(found.reports.back().bytesFound, 0);
}

TEST_F(LargeFilesScan, theTrashIsLookedAtOnlyWhenAskedTo) {
    home_.file(".local/share/Trash/files/note.txt");
    EXPECT_THAT(test::record(LargeFilesScanner(std::nullopt, 100'000, kYear, false)).items, IsEmpty());
}

TEST_F(LargeFilesScan, aHomeWithNothingInItIsDoneWithoutARefusal) {
    const RecordedScan found = scan();
    EXPECT_EQ(found.failure, std::nullopt);
    EXPECT_THAT(found.reports, ElementsAre(doneReport(0, 0)));
}

TEST_F(LargeFilesScan, everyFiveHundredthFileIsReportedWithWhatWasFoundBeforeIt) {
    for (int i = 0; i < 499; ++i)
        home_.file("Desktop/" + std::to_string(i));
    EXPECT_EQ(scan().reports.size(), 1U);
    // The file that makes five hundred lies in a later root, and isn't judged yet when it is reported.
    const URL fiveHundredth = old("Downloads/old.txt");
    const RecordedScan found = scan();
    ASSERT_EQ(found.reports.size(), 2U);
    EXPECT_EQ(found.reports[0], (ScanProgress{.phase = S::scanAnalyzingDisk(), .currentPath = fiveHundredth.path()}));
    for (int i = 0; i < 500; ++i)
        home_.file("Pictures/" + std::to_string(i));
    const RecordedScan more = scan();
    ASSERT_EQ(more.reports.size(), 3U);
    EXPECT_EQ(more.reports[1].itemsFound, 1);
    EXPECT_EQ(more.reports[1].bytesFound, 0);
}

TEST_F(LargeFilesScan, findingsComeLargestFirst) {
    home_.fileOfSize("Desktop/small.bin", 150'000);
    home_.fileOfSize("Documents/large.bin", 350'000);
    home_.fileOfSize("Public/middle.bin", 250'000);
    EXPECT_THAT(scan().paths(home_), ElementsAre("Documents/large.bin", "Public/middle.bin", "Desktop/small.bin"));
}

TEST_F(LargeFilesScan, aRefusedRootIsReportedAndTheOthersAreFound) {
    home_.fileOfSize("Movies/film.mov", 200'000);
    const URL documents = home_.folder("Documents");
    const LockedFolder lock(documents);
    const RecordedScan found = scan();
    EXPECT_EQ(found.items.size(), 1U);
    EXPECT_EQ(found.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(found.reports.back().blockedFolders, 1);
}

TEST_F(LargeFilesScan, aRefusedTrashFailsAScanThatFoundNothingElse) {
    const URL trash = home_.folder(".local/share/Trash/files");
    const LockedFolder lock(trash);
    EXPECT_EQ(scan().failure, ScanError::accessDenied(trash));
}

TEST_F(LargeFilesScan, linksAndSpecialsAreNoFindings) {
    home_.folder("Documents");
    test::makeFifo(home_ / "Documents/fifo");
    setTimes(home_ / "Documents/fifo", Date::fromUnix(0), Date::fromUnix(0));
    home_.link("Documents/loop", ".");
    home_.link("Documents/link", "../large");
    home_.fileOfSize("large", 200'000);
    EXPECT_THAT(scan().items, IsEmpty());
}

TEST_F(LargeFilesScan, aCancelAtAnyMomentFailsTheScan) {
    home_.fileOfSize("Documents/folder/large", 200'000);
    old("Pictures/old.jpg");
    home_.file(".local/share/Trash/files/folder/file");
    test::expectCancellableAtEveryPoll(scanner());
}

TEST_F(LargeFilesScan, theFactorysScannerLooksForHundredMebibytesAndAYear) {
    old("Documents/old.txt");
    home_.fileOfSize("Documents/not large.bin", 200'000);
    home_.file(".local/share/Trash/files/note.txt");
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::largeFiles);
    EXPECT_EQ(scanner->kind(), ModuleKind::largeFiles);
    EXPECT_THAT(test::record(*scanner).paths(home_),
                UnorderedElementsAre("Documents/old.txt", ".local/share/Trash/files/note.txt"));
    EXPECT_EQ(scannerDefaults::LargeFiles::largeThresholdBytes, kLarge);
    EXPECT_EQ(scannerDefaults::LargeFiles::staleInterval, kYear);
}

}  // namespace
}  // namespace tavrin
