#include "Support/LockedFolder.h"
#include "Support/PropertyLists.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/IOSBackupScanner.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::BinaryPropertyList;
using test::doneReport;
using test::LockedFolder;
using test::RecordedScan;
using test::setTimes;
using test::TestFolder;
using test::xmlPropertyList;
using testing::ElementsAre;
using testing::IsEmpty;

const Date kFolderDate = Date::fromUnix(1'500'000'000);
const Date kInfoDate = Date::fromUnix(1'600'000'000);    // 2020-09-13T12:26:40Z
const Date kStatusDate = Date::fromUnix(1'700'000'000);  // 2023-11-14T22:13:20Z

RecordedScan scanOf(const TestFolder& root) {
    return test::record(IOSBackupScanner(root.url()));
}

/// What a backup with these two lists is described as. Empty texts are files that aren't there.
std::string describe(std::string_view info, std::string_view status) {
    const TestFolder world;
    const URL backup = world.folder("backup");
    if (!info.empty()) world.file("backup/Info.plist", info);
    if (!status.empty()) world.file("backup/Status.plist", status);
    setTimes(backup, Date::now(), kFolderDate);
    return IOSBackupScanner::describe(backup);
}

std::string infoWith(std::string_view entries) {
    return xmlPropertyList("<dict>" + std::string(entries) + "</dict>");
}

const std::string kName = "<key>Device Name</key><string>Ana\u2019s iPhone</string>";
const std::string kDisplay = "<key>Display Name</key><string>Ana</string>";
const std::string kModel = "<key>Product Name</key><string>iPhone 13</string>";
const std::string kLast = "<key>Last Backup Date</key><date>2020-09-13T12:26:40Z</date>";
const std::string kDate = "<key>Date</key><date>2023-11-14T22:13:20Z</date>";

TEST(IOSBackupDescription, aCompleteOneHasNameModelAndDate) {
    EXPECT_EQ(describe(infoWith(kName + kDisplay + kModel + kLast), infoWith(kDate)),
              "Ana\u2019s iPhone (iPhone 13) · " + dateText(kStatusDate));
}

TEST(IOSBackupDescription, withNeitherListItHasTheFallbackNameAndTheFoldersDate) {
    EXPECT_EQ(describe("", ""), S::detailIOSDevice() + " · " + dateText(kFolderDate));
}

TEST(IOSBackupDescription, theDateOfTheStatusWinsOverThatOfTheInfo) {
    EXPECT_EQ(describe(infoWith(kName + kLast), infoWith(kDate)), "Ana\u2019s iPhone · " + dateText(kStatusDate));
    EXPECT_EQ(describe(infoWith(kName + kLast), ""), "Ana\u2019s iPhone · " + dateText(kInfoDate));
    EXPECT_EQ(describe(infoWith(kName + kLast), infoWith("<key>Date</key><string>yesterday</string>")),
              "Ana\u2019s iPhone · " + dateText(kInfoDate));
    EXPECT_EQ(describe(infoWith(kName), infoWith("")), "Ana\u2019s iPhone · " + dateText(kFolderDate));
}

TEST(IOSBackupDescription, aNameOfAnotherTypeFallsThroughToTheNextOne) {
    const std::string number = "<key>Device Name</key><integer>7</integer>";
    const std::string array = "<key>Display Name</key><array/>";
    EXPECT_EQ(describe(infoWith(number + kDisplay), infoWith(kDate)), "Ana · " + dateText(kStatusDate));
    EXPECT_EQ(describe(infoWith(number + array), infoWith(kDate)),
              S::detailIOSDevice() + " · " + dateText(kStatusDate));
    EXPECT_EQ(describe(infoWith(kName + "<key>Product Name</key><true/>"), infoWith(kDate)),
              "Ana\u2019s iPhone · " + dateText(kStatusDate));
}

TEST(IOSBackupDescription, damagedListsOnlyLeadToTheFallbacks) {
    const std::string fallback = S::detailIOSDevice() + " · " + dateText(kFolderDate);
    EXPECT_EQ(describe("rubbish", "bplist00"), fallback);
    EXPECT_EQ(describe(infoWith(kName).substr(0, 120), ""), fallback);
    EXPECT_EQ(describe(xmlPropertyList("<array/>"), xmlPropertyList("<string>x</string>")), fallback);
    EXPECT_EQ(describe(test::propertyListBomb(40), test::propertyListBomb(40)), fallback);
}

TEST(IOSBackupDescription, binaryListsAreReadToo) {
    BinaryPropertyList info;
    const std::size_t nameKey = info.string("Device Name");
    const std::size_t name = info.utf16(u"Año \u4e16");
    const std::size_t modelKey = info.string("Product Name");
    const std::size_t model = info.string("iPad Air");
    const std::string infoBytes = info.bytes(info.dictionary({nameKey, modelKey}, {name, model}));

    BinaryPropertyList status;
    const std::size_t dateKey = status.string("Date");
    // The type of a date, and 721692800.0 seconds since 2001 as a big-endian double.
    const std::size_t date = status.raw(std::string("\x33\x41\xc5\x82\x14\x40\x00\x00\x00", 9));
    const std::string statusBytes = status.bytes(status.dictionary({dateKey}, {date}));

    EXPECT_EQ(describe(infoBytes, statusBytes),
              "Año \u4e16 (iPad Air) · " + dateText(Date::fromReference(721'692'800.0)));
}

TEST(IOSBackupDescription, aListWithTheIconsOfManyAppsIsStillRead) {
    const std::string icons = "<key>Applications</key><data>" + std::string(8'000'000, 'A') + "</data>";
    EXPECT_EQ(describe(infoWith(kName + icons), infoWith(kDate)), "Ana\u2019s iPhone · " + dateText(kStatusDate));
}

TEST(IOSBackupDescription, aFifoInPlaceOfAListHoldsNobodyUp) {
    const TestFolder world;
    world.folder("backup");
    test::makeFifo(world / "backup/Info.plist");
    EXPECT_TRUE(IOSBackupScanner::describe(world / "backup").starts_with(S::detailIOSDevice()));
}

TEST(IOSBackupScanner, withoutARootThereIsNothingAndNoReport) {
    const TestFolder world;
    const RecordedScan scan = test::record(IOSBackupScanner(world / "missing"));
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, IsEmpty());
}

TEST(IOSBackupScanner, eachBackupIsAFindingThatStartsUnselected) {
    const TestFolder root;
    root.file("0001/Info.plist", infoWith(kName + kModel));
    root.file("0001/Status.plist", infoWith(kDate));
    root.fileOfSize("0001/ab/abcdef", 90'000);
    root.fileOfSize("0002/ab/.abcdef", 30'000);

    const RecordedScan scan = scanOf(root);

    EXPECT_THAT(scan.paths(root), ElementsAre("0001", "0002"));
    EXPECT_EQ(scan.items[0].detail, "Ana\u2019s iPhone (iPhone 13) · " + dateText(kStatusDate));
    for (const CleanableItem& item : scan.items) {
        EXPECT_EQ(item.size, FileSystemUtils::size(item.url));
        EXPECT_EQ(item.category, ScanCategory::deviceBackup);
        EXPECT_FALSE(item.isSelected);
        EXPECT_EQ(item.groupID, std::nullopt);
    }
    ASSERT_EQ(scan.reports.size(), 3U);
    EXPECT_EQ(scan.reports[0].phase, S::scanMeasuringBackup());
    EXPECT_EQ(scan.reports[1].itemsFound, 1);
    EXPECT_THAT((std::vector{*scan.reports[0].currentPath, *scan.reports[1].currentPath}),
                testing::UnorderedElementsAre("0001", "0002"));
    EXPECT_EQ(scan.reports.back().bytesFound, scan.items[0].size + scan.items[1].size);
}

TEST(IOSBackupScanner, looseFilesHiddenFoldersAndLinksAreSkippedWithoutAReport) {
    const TestFolder root;
    root.file("loose");
    root.file(".hidden/x");
    root.file(".hidden/y");
    root.link("link", ".hidden");
    EXPECT_THAT(scanOf(root).reports, ElementsAre(doneReport(0, 0)));
}

TEST(IOSBackupScanner, aFolderWithoutAByteIsReportedAndSkipped) {
    const TestFolder root;
    root.folder("0001");
    const RecordedScan scan = scanOf(root);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_EQ(scan.reports.size(), 2U);
}

TEST(IOSBackupScanner, aBackupThatVanishesWhileItIsMeasuredIsNoFinding) {
    const TestFolder root;
    root.file("0001/Info.plist", infoWith(kName));
    const auto remove = [&](const ScanProgress&) { std::filesystem::remove_all((root / "0001").path()); };
    EXPECT_THAT(IOSBackupScanner(root.url()).scan(remove), IsEmpty());
}

TEST(IOSBackupScanner, aRefusedRootFailsTheScan) {
    const TestFolder world;
    const URL root = world.folder("Backup");
    const LockedFolder lock(root);
    EXPECT_EQ(test::record(IOSBackupScanner(root)).failure, ScanError::accessDenied(root));
}

TEST(IOSBackupScanner, aRefusalInsideABackupIsReported) {
    const TestFolder root;
    root.file("0001/x");
    const URL locked = root.folder("0001/locked");
    const LockedFolder lock(locked);
    const RecordedScan scan = scanOf(root);
    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
}

TEST(IOSBackupScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder root;
    root.file("0001/Info.plist", infoWith(kName));
    root.file("0002/ab/x");
    root.file("loose");
    test::expectCancellableAtEveryPoll(IOSBackupScanner(root.url()));
}

TEST(IOSBackupScanner, theFactorysScannerLooksWhereTheSystemKeepsThem) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    home.file("Library/Application Support/MobileSync/Backup/0001/x");
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::iosBackups);
    EXPECT_EQ(scanner->kind(), ModuleKind::iosBackups);
    EXPECT_EQ(test::record(*scanner).items.size(), 1U);
}

}  // namespace
}  // namespace tavrin
