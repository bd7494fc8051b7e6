#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/SystemJunkScanner.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::doneReport;
using test::LockedFolder;
using test::RecordedScan;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

RecordedScan scanOf(const TestFolder& world) {
    return test::record(SystemJunkScanner(false, world.url()));
}

TEST(SystemJunkScanner, aLibraryThatDoesNotExistGivesAnEmptyListAndTheDoneText) {
    const TestFolder world;
    const RecordedScan scan = test::record(SystemJunkScanner(false, world / "missing"));
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, ElementsAre(doneReport(0, 0)));
}

TEST(SystemJunkScanner, everySourceGivesItsFindingsInItsCategory) {
    const TestFolder world;
    world.file("Caches/com.foo.app/data");
    world.file("Logs/foo.log");
    world.file("Application Support/CrashReporter/foo.plist");
    world.file("Saved Application State/com.foo.app.savedState/window.data");
    world.file("Developer/Xcode/DerivedData/Foo-abc/x.o");
    world.file("Developer/Xcode/iOS DeviceSupport/17.0/symbols");
    world.file("Containers/com.bar.app/Data/Library/Caches/blob/data");
    world.file("Containers/com.empty.app/Data/Documents/precious");

    const RecordedScan scan = scanOf(world);

    std::map<std::string, ScanCategory> categories;
    for (const CleanableItem& item : scan.items)
        categories.emplace(item.url.path().substr(world.path().size() + 1), item.category);
    EXPECT_EQ(categories, (std::map<std::string, ScanCategory>{
                              {"Caches/com.foo.app", ScanCategory::userCache},
                              {"Logs/foo.log", ScanCategory::logs},
                              {"Application Support/CrashReporter", ScanCategory::logs},
                              {"Saved Application State/com.foo.app.savedState", ScanCategory::tempFiles},
                              {"Developer/Xcode/DerivedData/Foo-abc", ScanCategory::derivedData},
                              {"Developer/Xcode/iOS DeviceSupport/17.0", ScanCategory::derivedData},
                              {"Containers/com.bar.app/Data/Library/Caches/blob", ScanCategory::userCache},
                          }));
}

TEST(SystemJunkScanner, aContainersCachesAreLookedIntoOnlyInsideTheContainer) {
    const TestFolder world;
    world.file("Documents/thesis");
    world.link("Containers/com.foo.app/Data/Library/Caches", "../../../../Documents");
    world.file("elsewhere/Caches/thesis");
    world.link("Containers/com.bar.app/Data/Library", "../../../elsewhere");
    world.file("disk/com.moved.app/Data/Library/Caches/blob");
    world.link("Containers/com.moved.app", "../disk/com.moved.app");

    EXPECT_THAT(scanOf(world).paths(world), ElementsAre("Containers/com.moved.app/Data/Library/Caches/blob"));
}

TEST(SystemJunkScanner, aFindingStartsSelectedWithItsSizeAsDetail) {
    const TestFolder world;
    const URL folder = world.folder("Caches/com.foo.app");
    world.fileOfSize("Caches/com.foo.app/data", 50'000);

    const CleanableItem item = scanOf(world).items.at(0);

    EXPECT_EQ(item.url, folder);
    EXPECT_EQ(item.size, FileSystemUtils::size(folder));
    EXPECT_TRUE(item.isSelected);
    EXPECT_EQ(item.detail, ByteFormatter::string(item.size));
    EXPECT_EQ(item.groupID, std::nullopt);
    EXPECT_FALSE(item.isGroupKeeper);
    EXPECT_THAT(item.relatedURLs, IsEmpty());
}

TEST(SystemJunkScanner, aSourceThatExistsButIsEmptyReportsAndAddsNothing) {
    const TestFolder world;
    const URL logs = world.folder("Logs");

    const RecordedScan scan = scanOf(world);

    EXPECT_THAT(scan.items, IsEmpty());
    ASSERT_EQ(scan.reports.size(), 2U);
    EXPECT_EQ(scan.reports[0].phase, S::scanCheckingLabel(displayName(ScanCategory::logs)));
    EXPECT_EQ(scan.reports[0].currentPath, logs.path());
    EXPECT_EQ(scan.reports[0].fractionCompleted, 1.0 / 8) << "the second of eight sources";
    EXPECT_EQ(scan.reports[0].blockedFolders, 0);
}

TEST(SystemJunkScanner, missingSourcesCountInTheFraction) {
    const TestFolder world;
    world.file("Caches/com.apple.dt.Xcode/data");
    world.folder("Containers/a/Data/Library/Caches");

    const RecordedScan scan = scanOf(world);

    std::vector<double> fractions;
    for (const ScanProgress& report : scan.reports)
        fractions.push_back(report.fractionCompleted.value_or(-1));
    EXPECT_THAT(fractions, ElementsAre(0.0, 7.0 / 9, 8.0 / 9, 1.0));
    EXPECT_EQ(scan.reports.back().itemsFound, 1);
    EXPECT_EQ(scan.reports.back().bytesFound, scan.items.at(0).size);
    EXPECT_EQ(scan.reports.back().currentPath, std::nullopt);
}

TEST(SystemJunkScanner, aZeroByteCacheFolderIsNoFinding) {
    const TestFolder world;
    world.file("Caches/com.foo.empty/nothing", "");
    EXPECT_THAT(scanOf(world).items, IsEmpty());
}

TEST(SystemJunkScanner, hiddenEntriesInsideASourceAreNoFindingsButCountInsideAChild) {
    const TestFolder world;
    world.fileOfSize("Caches/.hidden", 10'000);
    const URL folder = world.folder("Caches/com.foo.app");
    world.fileOfSize("Caches/com.foo.app/.hidden", 20'000);

    const RecordedScan scan = scanOf(world);

    EXPECT_THAT(scan.paths(world), ElementsAre("Caches/com.foo.app"));
    EXPECT_GE(scan.items.at(0).size, 20'000);
}

TEST(SystemJunkScanner, theDeveloperCacheBelongsToCachesWhereThatCanBeListed) {
    const TestFolder world;
    world.file("Caches/com.apple.dt.Xcode/data");

    const RecordedScan scan = scanOf(world);

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.items[0].category, ScanCategory::userCache);
}

TEST(SystemJunkScanner, diagnosticReportsAreAFindingAndSoAreTheirChildren) {
    const TestFolder world;
    world.file("Logs/DiagnosticReports/a.crash");
    EXPECT_THAT(scanOf(world).paths(world), ElementsAre("Logs/DiagnosticReports", "Logs/DiagnosticReports/a.crash"));
}

TEST(SystemJunkScanner, aRefusedListingIsReportedAndTheOthersAreFound) {
    const TestFolder world;
    world.file("Logs/foo.log");
    const URL caches = world.folder("Caches");
    const LockedFolder lock(caches);

    const RecordedScan scan = scanOf(world);

    EXPECT_THAT(scan.paths(world), ElementsAre("Logs/foo.log"));
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
}

TEST(SystemJunkScanner, whereNothingIsFoundAndAllIsRefusedTheScanFailsWithTheFirstRoot) {
    const TestFolder world;
    const URL caches = world.folder("Caches");
    const URL logs = world.folder("Logs");
    const LockedFolder lock(caches);
    const LockedFolder secondLock(logs);

    const RecordedScan scan = scanOf(world);

    EXPECT_EQ(scan.failure, ScanError::accessDenied(caches));
    EXPECT_EQ(
        std::ranges::count(scan.reports, 1.0, [](const ScanProgress& report) { return report.fractionCompleted; }), 0)
        << "no last report";
}

TEST(SystemJunkScanner, refusedContainersAreADeniedRootAndTheScanGoesOn) {
    const TestFolder world;
    world.file("Logs/foo.log");
    const URL containers = world.folder("Containers");
    const LockedFolder lock(containers);

    const RecordedScan scan = scanOf(world);

    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
}

TEST(SystemJunkScanner, aCancelAtAnyMomentFailsTheScanWithNoPartialList) {
    const TestFolder world;
    world.file("Caches/one/data");
    world.file("Caches/two/data");
    world.file("Containers/com.bar.app/Data/Library/Caches/only/data");
    test::expectCancellableAtEveryPoll(SystemJunkScanner(false, world.url()));
}

TEST(SystemJunkScanner, aScanCancelledFromTheStartFailsWithoutAReport) {
    const TestFolder world;
    world.file("Caches/only/data");
    const RecordedScan scan = test::record(SystemJunkScanner(false, world.url()), [] { return true; });
    EXPECT_EQ(scan.failure, ScanError::cancelled());
    EXPECT_THAT(scan.reports, IsEmpty());
}

TEST(SystemJunkScanner, findingsComeLargestFirstAndEqualOnesInTheOrderTheyWereFound) {
    const TestFolder world;
    for (const char* name : {"e", "a", "d", "b", "c"})
        world.fileOfSize(std::string("Caches/same-") + name, 8'192);
    world.fileOfSize("Logs/large.log", 200'000);
    std::vector<std::string> expected{"Logs/large.log"};
    for (const URL& child : FileSystemUtils::children(world / "Caches", false))
        expected.push_back("Caches/" + std::string(child.lastPathComponent()));

    EXPECT_EQ(scanOf(world).paths(world), expected);
}

TEST(SystemJunkScanner, onlyThePrivilegedScannerHasTheTwoSourcesOutsideTheLibrary) {
    const TestFolder world;
    world.folder("Logs");
    std::vector<double> fractions;
    const auto note = [&](const ScanProgress& report) { fractions.push_back(report.fractionCompleted.value_or(-1)); };
    (void)SystemJunkScanner(false, world.url()).scan(note);
    (void)SystemJunkScanner(true, world.url()).scan(note);
    EXPECT_EQ(fractions.at(0), 1.0 / 8);
    EXPECT_EQ(fractions.at(2), 1.0 / 10);
}

TEST(ScannerFactory, makesTheSystemJunkScannerOverTheHomesLibrary) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    world.file("Library/Logs/foo.log");

    const auto scanner = ScannerFactory::makeScanner(ModuleKind::systemJunk);

    EXPECT_EQ(scanner->kind(), ModuleKind::systemJunk);
    EXPECT_EQ(scanner->scan([](const ScanProgress&) {}).size(), 1U);
}

TEST(ScannerFactory, everyModuleHasAScannerOfItsKind) {
    for (const ModuleKind kind : allModuleKinds)
        EXPECT_EQ(ScannerFactory::makeScanner(kind)->kind(), kind);
}

}  // namespace
}  // namespace tavrin
