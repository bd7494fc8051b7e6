#include "Support/FileWatch.h"
#include "Support/OrdinaryUser.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/DuplicateScanner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::contentsOf;
using test::FileWatch;
using test::OrdinaryUser;
using test::RecordedScan;
using test::setMode;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr std::int64_t kMinimum = 1'024;

/// Not small enough to be read whole with the fingerprint.
const std::string& largeContents() {
    static const std::string contents(20'000, 'c');
    return contents;
}

DuplicateScanner scannerOf(const TestFolder& world) {
    return {std::vector{world.url()}, kMinimum};
}

RecordedScan scanOf(const TestFolder& world) {
    return test::record(scannerOf(world));
}

void setModified(const URL& file, std::int64_t unixSeconds) {
    const std::array<timespec, 2> times{{{0, UTIME_OMIT}, {unixSeconds, 0}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.path().c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
}

void hardLink(const URL& existing, const URL& link) {
    ASSERT_EQ(::link(existing.path().c_str(), link.path().c_str()), 0);
}

/// A scan during which `change` happens once, after the index is made and before the first file is opened.
RecordedScan scanWithChange(const TestFolder& world, const std::function<void()>& change) {
    RecordedScan scan;
    bool isDone = false;
    scan.items = scannerOf(world).scan([&](const ScanProgress& report) {
        if (!isDone && report.phase == S::scanComparingContents()) {
            isDone = true;
            change();
        }
        scan.reports.push_back(report);
    });
    EXPECT_TRUE(isDone);
    return scan;
}

TEST(DuplicateScanner, theOldestCopyIsKeptAndTheOthersAreSelectedWithItsName) {
    const TestFolder world;
    setModified(world.file("a.txt", largeContents()), 3'000);
    setModified(world.file("b.txt", largeContents()), 1'000);
    setModified(world.file("c.txt", largeContents()), 2'000);

    const RecordedScan scan = scanOf(world);

    EXPECT_THAT(scan.paths(world), ElementsAre("b.txt", "c.txt", "a.txt"));
    EXPECT_THAT(scan.details(),
                ElementsAre(S::detailOriginalKept(), S::detailDuplicateOf("b.txt"), S::detailDuplicateOf("b.txt")));
    for (const CleanableItem& item : scan.items) {
        const bool isKeeper = item.name() == "b.txt";
        EXPECT_EQ(item.isGroupKeeper, isKeeper);
        EXPECT_EQ(item.isSelected, !isKeeper);
        EXPECT_EQ(item.category, ScanCategory::duplicate);
        EXPECT_EQ(item.size, FileSystemUtils::size(item.url));
        EXPECT_EQ(item.groupID, FileSystemUtils::fullHash(item.url, 1'048'576));
        EXPECT_THAT(item.relatedURLs, IsEmpty());
    }
}

TEST(DuplicateScanner, aSmallFilesGroupIsItsHashToo) {
    const TestFolder world;
    const URL file = world.file("a", "small");
    world.file("b", "small");
    const RecordedScan scan = scanOf(world);
    ASSERT_EQ(scan.items.size(), 2U);
    EXPECT_EQ(scan.items[0].groupID, FileSystemUtils::fullHash(file, 1'048'576));
}

TEST(DuplicateScanner, equallyOldCopiesKeepTheFirstThatWasMetByTheOrderOfRoots) {
    const TestFolder world;
    for (const char* name : {"Zeta/x", "Alpha/x", "Mid/x"})
        setModified(world.file(name, largeContents()), 1'000);
    const DuplicateScanner scanner(std::vector{world / "Zeta", world / "Alpha", world / "Mid"}, kMinimum);
    EXPECT_THAT(test::record(scanner).paths(world), ElementsAre("Zeta/x", "Alpha/x", "Mid/x"));
}

TEST(DuplicateScanner, theMinimumIsComparedWithWhatAFileOccupies) {
    const TestFolder world;
    const URL file = world.file("a", std::string(100, 'x'));
    world.file("b", std::string(100, 'x'));
    const std::int64_t occupied = FileSystemUtils::size(file);
    ASSERT_GT(occupied, 100) << "this file system stores small files elsewhere";
    EXPECT_EQ(test::record(DuplicateScanner(std::vector{world.url()}, occupied)).items.size(), 2U);
    EXPECT_THAT(test::record(DuplicateScanner(std::vector{world.url()}, occupied + 1)).items, IsEmpty());
}

TEST(DuplicateScanner, anEmptyFileOccupiesNothingAndIsPassedOver) {
    const TestFolder world;
    world.file("a", "");
    world.file("b", "");
    EXPECT_THAT(scanOf(world).items, IsEmpty());
}

TEST(DuplicateScanner, twoHardLinksAreOneFile) {
    const TestFolder world;
    const URL file = world.file("a/file", largeContents());
    hardLink(file, world / "link");
    EXPECT_THAT(scanOf(world).items, IsEmpty());
}

TEST(DuplicateScanner, ofHardLinksTheFirstPathIsOfferedBesideAThirdCopy) {
    const TestFolder world;
    const URL file = world.file("1/file", largeContents());
    world.folder("2");
    hardLink(file, world / "2/link");
    world.file("3/copy", largeContents());
    const DuplicateScanner scanner(std::vector{world / "1", world / "2", world / "3"}, kMinimum);
    EXPECT_THAT(test::record(scanner).paths(world), UnorderedElementsAre("1/file", "3/copy"));
}

TEST(DuplicateScanner, filesThatDifferAfterTheFirstBytesAreNoGroup) {
    const TestFolder world;
    world.file("a", std::string(8'192, 'x') + "1");
    world.file("b", std::string(8'192, 'x') + "2");
    EXPECT_THAT(scanOf(world).items, IsEmpty());
}

TEST(DuplicateScanner, copiesThatOccupyDifferentSizesAreNotCompared) {
    const TestFolder world;
    const std::string zeros(1'000'000, '\0');
    world.file("full", zeros);
    const URL sparse = world.file("sparse", "");
    ASSERT_EQ(::truncate(sparse.path().c_str(), 1'000'000), 0);
    const int written = ::open(sparse.path().c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::pwrite(written, zeros.data(), 5'000, 0), 5'000);
    ::close(written);
    ASSERT_EQ(contentsOf(sparse), zeros);
    EXPECT_THAT(scanOf(world).items, IsEmpty());
}

TEST(DuplicateScanner, copiesAreFoundAmongFilesOfOtherLengthsThatOccupyTheSame) {
    const TestFolder world;
    for (std::size_t length : {20'478U, 20'479U, 20'480U})
        world.file("other" + std::to_string(length), std::string(length, 'x'));
    world.file("a", std::string(20'477, 'x'));
    world.file("b", std::string(20'477, 'x'));
    EXPECT_THAT(scanOf(world).names(), testing::UnorderedElementsAre("a", "b"));
}

TEST(DuplicateScanner, linksHiddenFilesAndThoseInsideBundlesAreNoCopies) {
    const TestFolder world;
    world.file("file", largeContents());
    world.link("link", "file");
    world.file(".hidden", largeContents());
    world.file(".folder/inside", largeContents());
    world.file("Some.app/Contents/inside", largeContents());
    EXPECT_THAT(scanOf(world).items, IsEmpty());
}

TEST(DuplicateScanner, groupsComeLargestFirstAndEachStaysTogether) {
    const TestFolder world;
    for (const char* folder : {"x/", "y/"}) {
        world.file(std::string(folder) + "small", std::string(9'000, 's'));
        world.file(std::string(folder) + "large", std::string(90'000, 'l'));
        world.file(std::string(folder) + "other", std::string(9'001, 'o'));
    }
    std::vector<std::string> names;
    for (const CleanableItem& item : scanOf(world).items)
        names.emplace_back(item.name());
    ASSERT_EQ(names.size(), 6U);
    EXPECT_EQ(names[0], "large");
    EXPECT_EQ(names[1], "large");
    EXPECT_EQ(names[2], names[3]);
    EXPECT_EQ(names[4], names[5]);
}

TEST(DuplicateScanner, groupsOfOneSizeComeInTheOrderOfTheirHashes) {
    const TestFolder world;
    for (const char* folder : {"x/", "y/"}) {
        for (std::size_t length : {9'000U, 9'001U, 9'002U, 10'000U, 12'000U})
            world.file(std::string(folder) + std::to_string(length), std::string(length, 'x'));
    }
    const RecordedScan scan = scanOf(world);
    ASSERT_EQ(scan.items.size(), 10U);
    for (std::size_t i = 1; i < scan.items.size(); ++i)
        EXPECT_LE(scan.items[i - 1].groupID, scan.items[i].groupID);
}

TEST(DuplicateScanner, copiesAreFoundAmongVeryManyFilesOfOneLength) {
    for (const std::size_t length : {5'000U, 20'000U}) {
        const TestFolder world;
        const auto contents = [length](int number) {
            std::string bytes = std::to_string(number);
            bytes.resize(length, 'x');
            return bytes;
        };
        for (int i = 0; i < 200; ++i)
            world.file(std::to_string(i), contents(i));
        const std::string tail = contents(7).replace(length - 1, 1, "y");
        world.file("tail", tail);
        world.file("tail 2", tail);
        const URL copy = world.file("copy of 7", contents(7));
        hardLink(copy, world / "link");
        const RecordedScan scan = scanOf(world);
        const std::vector<std::string> names = scan.names();
        EXPECT_EQ(names.size(), 4U);
        EXPECT_THAT(names, testing::IsSupersetOf({"7", "tail", "tail 2"}));
        for (const CleanableItem& item : scan.items)
            EXPECT_EQ(item.groupID, FileSystemUtils::fullHash(item.url, 1'048'576));
    }
}

TEST(DuplicateScanner, eachFileIsOpenedOnce) {
    const TestFolder world;
    std::vector<URL> files;
    for (const char* name : {"a", "b", "c", "d"})
        files.push_back(world.file(name, std::string(300'000, 'x')));
    FileWatch watch;
    for (const URL& file : files)
        watch.watch(file, IN_OPEN);
    EXPECT_EQ(scanOf(world).items.size(), 4U);
    EXPECT_EQ(watch.count(), 4U);
}

TEST(DuplicateScanner, everyFiveHundredthFileIsReported) {
    const TestFolder world;
    for (int i = 0; i < 1'001; ++i)
        world.file("file" + std::to_string(i), std::string(100, 'x') + std::to_string(i));
    const RecordedScan scan = scanOf(world);
    ASSERT_GE(scan.reports.size(), 3U);
    for (const std::size_t i : {0U, 1U}) {
        const ScanProgress& report = scan.reports[i];
        EXPECT_EQ(report.phase, S::scanIndexingFiles());
        EXPECT_EQ(report.itemsFound, static_cast<std::int64_t>(500 * (i + 1)));
        EXPECT_EQ(report.bytesFound, 0);
        EXPECT_TRUE(report.currentPath.value_or("").starts_with(world.path() + "/file"));
        EXPECT_EQ(report.fractionCompleted, std::nullopt);
    }
    EXPECT_EQ(scan.reports[2].phase, S::scanComparingContents());
}

TEST(DuplicateScanner, eachBucketOfOneSizeIsReportedAndTheLastReportCountsKeepersButNotTheirBytes) {
    const TestFolder world;
    for (const char* name : {"large 1", "large 2"})
        world.file(name, std::string(200'000, 'l'));
    for (const char* name : {"small 1", "small 2", "small 3"})
        world.file(name, std::string(5'000, 's'));
    world.file("alone", std::string(100'000, 'a'));

    const RecordedScan scan = scanOf(world);

    const std::int64_t large = FileSystemUtils::size(world / "large 1");
    const std::int64_t small = FileSystemUtils::size(world / "small 1");
    EXPECT_THAT(
        scan.reports,
        ElementsAre(
            ScanProgress{.phase = S::scanComparingContents(), .itemsFound = 0, .fractionCompleted = 0.5},
            ScanProgress{.phase = S::scanComparingContents(), .itemsFound = 2, .fractionCompleted = 1.0},
            ScanProgress{
                .phase = S::scanDone(), .itemsFound = 5, .bytesFound = large + 2 * small, .fractionCompleted = 1.0}));
}

TEST(DuplicateScanner, aRefusedRootIsCountedAndTheOthersAreScanned) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    world.file("open/a", largeContents());
    world.file("open/b", largeContents());
    setMode(locked, 0000);
    const OrdinaryUser user;
    const RecordedScan scan = test::record(DuplicateScanner(std::vector{locked, world / "open"}, kMinimum));
    EXPECT_EQ(scan.items.size(), 2U);
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    setMode(locked, 0700);
}

TEST(DuplicateScanner, whereNothingIsFoundAndARootIsRefusedTheScanFails) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    setMode(locked, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(scanOf(world).failure, ScanError::accessDenied(locked));
    setMode(locked, 0700);
}

TEST(DuplicateScanner, aFileThatCanNotBeOpenedDropsOutOfItsGroup) {
    const TestFolder world;
    for (const char* name : {"a", "b", "c"})
        world.file(name, largeContents());
    setMode(world / "b", 0000);
    const OrdinaryUser user;
    const RecordedScan scan = scanOf(world);
    EXPECT_THAT(scan.paths(world), UnorderedElementsAre("a", "c"));
    EXPECT_EQ(scan.reports.back().blockedFolders, 0);
}

TEST(DuplicateScanner, aFileThatVanishesBetweenTheStagesDropsOutOfItsGroup) {
    const TestFolder world;
    for (const char* name : {"a", "b"})
        world.file(name, largeContents());
    EXPECT_THAT(scanWithChange(world, [&] { ::unlink((world / "a").path().c_str()); }).items, IsEmpty());
}

TEST(DuplicateScanner, theSecondNameOfAFileStandsForItWhenTheFirstHasGone) {
    const TestFolder world;
    const URL file = world.file("a", largeContents());
    hardLink(file, world / "b");
    world.file("c", largeContents());
    const std::vector<std::string> first = scanOf(world).paths(world);
    ASSERT_EQ(first.size(), 2U);
    const std::string gone = first[0] == "c" ? first[1] : first[0];
    const RecordedScan scan = scanWithChange(world, [&] { ::unlink((world / gone).path().c_str()); });
    EXPECT_THAT(scan.paths(world), UnorderedElementsAre(gone == "a" ? "b" : "a", "c"));
}

TEST(DuplicateScanner, whatHasTakenTheNameOfAFileIsNotRead) {
    const TestFolder world;
    const URL original = world.file("original", largeContents());
    const URL link = world.file("becomes a link", largeContents());
    const URL fifo = world.file("becomes a pipe", largeContents());
    const URL folder = world.file("becomes a folder", largeContents());
    const URL other = world.file("becomes another file", largeContents());
    FileWatch watch;

    const RecordedScan scan = scanWithChange(world, [&] {
        for (const URL& url : {link, fifo, folder, other})
            std::filesystem::rename(url.path(), world.path() + "/." + std::string(url.lastPathComponent()));
        world.link("becomes a link", original.path());
        ASSERT_EQ(::mkfifo(fifo.path().c_str(), 0600), 0);
        watch.watch(fifo, IN_OPEN);
        world.folder("becomes a folder");
        world.file("becomes another file", largeContents());
    });

    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_FALSE(watch.sawAny()) << "the pipe was opened";
}

TEST(DuplicateScanner, aCancelAtAnyMomentFailsTheScanWithNoPartialList) {
    const TestFolder world;
    for (const char* name : {"a", "b", "folder/c"})
        world.file(name, largeContents());
    for (const char* name : {"x", "folder/y"})
        world.file(name, "small");
    int polls = 0;
    (void)test::record(scannerOf(world), [&polls] { return ++polls < 0; });
    ASSERT_GT(polls, 10);
    for (int stopAt = 1, all = polls; stopAt <= all; ++stopAt) {
        polls = 0;
        const RecordedScan scan = test::record(scannerOf(world), [&] { return ++polls >= stopAt; });
        EXPECT_EQ(scan.failure, ScanError::cancelled()) << "stopped at poll " << stopAt << " of " << all;
        EXPECT_LE(polls, stopAt + 2) << "it went on asking";
        for (const ScanProgress& report : scan.reports)
            EXPECT_NE(report.phase, S::scanDone());
    }
}

TEST(DuplicateScanner, aNameThatIsNoTextIsShownAsSuchInDetails) {
    const TestFolder world;
    const URL keeper = world.file("k\xff", largeContents());
    setModified(keeper, 1'000);
    world.file("other", largeContents());
    const RecordedScan scan = scanOf(world);
    ASSERT_EQ(scan.items.size(), 2U);
    EXPECT_EQ(scan.items[0].url, keeper);
    EXPECT_EQ(scan.items[1].detail, S::detailDuplicateOf("k\uFFFD"));
}

TEST(DuplicateScanner, theDefaultRootsAreTheUsersFoldersThatExistInTheirOrder) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    for (const char* name : {"Music", "Downloads", "Pictures", "Other"})
        world.folder(name);
    std::vector<std::string> names;
    for (const URL& root : DuplicateScanner::defaultRoots())
        names.emplace_back(root.lastPathComponent());
    EXPECT_THAT(names, ElementsAre("Downloads", "Pictures", "Music"));
}

TEST(DuplicateScanner, withoutAnyDefaultRootThereIsNothingToFind) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    const RecordedScan scan = test::record(DuplicateScanner(std::nullopt, kMinimum));
    EXPECT_THAT(scan.reports, ElementsAre(ScanProgress{.phase = S::scanDone(), .fractionCompleted = 1.0}));
}

TEST(ScannerFactory, makesTheDuplicateScannerOverTheUsersFolders) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    world.file("Documents/a", largeContents());
    world.file("Downloads/b", largeContents());
    const RecordedScan scan = test::record(*ScannerFactory::makeScanner(ModuleKind::duplicates));
    EXPECT_EQ(scan.items.size(), 2U);
}

}  // namespace
}  // namespace tavrin
