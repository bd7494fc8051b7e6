#include "Support/OrdinaryUser.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/AppLanguageScanner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::OrdinaryUser;
using test::record;
using test::RecordedScan;
using test::setMode;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Languages = AppLanguageScanner::Languages;

URL language(const TestFolder& world, const std::string& app, const std::string& code, std::size_t size = 5'000) {
    const std::string folder = "Apps/" + app + ".app/Contents/Resources/" + code + ".lproj";
    world.fileOfSize(folder + "/Localizable.strings", size);
    return (world / folder).appendingPathComponent("", true);
}

AppLanguageScanner scannerOf(const TestFolder& world, Languages kept = {"Base", "en"}) {
    return AppLanguageScanner(std::vector{world / "Apps"}, std::move(kept));
}

/// By folder name, whether it starts selected.
std::map<std::string, bool> selection(const RecordedScan& scan) {
    std::map<std::string, bool> selection;
    for (const CleanableItem& item : scan.items)
        selection.emplace(item.name(), item.isSelected);
    return selection;
}

TEST(AppLanguageScanner, aLanguageFolderIsAFindingInTheGroupOfItsName) {
    const TestFolder world;
    const URL folder = language(world, "Foo", "de", 30'000);

    const CleanableItem item = record(scannerOf(world)).items.at(0);

    EXPECT_EQ(item.url, folder);
    EXPECT_EQ(item.size, FileSystemUtils::size(folder));
    EXPECT_EQ(item.category, ScanCategory::appLanguage);
    EXPECT_TRUE(item.isSelected);
    EXPECT_EQ(item.detail, "Foo");
    EXPECT_EQ(item.groupID, AppLanguageScanner::languageName("de"));
    EXPECT_NE(item.groupID, "de");
    EXPECT_FALSE(item.isGroupKeeper);
    EXPECT_THAT(item.relatedURLs, IsEmpty());
}

TEST(AppLanguageScanner, resourcesThatAreALinkAreNotFollowed) {
    const TestFolder world;
    world.fileOfSize("work/de.lproj/Localizable.strings", 5'000);
    world.folder("Apps/Foo.app/Contents");
    world.link("Apps/Foo.app/Contents/Resources", "../../../work");
    world.fileOfSize("more/Resources/fr.lproj/Localizable.strings", 5'000);
    world.folder("Apps/Bar.app");
    world.link("Apps/Bar.app/Contents", "../../more");
    EXPECT_THAT(record(scannerOf(world)).items, IsEmpty());
}

TEST(AppLanguageScanner, aLanguageOfTheUserIsKeptInEverySpelling) {
    const TestFolder world;
    for (const char* code : {"de", "de_AT", "de-CH", "German", "GERMAN", "fr"})
        language(world, "Foo", code);
    EXPECT_EQ(selection(record(scannerOf(world, {"Base", "en", "de"}))),
              (std::map<std::string, bool>{{"de.lproj", false},
                                           {"de_AT.lproj", false},
                                           {"de-CH.lproj", false},
                                           {"German.lproj", false},
                                           {"GERMAN.lproj", false},
                                           {"fr.lproj", true}}));
}

TEST(AppLanguageScanner, byDefaultTheUsersLanguagesAreKeptWithoutTheirRegions) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    const test::ScopedVariable languages("LANGUAGE", "de_DE:pt_BR:zh-Hant");
    const test::ScopedVariable locale("LC_ALL", "de_DE.UTF-8");
    for (const char* code : {"de_AT", "pt", "zh-Hans", "en_GB", "fr"})
        world.fileOfSize("Applications/Foo.app/Contents/Resources/" + std::string(code) + ".lproj/x", 5'000);

    const auto scanner = ScannerFactory::makeScanner(ModuleKind::appLanguages);

    EXPECT_EQ(scanner->kind(), ModuleKind::appLanguages);
    EXPECT_EQ(selection(record(*scanner)), (std::map<std::string, bool>{{"de_AT.lproj", false},
                                                                        {"pt.lproj", false},
                                                                        {"zh-Hans.lproj", false},
                                                                        {"en_GB.lproj", false},
                                                                        {"fr.lproj", true}}));
}

TEST(AppLanguageScanner, theBaseIsNeverListed) {
    const TestFolder world;
    language(world, "Foo", "Base");
    language(world, "Foo", "base");
    EXPECT_THAT(record(scannerOf(world, {})).names(), ElementsAre("base.lproj")) << "and only in just this spelling";
}

TEST(AppLanguageScanner, bothSpellingsOfEnglishAreListedUnselectedInOneGroup) {
    const TestFolder world;
    language(world, "Foo", "en");
    language(world, "Foo", "English");

    const RecordedScan scan = record(scannerOf(world));

    EXPECT_EQ(selection(scan), (std::map<std::string, bool>{{"en.lproj", false}, {"English.lproj", false}}));
    EXPECT_EQ(scan.items.at(0).groupID, scan.items.at(1).groupID);
    EXPECT_EQ(scan.items.at(0).groupID, AppLanguageScanner::languageName("en"));
}

TEST(AppLanguageScanner, aScriptIsKeptByItselfOrByItsLanguageAndNotByAnother) {
    const TestFolder world;
    language(world, "Foo", "zh-Hans");
    language(world, "Foo", "zh_Hant");
    using Selection = std::map<std::string, bool>;
    EXPECT_EQ(selection(record(scannerOf(world, {"zh-Hant"}))),
              (Selection{{"zh-Hans.lproj", true}, {"zh_Hant.lproj", false}}));
    EXPECT_EQ(selection(record(scannerOf(world, {"zh"}))),
              (Selection{{"zh-Hans.lproj", false}, {"zh_Hant.lproj", false}}));
    EXPECT_EQ(selection(record(scannerOf(world, {"zh_Hant"}))),
              (Selection{{"zh-Hans.lproj", true}, {"zh_Hant.lproj", false}}))
        << "as it stands counts as well";
}

TEST(AppLanguageScanner, theCaseOfACodeCounts) {
    const TestFolder world;
    language(world, "Foo", "DE");
    EXPECT_EQ(selection(record(scannerOf(world, {"de"}))), (std::map<std::string, bool>{{"DE.lproj", true}}));
}

TEST(AppLanguageScanner, anUnknownCodeIsItsOwnGroupAndSelected) {
    const TestFolder world;
    language(world, "Foo", "xx");
    const CleanableItem item = record(scannerOf(world)).items.at(0);
    EXPECT_EQ(item.groupID, "xx");
    EXPECT_TRUE(item.isSelected);
}

TEST(AppLanguageScanner, anEmptyLanguageFolderIsNoFinding) {
    const TestFolder world;
    world.folder("Apps/Foo.app/Contents/Resources/de.lproj");
    world.file("Apps/Foo.app/Contents/Resources/fr.lproj/empty", "");
    EXPECT_THAT(record(scannerOf(world)).items, IsEmpty());
}

TEST(AppLanguageScanner, anAppFromTheStoreIsListedWithItsNoteAndNeverSelected) {
    const TestFolder world;
    language(world, "Bought", "de");
    language(world, "Bought", "en");
    world.file("Apps/Bought.app/Contents/_MASReceipt/receipt");

    const RecordedScan scan = record(scannerOf(world));

    EXPECT_EQ(selection(scan), (std::map<std::string, bool>{{"de.lproj", false}, {"en.lproj", false}}));
    EXPECT_EQ(scan.named("de.lproj").detail, "Bought \u00b7 " + S::moduleMASProtected());
}

TEST(AppLanguageScanner, systemAppsAreNotLeftOut) {
    const TestFolder world;
    language(world, "System", "de");
    world.file("Apps/System.app/Contents/Info.plist",
               "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.apple.x</string></dict></plist>");
    EXPECT_THAT(record(scannerOf(world)).names(), ElementsAre("de.lproj"));
}

TEST(AppLanguageScanner, onlyWhatBearsTheExtensionRightInTheResourcesIsLooked) {
    const TestFolder world;
    language(world, "Foo", "de");
    world.file("Apps/Foo.app/Contents/Resources/fr.LPROJ/x");
    world.file("Apps/Foo.app/Contents/Resources/deep/fr.lproj/x");
    world.file("Apps/Foo.app/Contents/fr.lproj/x");
    world.file("Apps/Foo.app/Contents/Resources/.fr.lproj/x");
    world.file("Apps/Folder/Bar.app/Contents/Resources/fr.lproj/x");
    EXPECT_THAT(record(scannerOf(world)).names(), ElementsAre("de.lproj"));
}

TEST(AppLanguageScanner, anAppThatIsAPlainFileIsPassedOver) {
    const TestFolder world;
    world.fileOfSize("Apps/Plain.app", 5'000);
    const RecordedScan scan = record(scannerOf(world));
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_EQ(scan.reports.size(), 2U) << "it is reported all the same";
}

TEST(AppLanguageScanner, anAppsNameThatIsNoTextIsShownAsText) {
    const TestFolder world;
    language(world, "Caf\xe9", "de");
    EXPECT_EQ(record(scannerOf(world)).items.at(0).detail, "Caf\ufffd");
}

TEST(AppLanguageScanner, theLastReportCountsTheFoldersToKeepToo) {
    const TestFolder world;
    language(world, "Foo", "en", 40'000);
    language(world, "Foo", "de", 10'000);

    const RecordedScan scan = record(scannerOf(world));

    ASSERT_EQ(scan.reports.size(), 2U);
    EXPECT_EQ(scan.reports[0],
              (ScanProgress{.phase = S::scanCheckingLanguages(), .currentPath = "Foo.app", .fractionCompleted = 0.0}));
    EXPECT_EQ(scan.reports[1], (ScanProgress{.phase = S::scanDone(),
                                             .itemsFound = 2,
                                             .bytesFound = scan.items[0].size + scan.items[1].size,
                                             .fractionCompleted = 1.0}));
}

TEST(AppLanguageScanner, findingsComeLargestFirst) {
    const TestFolder world;
    language(world, "Foo", "de", 10'000);
    language(world, "Foo", "fr", 90'000);
    language(world, "Foo", "it", 50'000);
    EXPECT_THAT(record(scannerOf(world)).names(), ElementsAre("fr.lproj", "it.lproj", "de.lproj"));
}

TEST(AppLanguageScanner, resourcesThatRefuseAreCountedAndTheOthersAreFound) {
    const TestFolder world;
    language(world, "Open", "de");
    const URL closed = world.folder("Apps/Closed.app/Contents/Resources");
    setMode(closed, 0000);
    const OrdinaryUser user;

    const RecordedScan scan = record(scannerOf(world));

    EXPECT_THAT(scan.names(), ElementsAre("de.lproj"));
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    setMode(closed, 0700);
}

TEST(AppLanguageScanner, whereNothingIsFoundAndADirectoryRefusesTheScanFails) {
    const TestFolder world;
    const URL apps = world.folder("Apps");
    setMode(apps, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(record(scannerOf(world)).failure, ScanError::accessDenied(world / "Apps"));
    setMode(apps, 0700);
}

TEST(AppLanguageScanner, aCancelIsNoticedAtTheNextAppAndAfterTheLastNotAtAll) {
    const TestFolder world;
    language(world, "One", "de");
    bool cancelled = false;
    const auto cancelAtTheFirstReport = [&](const ScanProgress&) { cancelled = true; };
    const auto isCancelled = [&] { return cancelled; };
    EXPECT_EQ(record(scannerOf(world), isCancelled, cancelAtTheFirstReport).failure, std::nullopt);

    language(world, "Two", "de");
    cancelled = false;
    const RecordedScan scan = record(scannerOf(world), isCancelled, cancelAtTheFirstReport);
    EXPECT_EQ(scan.failure, ScanError::cancelled());
    EXPECT_EQ(scan.reports.size(), 1U);
}

TEST(AppLanguageScanner, theListingOfAnAppsFoldersIsCancellable) {
    const TestFolder world;
    for (int i = 0; i < 100; ++i)
        language(world, "One", "x" + std::to_string(i));
    bool cancelled = false;
    int pollsAfterTheCancel = 0;
    const auto isCancelled = [&] {
        if (cancelled) ++pollsAfterTheCancel;
        return cancelled;
    };
    const RecordedScan scan = record(scannerOf(world), isCancelled, [&](const ScanProgress&) { cancelled = true; });
    EXPECT_THAT(scan.items, testing::IsEmpty());
    EXPECT_EQ(pollsAfterTheCancel, 1);
}

}  // namespace
}  // namespace tavrin
