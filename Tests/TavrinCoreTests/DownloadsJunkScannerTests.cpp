#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/DownloadsJunkScanner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
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
using test::setTimes;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kDays = 90;
const Date kNow = Date::fromUnix(1'704'207'840);

DownloadsJunkScanner scannerOf(const URL& downloads) {
    return DownloadsJunkScanner(kDays, downloads);
}

RecordedScan scanOf(const TestFolder& downloads) {
    return test::record(scannerOf(downloads.url()));
}

Date daysAgo(int days) {
    return Date::now().adding(-days * 24h);
}

// Judging one file

std::optional<std::string> reasonFor(std::string_view name, std::optional<Date> accessed,
                                     std::optional<Date> modified = std::nullopt, FileType type = FileType::regular) {
    FileStatus status{.type = type};
    status.accessed = accessed;
    status.modified = modified;
    const URL downloads = URL::fromPath("/home/Downloads", true);
    return scannerOf(downloads).reason(downloads.appendingPathComponent(name), status, kNow);
}

TEST(DownloadsJunkReason, anInstallerIsListedWhateverItsAge) {
    const std::string day = dateText(kNow);
    for (const char* name : {"a.dmg", "a.pkg", "a.iso", "a.zip", "a.gz", "a.tar", "a.tgz", "a.rar", "a.tar.gz"})
        EXPECT_EQ(reasonFor(name, kNow), S::detailInstallerOrArchive() + " · " + day) << name;
    EXPECT_EQ(reasonFor("a.7z", kNow), std::nullopt);
    EXPECT_EQ(reasonFor("dmg", kNow), std::nullopt);
}

TEST(DownloadsJunkReason, anExtensionInUpperCaseCounts) {
    EXPECT_TRUE(reasonFor("A.DMG", kNow));
    EXPECT_TRUE(reasonFor("A.Zip", kNow));
}

TEST(DownloadsJunkReason, anOldInstallerStillShowsTheInstallersText) {
    const Date old = kNow.adding(-365 * 24h);
    EXPECT_EQ(reasonFor("a.dmg", old), S::detailInstallerOrArchive() + " · " + dateText(old));
}

TEST(DownloadsJunkReason, anotherFileIsListedWhenItsLastUseLiesBeforeTheCutoff) {
    const Date cutoff = kNow.adding(-kDays * 24h);
    EXPECT_EQ(reasonFor("a.txt", cutoff), std::nullopt);
    const Date before = cutoff.adding(-1s);
    EXPECT_EQ(reasonFor("a.txt", before), S::detailNotOpenedInAWhile() + " · " + dateText(before));
}

TEST(DownloadsJunkReason, withoutAnAccessDateTheModificationDateDecides) {
    const Date old = kNow.adding(-kDays * 24h - 1h);
    EXPECT_EQ(reasonFor("a.txt", std::nullopt, old), S::detailNotOpenedInAWhile() + " · " + dateText(old));
    EXPECT_EQ(reasonFor("a.txt", kNow, old), std::nullopt) << "reading it keeps it out of the list";
}

TEST(DownloadsJunkReason, aFileWithoutDatesIsNeverOld) {
    EXPECT_EQ(reasonFor("a.txt", std::nullopt), std::nullopt);
    EXPECT_EQ(reasonFor("a.zip", std::nullopt), S::detailInstallerOrArchive());
}

TEST(DownloadsJunkReason, aFolderIsNeverListed) {
    for (const char* name : {"a.zip", "App.app", "folder"})
        EXPECT_EQ(reasonFor(name, Date::fromUnix(0), std::nullopt, FileType::directory), std::nullopt) << name;
}

// The scan

TEST(DownloadsJunkScanner, withoutDownloadsThereIsNothingAndNoReport) {
    const TestFolder world;
    const RecordedScan scan = test::record(scannerOf(world / "missing"));
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, IsEmpty());
}

TEST(DownloadsJunkScanner, findsInstallersAndWhatNobodyOpened) {
    const TestFolder downloads;
    const URL image = downloads.fileOfSize("Setup.dmg", 50'000);
    const URL old = downloads.fileOfSize("old.txt", 20'000);
    const URL young = downloads.fileOfSize("young.txt", 20'000);
    const Date now = Date::now();
    const Date longAgo = daysAgo(91);
    setTimes(image, now, now);
    setTimes(old, longAgo, now);
    setTimes(young, daysAgo(89), daysAgo(400));

    const RecordedScan scan = scanOf(downloads);

    EXPECT_THAT(scan.paths(downloads), ElementsAre("Setup.dmg", "old.txt"));
    EXPECT_THAT(scan.details(), ElementsAre(S::detailInstallerOrArchive() + " · " + dateText(now),
                                            S::detailNotOpenedInAWhile() + " · " + dateText(longAgo)));
    for (const CleanableItem& item : scan.items) {
        EXPECT_EQ(item.size, FileSystemUtils::size(item.url));
        EXPECT_EQ(item.category, ScanCategory::downloads);
        EXPECT_FALSE(item.isSelected);
        EXPECT_EQ(item.groupID, std::nullopt);
    }
    ASSERT_EQ(scan.reports.size(), 3U);
    EXPECT_EQ(scan.reports[0].phase, S::scanCheckingDownloads());
    EXPECT_EQ(scan.reports[0].itemsFound, 0);
    EXPECT_EQ(scan.reports[1].itemsFound, 1);
    EXPECT_THAT((std::vector{*scan.reports[0].currentPath, *scan.reports[1].currentPath}),
                testing::UnorderedElementsAre("Setup.dmg", "old.txt"));
    EXPECT_EQ(scan.reports.back(), doneReport(2, scan.items[0].size + scan.items[1].size));
}

TEST(DownloadsJunkScanner, foldersHiddenEmptyAndDeeperFilesAreNoFindings) {
    const TestFolder downloads;
    downloads.file("folder.zip/inside.zip");
    downloads.file("Old.app/Contents/Info.plist");
    downloads.file(".hidden.dmg");
    downloads.file("empty.dmg", "");
    test::makeFifo(downloads / "fifo.dmg");
    const URL folder = downloads.folder("folder.zip");
    setTimes(folder, daysAgo(400), daysAgo(400));
    EXPECT_THAT(scanOf(downloads).items, IsEmpty());
}

TEST(DownloadsJunkScanner, aLinkIsJudgedByItselfAndNeverFollowed) {
    const TestFolder world;
    world.fileOfSize("elsewhere/large.dmg", 90'000);
    world.folder("Downloads");
    world.link("Downloads/link.dmg", "../elsewhere/large.dmg");
    for (const CleanableItem& item : test::record(scannerOf(world / "Downloads")).items)
        EXPECT_LT(item.size, 90'000);
}

TEST(DownloadsJunkScanner, aFileThatVanishesBeforeItIsLookedAtIsNoFinding) {
    const TestFolder downloads;
    const URL file = downloads.file("Setup.dmg");
    // Asked for the one entry of the listing, after it, and then for the file.
    int polls = 0;
    const auto removeAfterTheListing = [&] {
        if (++polls == 3) std::filesystem::remove(file.path());
        return false;
    };
    EXPECT_THAT(test::record(scannerOf(downloads.url()), removeAfterTheListing).items, IsEmpty());
    EXPECT_GE(polls, 3);
}

TEST(DownloadsJunkScanner, refusedDownloadsFailTheScan) {
    const TestFolder world;
    const URL downloads = world.folder("Downloads");
    const LockedFolder lock(downloads);
    EXPECT_EQ(test::record(scannerOf(downloads)).failure, ScanError::accessDenied(downloads));
}

TEST(DownloadsJunkScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder downloads;
    downloads.file("Setup.dmg");
    downloads.file("other.zip");
    downloads.folder("folder");
    test::expectCancellableAtEveryPoll(scannerOf(downloads.url()));
}

TEST(DownloadsJunkScanner, theFactorysScannerWaitsNinetyDaysInTheHomesDownloads) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    setTimes(home.file("Downloads/old.txt"), daysAgo(91), daysAgo(91));
    setTimes(home.file("Downloads/young.txt"), daysAgo(89), daysAgo(89));
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::downloadsJunk);
    EXPECT_EQ(scanner->kind(), ModuleKind::downloadsJunk);
    EXPECT_THAT(test::record(*scanner).paths(home), ElementsAre("Downloads/old.txt"));
}

}  // namespace
}  // namespace tavrin
