#include "Support/OrdinaryUser.h"
#include "Support/PropertyLists.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/AppUninstaller.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::makeBundle;
using test::makeBundleWithIdentifier;
using test::OrdinaryUser;
using test::record;
using test::RecordedScan;
using test::setMode;
using test::TestFolder;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Apps = std::vector<AppMatching::AppIdentity>;

/// Apps in "Apps" and "More apps", leftovers in "Support" and "Caches".
AppUninstaller scannerOf(const TestFolder& world) {
    return AppUninstaller(std::vector{world / "Apps", world / "More apps"},
                          std::vector{world / "Support", world / "Caches"});
}

TEST(AppUninstaller, anAppWithoutLeftoversSaysSoAndHasTheSizeOfItsBundle) {
    const TestFolder world;
    const URL app = makeBundleWithIdentifier(world, "Apps/Foo.app", "com.example.Foo");
    world.fileOfSize("Apps/Foo.app/Contents/MacOS/Foo", 30'000);
    world.fileOfSize("Apps/Foo.app/.hidden", 10'000);
    world.file("Support/Somebody else/file");

    const CleanableItem item = record(scannerOf(world)).items.at(0);

    EXPECT_EQ(item.url, app);
    EXPECT_EQ(item.size, FileSystemUtils::size(app));
    EXPECT_GE(item.size, 40'000);
    EXPECT_EQ(item.detail, S::detailNoRelatedFiles());
    EXPECT_EQ(item.category, ScanCategory::application);
    EXPECT_EQ(item.groupID, std::nullopt);
    EXPECT_FALSE(item.isSelected);
    EXPECT_FALSE(item.isGroupKeeper);
    EXPECT_THAT(item.relatedURLs, IsEmpty());
}

TEST(AppUninstaller, leftoversGoAlongAndCountInTheSize) {
    const TestFolder world;
    const URL app = makeBundleWithIdentifier(world, "Apps/Foo.app", "com.example.Foo");
    const URL support = world.folder("Support/Foo");
    world.fileOfSize("Support/Foo/data", 60'000);
    const URL caches = world.fileOfSize("Caches/com.example.foo.helper", 20'000);
    world.fileOfSize("Caches/.com.example.foo", 20'000);
    const std::int64_t leftovers = FileSystemUtils::size(support) + FileSystemUtils::size(caches);

    const CleanableItem item = record(scannerOf(world)).items.at(0);

    EXPECT_THAT(item.relatedURLs, ElementsAre(support, caches)) << "in the order of the roots";
    EXPECT_EQ(item.size, FileSystemUtils::size(app) + leftovers);
    EXPECT_EQ(item.detail, S::detailIncludesRelated(2, ByteFormatter::string(leftovers)));
}

TEST(AppUninstaller, oneLeftoverIsSingularInEnglishAndPluralInSpanish) {
    const TestFolder world;
    world.folder("Apps/Foo.app");
    const std::string size = ByteFormatter::string(FileSystemUtils::size(world.fileOfSize("Caches/Foo", 3'000)));
    EXPECT_EQ(record(scannerOf(world)).items.at(0).detail, S::detailIncludesRelated(1, size));
    EXPECT_EQ(S::detailIncludesRelated.in(Language::english, 1, "4 KB"), "Includes 1 related file \u00b7 4 KB");
    EXPECT_EQ(S::detailIncludesRelated.in(Language::english, 2, "4 KB"), "Includes 2 related files \u00b7 4 KB");
    EXPECT_EQ(S::detailIncludesRelated.in(Language::spanish, 1, "4 KB"), "Incluye 1 archivos asociados \u00b7 4 KB");
}

TEST(AppUninstaller, aPlainFileIsAnAppAndAFolderInCapitalsIsNone) {
    const TestFolder world;
    world.fileOfSize("Apps/Plain.app", 5'000);
    world.file("Apps/Loud.APP/Contents/file");

    const RecordedScan scan = record(scannerOf(world));

    EXPECT_THAT(scan.names(), ElementsAre("Plain.app"));
    EXPECT_EQ(scan.items.at(0).size, FileSystemUtils::size(world / "Apps/Plain.app"));
}

TEST(AppUninstaller, theSameNameInTwoDirectoriesGivesTwoFindingsAndNobodyTheLeftovers) {
    const TestFolder world;
    makeBundleWithIdentifier(world, "Apps/Foo.app", "com.example.one");
    makeBundleWithIdentifier(world, "More apps/Foo.app", "com.example.two");
    world.file("Support/Foo/data");
    const URL own = world.file("Caches/com.example.two");

    const RecordedScan scan = record(scannerOf(world));

    ASSERT_THAT(scan.names(), ElementsAre("Foo.app", "Foo.app"));
    EXPECT_THAT(scan.items[0].relatedURLs, IsEmpty());
    EXPECT_THAT(scan.items[1].relatedURLs, ElementsAre(own));
}

TEST(AppUninstaller, aSystemAppIsNeverShownAndOneWithAReceiptIs) {
    const TestFolder world;
    makeBundleWithIdentifier(world, "Apps/System.app", "com.apple.system");
    makeBundleWithIdentifier(world, "Apps/Bought.app", "com.apple.Bought");
    world.file("Apps/Bought.app/Contents/_MASReceipt/receipt");
    EXPECT_THAT(record(scannerOf(world)).names(), ElementsAre("Bought.app"));
}

TEST(AppUninstaller, aProtectedAppOwnsNoLeftoversEither) {
    const TestFolder world;
    makeBundleWithIdentifier(world, "Apps/Tool.app", "com.apple.Tool");
    makeBundleWithIdentifier(world, "More apps/Tool.app", "com.example.Tool");
    const URL leftover = world.file("Support/Tool/data").deletingLastPathComponent();

    const RecordedScan scan = record(scannerOf(world));

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_THAT(scan.items[0].relatedURLs, ElementsAre(leftover));
}

TEST(AppUninstaller, anAppWhoseBundleCannotBeReadIsMatchedByItsName) {
    const TestFolder world;
    makeBundle(world, "Apps/Foo.app", "no property list");
    const URL loose = world.file("Caches/foo.bar.plist");
    world.file("Caches/com.example.foo");
    EXPECT_THAT(record(scannerOf(world)).items.at(0).relatedURLs, ElementsAre(loose));
}

TEST(AppUninstaller, findingsComeByNameWhateverTheirCase) {
    const TestFolder world;
    for (const char* name : {"zeta", "Beta", "alpha", "\u00c9clair", "Gamma"})
        world.folder("Apps/" + std::string(name) + ".app");
    EXPECT_THAT(record(scannerOf(world)).names(),
                ElementsAre("alpha.app", "Beta.app", "\u00c9clair.app", "Gamma.app", "zeta.app"));
}

TEST(AppUninstaller, theExtensionIsPartOfTheNameThatSorts) {
    const TestFolder world;
    world.folder("Apps/Foo.app");
    world.folder("Apps/Foo 2.app");
    EXPECT_THAT(record(scannerOf(world)).names(), ElementsAre("Foo 2.app", "Foo.app"));
}

TEST(AppUninstaller, everyAppIsReportedBeforeItIsMeasuredAndNothingCountsAsSpaceToWin) {
    const TestFolder world;
    for (const char* app : {"Apps/A.app", "Apps/B.app", "More apps/C.app", "More apps/D.app"})
        world.fileOfSize(std::string(app) + "/Contents/data", 10'000);

    const RecordedScan scan = record(scannerOf(world));

    ASSERT_EQ(scan.reports.size(), 5U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(scan.reports[i].phase, S::scanScanningApps());
        EXPECT_EQ(scan.reports[i].itemsFound, static_cast<std::int64_t>(i));
        EXPECT_EQ(scan.reports[i].fractionCompleted, static_cast<double>(i) / 4);
        EXPECT_EQ(scan.reports[i].blockedFolders, 0);
    }
    EXPECT_THAT((std::vector{*scan.reports[0].currentPath, *scan.reports[1].currentPath}),
                UnorderedElementsAre("A.app", "B.app"))
        << "the name alone";
    EXPECT_EQ(scan.reports.back(),
              (ScanProgress{.phase = S::scanDone(), .itemsFound = 4, .bytesFound = 0, .fractionCompleted = 1.0}));
    EXPECT_THAT(scan.reports, Each(Field(&ScanProgress::bytesFound, 0)));
    EXPECT_THAT(scan.items, Each(AllOf(Field(&CleanableItem::isSelected, false))));
}

TEST(AppUninstaller, missingFoldersGiveAnEmptyListWithoutAnError) {
    const TestFolder world;
    const RecordedScan scan = record(scannerOf(world));
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, ElementsAre(ScanProgress{.phase = S::scanDone(), .fractionCompleted = 1.0}));
}

TEST(AppUninstaller, aRefusedLeftoverRootIsToldInTheLastReport) {
    const TestFolder world;
    world.folder("Apps/Foo.app");
    const URL support = world.folder("Support");
    setMode(support, 0000);
    const OrdinaryUser user;

    const RecordedScan scan = record(scannerOf(world));

    EXPECT_THAT(scan.names(), ElementsAre("Foo.app"));
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    setMode(support, 0700);
}

TEST(AppUninstaller, whereNothingIsFoundAndADirectoryRefusesTheScanFails) {
    const TestFolder world;
    const URL apps = world.folder("Apps");
    setMode(apps, 0000);
    const OrdinaryUser user;

    const RecordedScan scan = record(scannerOf(world));

    EXPECT_EQ(scan.failure, ScanError::accessDenied(world / "Apps"));
    EXPECT_THAT(scan.reports, IsEmpty());
    setMode(apps, 0700);
}

TEST(AppUninstaller, aCancelIsNoticedAtTheNextApp) {
    const TestFolder world;
    world.file("Apps/A.app/file");
    world.file("More apps/B.app/file");
    bool cancelled = false;
    const RecordedScan scan = record(
        scannerOf(world), [&] { return cancelled; }, [&](const ScanProgress&) { cancelled = true; });
    EXPECT_EQ(scan.failure, ScanError::cancelled());
    EXPECT_EQ(scan.reports.size(), 1U) << "the second app isn't reported any more";
}

TEST(AppUninstaller, aCancelDuringTheLastAppComesTooLate) {
    const TestFolder world;
    world.file("Apps/A.app/file");
    bool cancelled = false;
    const RecordedScan scan = record(
        scannerOf(world), [&] { return cancelled; }, [&](const ScanProgress&) { cancelled = true; });
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.names(), ElementsAre("A.app"));
}

TEST(AppUninstaller, aScanCancelledFromTheStartFailsWithoutAReport) {
    const TestFolder world;
    world.folder("Apps/A.app");
    const RecordedScan scan = record(scannerOf(world), [] { return true; });
    EXPECT_EQ(scan.failure, ScanError::cancelled());
    EXPECT_THAT(scan.reports, IsEmpty());
}

TEST(AppUninstaller, aCancelBeforeTheFirstAppIsNoticedAtOnce) {
    const TestFolder world;
    world.file("Apps/A.app/file");
    for (int i = 0; i < 50; ++i)
        world.file("Support/com.somebody.else" + std::to_string(i));
    int pollsBeforeTheFirstReport = 0;
    bool hasReported = false;
    const auto count = [&] {
        if (!hasReported) ++pollsBeforeTheFirstReport;
        return false;
    };
    (void)record(scannerOf(world), count, [&](const ScanProgress&) { hasReported = true; });
    EXPECT_GT(pollsBeforeTheFirstReport, 50) << "what may be a leftover is listed under the eye of the user";

    const auto scanCancelledAt = [&](int poll) {
        int polls = 0;
        return record(scannerOf(world), [&] { return polls++ >= poll; });
    };
    const std::optional<ScanError> cancelled = scanCancelledAt(0).failure;
    EXPECT_EQ(cancelled, ScanError::cancelled());
    for (int poll = 1; poll < pollsBeforeTheFirstReport; ++poll) {
        const RecordedScan scan = scanCancelledAt(poll);
        EXPECT_EQ(scan.failure, cancelled) << "at poll " << poll;
        EXPECT_THAT(scan.reports, IsEmpty());
    }
}

TEST(AssignLeftovers, areParallelToTheAppsAndGiveNoPathTwice) {
    const TestFolder world;
    const URL folder = world.folder("Support/com.maker.one");
    const URL file = world.file("Caches/com.maker.one.plist");
    const URL other = world.file("Caches/Two");
    world.file("Caches/google");
    world.file("Caches/nobody");
    const Apps apps{{"One", "com.maker.one"}, {"Google", std::nullopt}, {"Two", std::nullopt}};

    const auto leftovers = AppUninstaller::assignLeftovers({world / "Support", world / "Caches"}, apps, nullptr);

    ASSERT_EQ(leftovers.size(), 3U);
    EXPECT_THAT(leftovers[0], ElementsAre(folder, file));
    EXPECT_THAT(leftovers[1], IsEmpty()) << "a folder that several apps share belongs to none";
    EXPECT_THAT(leftovers[2], ElementsAre(other));
}

TEST(AssignLeftovers, ofNoAppsAreNone) {
    const TestFolder world;
    world.file("Support/anything");
    EXPECT_THAT(AppUninstaller::assignLeftovers({world / "Support"}, {}, nullptr), IsEmpty());
}

TEST(AssignLeftovers, onlyARefusalIsRecorded) {
    const TestFolder world;
    const URL closed = world.folder("closed");
    setMode(closed, 0000);
    const OrdinaryUser user;
    AccessDenials denials;
    const Apps apps{{"One", std::nullopt}};
    EXPECT_EQ(AppUninstaller::assignLeftovers({world / "missing", closed}, apps, &denials).size(), 1U);
    EXPECT_THAT(denials.all(), ElementsAre(closed));
    EXPECT_EQ(AppUninstaller::assignLeftovers({closed}, apps, nullptr).size(), 1U);
    setMode(closed, 0700);
}

TEST(AppUninstaller, theDefaultRootsAreEightFoldersOfTheLibrary) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    std::vector<std::string> names;
    for (const URL& root : AppUninstaller::defaultLeftoverRoots())
        names.push_back(root.path().substr(world.path().size()));
    EXPECT_THAT(names, ElementsAre("/Library/Application Support", "/Library/Caches", "/Library/Preferences",
                                   "/Library/Containers", "/Library/Logs", "/Library/Saved Application State",
                                   "/Library/HTTPStorages", "/Library/WebKit"));
}

TEST(ScannerFactory, makesTheUninstallerOverTheHomesAppsAndLibrary) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    makeBundleWithIdentifier(world, "Applications/Foo.app", "com.example.Foo");
    const URL webKit = world.file("Library/WebKit/com.example.Foo");

    const RecordedScan scan = record(*ScannerFactory::makeScanner(ModuleKind::uninstaller));

    EXPECT_THAT(scan.named("Foo.app").relatedURLs, ElementsAre(webKit));
}

}  // namespace
}  // namespace tavrin
