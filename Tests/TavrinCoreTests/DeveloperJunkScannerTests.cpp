#include "Support/FileWatch.h"
#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/DeveloperJunkScanner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::LockedFolder;
using test::RecordedScan;
using test::TestFolder;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr int kDepth = 6;

DeveloperJunkScanner scannerOf(const TestFolder& home, int maxDepth = kDepth) {
    return {home.url(), std::nullopt, maxDepth};
}

RecordedScan scanOf(const TestFolder& home) {
    return test::record(scannerOf(home));
}

TEST(DeveloperJunkScanner, toolCachesAreFoundWhereTheToolsKeepThemAndStartSelected) {
    const TestFolder home;
    const std::vector<std::pair<std::string, std::string>> tools{
        {"Homebrew", "Library/Caches/Homebrew"},
        {"npm", ".npm/_cacache"},
        {"yarn", "Library/Caches/Yarn"},
        {"pip", "Library/Caches/pip"},
        {"pnpm", "Library/pnpm/store"},
        {"Gradle", ".gradle/caches"},
        {"Maven", ".m2/repository"},
        {"CocoaPods", "Library/Caches/CocoaPods"},
        {"Carthage", "Library/Caches/org.carthage.CarthageKit"},
        {S::detailSimulatorCaches(), "Library/Developer/CoreSimulator/Caches"},
        {"SwiftPM", "Library/Caches/org.swift.swiftpm"},
        {"Go modules", "go/pkg/mod/cache"},
    };
    std::vector<std::string> paths;
    std::vector<std::string> details;
    std::vector<std::string> phases;
    for (const auto& [label, path] : tools) {
        home.fileOfSize(path + "/data", 10'000);
        paths.push_back(path);
        details.push_back(label + " · " + ByteFormatter::string(FileSystemUtils::size(home / path)));
        phases.push_back(S::scanToolCaches(label));
    }

    const RecordedScan scan = scanOf(home);

    // All are of one size, so they stay in the order of the table.
    EXPECT_EQ(scan.paths(home), paths);
    EXPECT_EQ(scan.details(), details);
    EXPECT_EQ(scan.phasesBeforeTheEnd(), phases);
    for (const CleanableItem& item : scan.items) {
        EXPECT_EQ(item.category, ScanCategory::developerCache);
        EXPECT_TRUE(item.isSelected);
        EXPECT_EQ(item.groupID, std::nullopt);
        EXPECT_THAT(item.relatedURLs, IsEmpty());
    }
    EXPECT_EQ(scan.reports[1],
              (ScanProgress{
                  .phase = S::scanToolCaches("npm"), .itemsFound = 1, .currentPath = (home / ".npm/_cacache").path()}));
}

TEST(DeveloperJunkScanner, anEmptyToolCacheIsReportedAndNoFinding) {
    const TestFolder home;
    home.folder(".npm/_cacache");
    const RecordedScan scan = scanOf(home);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_EQ(scan.reports.size(), 2U);
}

TEST(DeveloperJunkScanner, aBuildFolderIsNamedByItsProjectAndStartsUnselected) {
    const TestFolder home;
    const URL folder = home.folder("Projects/app/node_modules");
    home.fileOfSize("Projects/app/node_modules/left-pad/index.js", 10'000);

    const RecordedScan scan = scanOf(home);

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.items[0].url, folder);
    EXPECT_EQ(scan.items[0].size, FileSystemUtils::size(folder));
    EXPECT_EQ(scan.items[0].category, ScanCategory::buildArtifacts);
    EXPECT_FALSE(scan.items[0].isSelected);
    EXPECT_EQ(scan.items[0].detail, "app · node_modules");
    EXPECT_EQ(scan.reports.at(0), (ScanProgress{.phase = S::scanLookingForProjects(), .currentPath = folder.path()}));
}

TEST(DeveloperJunkScanner, aProjectWhoseNameIsNoTextIsNamedAsFarAsItIs) {
    const TestFolder home;
    home.file("src/caf\xe9/Pods/x");
    EXPECT_THAT(scanOf(home).details(), ElementsAre("caf\uFFFD · Pods"));
}

TEST(DeveloperJunkScanner, buildFoldersAreKnownByTheirNamesAlone) {
    const TestFolder home;
    for (const char* path : {"Documents/Pods/x", "Documents/letters/DerivedData/x", "Documents/a/node_modules/x",
                             "Documents/a/pods/x", "Documents/a/build/x", "Documents/a/node_modules2/x"})
        home.file(path);
    EXPECT_THAT(scanOf(home).paths(home),
                UnorderedElementsAre("Documents/Pods", "Documents/letters/DerivedData", "Documents/a/node_modules"));
}

TEST(DeveloperJunkScanner, hiddenFoldersAreNeverMetEvenThoseWithAKnownName) {
    const TestFolder home;
    for (const char* path :
         {"Code/app/.build/x", "Code/app/.next/x", "Code/app/.nuxt/x", "Code/.hidden/node_modules/x"})
        home.file(path);
    EXPECT_THAT(scanOf(home).items, IsEmpty());
}

TEST(DeveloperJunkScanner, aBuildFolderInsideABuildFolderIsNotListedSeparately) {
    const TestFolder home;
    home.file("repos/app/node_modules/dependency/node_modules/x");
    home.file("repos/app/node_modules/dependency/Pods/x");
    EXPECT_THAT(scanOf(home).paths(home), ElementsAre("repos/app/node_modules"));
}

TEST(DeveloperJunkScanner, aFileOrALinkOfAKnownNameIsNoBuildFolder) {
    const TestFolder home;
    home.file("work/app/Pods");
    home.file("elsewhere/modules/x");
    home.link("work/app/node_modules", "../../elsewhere/modules");
    home.folder("work/other/node_modules");
    EXPECT_THAT(scanOf(home).items, IsEmpty()) << "and one without a byte is no finding";
}

TEST(DeveloperJunkScanner, foldersDownToTheGreatestDepthAreLookedInto) {
    const TestFolder home;
    home.file("src/1/2/3/4/5/6/node_modules/x");
    home.file("src/1/2/3/4/5/6/7/Pods/x");
    EXPECT_THAT(scanOf(home).paths(home), ElementsAre("src/1/2/3/4/5/6/node_modules"));
    EXPECT_THAT(test::record(scannerOf(home, kDepth + 1)).items, testing::SizeIs(2));
    EXPECT_THAT(test::record(scannerOf(home, kDepth - 1)).items, IsEmpty());
    home.file("src/Pods/x");
    EXPECT_THAT(test::record(scannerOf(home, 0)).paths(home), ElementsAre("src/Pods"));
    EXPECT_THAT(test::record(scannerOf(home, -1)).items, IsEmpty());
}

TEST(DeveloperJunkScanner, theRootsAreTheUsualFoldersThatExistAtConstruction) {
    const TestFolder home;
    for (const char* name : {"Documents", "work", "Sites", "repos", "src", "code", "Code", "Projects", "Developer"})
        home.folder(name);
    const DeveloperJunkScanner scanner = scannerOf(home);
    std::vector<std::string> names;
    for (const URL& root : scanner.projectRoots())
        names.emplace_back(root.lastPathComponent());
    EXPECT_THAT(names,
                ElementsAre("Developer", "Projects", "Code", "code", "src", "repos", "Sites", "work", "Documents"));
    std::filesystem::remove((home / "Code").path());
    EXPECT_EQ(scannerOf(home).projectRoots().size(), 8U);
}

TEST(DeveloperJunkScanner, aRootThatVanishedSinceIsAnEmptyOne) {
    const TestFolder home;
    home.file("src/app/Pods/x");
    const DeveloperJunkScanner scanner = scannerOf(home);
    std::filesystem::remove_all((home / "src").path());
    const RecordedScan scan = test::record(scanner);
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
}

TEST(DeveloperJunkScanner, aRootNamedTwiceGivesItsFoldersTwice) {
    const TestFolder home;
    home.file("src/app/Pods/x");
    const std::vector<URL> roots{home / "src", home / "src"};
    EXPECT_THAT(test::record(DeveloperJunkScanner(home.url(), roots, kDepth)).paths(home),
                ElementsAre("src/app/Pods", "src/app/Pods"));
}

TEST(DeveloperJunkScanner, aRootThatIsALinkIsTheFolderBehindIt) {
    const TestFolder home;
    home.file("disk/app/Pods/x");
    home.link("Projects", "disk");
    EXPECT_THAT(scanOf(home).paths(home), ElementsAre("Projects/app/Pods"));
}

TEST(DeveloperJunkScanner, theLastReportCountsTheBytesOfToolCachesAlone) {
    const TestFolder home;
    home.fileOfSize(".npm/_cacache/data", 30'000);
    home.fileOfSize("src/app/Pods/x", 90'000);

    const RecordedScan scan = scanOf(home);

    EXPECT_THAT(scan.paths(home), ElementsAre("src/app/Pods", ".npm/_cacache"));
    EXPECT_EQ(
        scan.reports.back(),
        (ScanProgress{
            .phase = S::scanDone(), .itemsFound = 2, .bytesFound = scan.items[1].size, .fractionCompleted = 1.0}));
}

TEST(DeveloperJunkScanner, linksThatLeadUpCatchNobody) {
    const TestFolder home;
    home.file("src/app/Pods/x");
    home.link("src/app/up", "..");
    home.link("src/app/Pods/up", "../../..");
    EXPECT_THAT(scanOf(home).paths(home), ElementsAre("src/app/Pods"));
}

TEST(DeveloperJunkScanner, aFifoIsNeverOpened) {
    const TestFolder home;
    home.file("src/app/Pods/x");
    test::makeFifo(home / "src/app/Pods/fifo");
    test::makeFifo(home / "src/node_modules");
    test::FileWatch watch;
    watch.watch(home / "src/app/Pods/fifo", IN_OPEN);
    watch.watch(home / "src/node_modules", IN_OPEN);
    EXPECT_THAT(scanOf(home).paths(home), ElementsAre("src/app/Pods"));
    EXPECT_FALSE(watch.sawAny());
}

TEST(DeveloperJunkScanner, aBuildFolderThatVanishesAfterItWasFoundIsNoFinding) {
    const TestFolder home;
    home.file("src/app/Pods/x");
    const auto remove = [&](const ScanProgress&) { std::filesystem::remove_all((home / "src/app/Pods").path()); };
    EXPECT_THAT(scannerOf(home).scan(remove), IsEmpty());
}

TEST(DeveloperJunkScanner, aRefusedProjectFolderIsReportedAndTheOthersAreFound) {
    const TestFolder home;
    home.file("src/app/Pods/x");
    home.file("src/locked/Pods/x");
    const URL locked = home.folder("src/locked");
    const LockedFolder lock(locked);
    const RecordedScan scan = scanOf(home);
    EXPECT_THAT(scan.paths(home), ElementsAre("src/app/Pods"));
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    std::filesystem::remove_all((home / "src/app").path());
    EXPECT_EQ(scanOf(home).failure, ScanError::accessDenied(locked));
}

TEST(DeveloperJunkScanner, aRefusalInsideAToolCacheIsReported) {
    const TestFolder home;
    home.file(".npm/_cacache/data");
    const URL locked = home.folder(".npm/_cacache/locked");
    const LockedFolder lock(locked);
    EXPECT_EQ(scanOf(home).reports.back().blockedFolders, 1);
}

TEST(DeveloperJunkScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder home;
    home.file(".npm/_cacache/data");
    home.file("src/app/Pods/x");
    home.file("src/app/source.cpp");
    home.file("Documents/b/node_modules/y");
    test::expectCancellableAtEveryPoll(scannerOf(home));
}

TEST(DeveloperJunkScanner, theFactorysScannerLooksIntoTheHome) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    home.file("src/1/2/3/4/5/6/node_modules/x");
    home.file(".npm/_cacache/data");
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::developerJunk);
    EXPECT_EQ(scanner->kind(), ModuleKind::developerJunk);
    EXPECT_EQ(test::record(*scanner).items.size(), 2U);
}

}  // namespace
}  // namespace tavrin
