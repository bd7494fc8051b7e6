#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScreenshotsScanner.h"
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
using test::setTimes;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

RecordedScan scanOf(std::vector<URL> locations) {
    return test::record(ScreenshotsScanner(std::move(locations)));
}

TEST(ScreenshotsScanner, namesAreKnownInBothLanguagesByTheirBeginning) {
    for (const char* name :
         {"Screenshot 2024-01-02 at 15.04.05.png", "Screen Recording 2024-01-02 at 15.04.05.mov",
          "Captura de pantalla 2024-01-02 a las 15.04.05.png", "Grabación de pantalla 2024-01-02 a las 15.04.05.mov",
          "Grabacion de pantalla 1.mov", "Grabacio\u0301n de pantalla, accent apart.mov", "screenshot.jpg",
          "Screenshot_2024.jpeg", "screenshots of a thing.heic", "Screenshot.old.gif", "Screenshot 1.tiff"})
        EXPECT_TRUE(ScreenshotsScanner::isScreenshotName(name)) << name;
    for (const char* name : {"My Screenshot.png", "Screen shot.png", "Captura.png", "Grabación.mov", "Screensho.png",
                             " Screenshot.png", "Bildschirmfoto.png"})
        EXPECT_FALSE(ScreenshotsScanner::isScreenshotName(name)) << name;
}

TEST(ScreenshotsScanner, namesInUpperCaseMatch) {
    EXPECT_TRUE(ScreenshotsScanner::isScreenshotName("SCREENSHOT 1.PNG"));
    EXPECT_TRUE(ScreenshotsScanner::isScreenshotName("GRABACIÓN DE PANTALLA.MOV"));
}

TEST(ScreenshotsScanner, otherExtensionsAreNotListed) {
    for (const char* name : {"Screenshot.pdf", "Screenshot.webp", "Screenshot", "Screenshot.", "Screenshot.png.txt",
                             "Screen Recording.mp4", "Screen Recording.m4v", ".png", "Screenshot.tif"})
        EXPECT_FALSE(ScreenshotsScanner::isScreenshotName(name)) << name;
}

TEST(ScreenshotsScanner, bytesThatAreNoTextDoNoHarm) {
    EXPECT_TRUE(ScreenshotsScanner::isScreenshotName("Screenshot \xff\xfe.png"));
    EXPECT_FALSE(ScreenshotsScanner::isScreenshotName("\xff.png"));
    EXPECT_FALSE(ScreenshotsScanner::isScreenshotName("Screenshot.\xff"));
}

TEST(ScreenshotsScanner, theDesktopComesFirstAndThenTheFolderThatIsSet) {
    const URL home = URL::fromPath("/home/ana", true);
    const auto paths = [&](const std::optional<std::string>& setting) {
        std::vector<std::string> found;
        for (const URL& location : ScreenshotsScanner::locations(home, setting))
            found.push_back(location.path());
        return found;
    };
    EXPECT_THAT(paths(std::nullopt), ElementsAre("/home/ana/Desktop"));
    EXPECT_THAT(paths("/srv/shots"), ElementsAre("/home/ana/Desktop", "/srv/shots"));
    EXPECT_THAT(paths("/home/ana/Desktop/"), ElementsAre("/home/ana/Desktop", "/home/ana/Desktop"));
    EXPECT_THAT(paths("~/Pictures/Shots"), ElementsAre("/home/ana/Desktop", "/home/ana/Pictures/Shots"));
    EXPECT_THAT(paths("~"), ElementsAre("/home/ana/Desktop", "/home/ana"));
    EXPECT_THAT(paths("/srv/~/shots"), ElementsAre("/home/ana/Desktop", "/srv/~/shots"));
    EXPECT_THAT(paths(std::string("/srv\0/x", 7)), ElementsAre("/home/ana/Desktop")) << "no path";
    for (const char* elsewhere : {"", "shots", "~bob/shots"})
        EXPECT_THAT(paths(elsewhere), ElementsAre("/home/ana/Desktop")) << elsewhere;
}

TEST(ScreenshotsScanner, aFindingStartsUnselectedWithTheDateAndTimeOfItsChange) {
    const TestFolder world;
    const URL file = world.fileOfSize("Screenshot 1.png", 30'000);
    const Date changed = Date::fromUnix(1'600'000'000);
    setTimes(file, Date::now(), changed);

    const RecordedScan scan = scanOf({world.url()});

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.items[0].url, file);
    EXPECT_EQ(scan.items[0].size, FileSystemUtils::size(file));
    EXPECT_EQ(scan.items[0].category, ScanCategory::screenshot);
    EXPECT_FALSE(scan.items[0].isSelected);
    EXPECT_EQ(scan.items[0].detail, dateAndTimeText(changed));
    EXPECT_EQ(scan.items[0].groupID, std::nullopt);
    EXPECT_THAT(
        scan.reports,
        ElementsAre(
            ScanProgress{.phase = S::scanCheckingScreenshots(), .currentPath = world.path()},
            ScanProgress{
                .phase = S::scanDone(), .itemsFound = 1, .bytesFound = scan.items[0].size, .fractionCompleted = 1.0}));
}

TEST(ScreenshotsScanner, onlyVisibleDirectChildrenAreLookedAt) {
    const TestFolder world;
    world.file("Screenshot 1.png");
    world.file("folder/Screenshot 2.png");
    world.file(".Screenshot 3.png");
    world.file("holiday.png");
    EXPECT_THAT(scanOf({world.url()}).paths(world), ElementsAre("Screenshot 1.png"));
}

TEST(ScreenshotsScanner, aFolderAndAnEmptyFileOfSuchANameAreFindings) {
    const TestFolder world;
    world.fileOfSize("Screenshot folder.png/inside", 30'000);
    world.file("Screenshot empty.png", "");
    EXPECT_THAT(scanOf({world.url()}).paths(world), ElementsAre("Screenshot folder.png", "Screenshot empty.png"));
}

TEST(ScreenshotsScanner, aFifoIsNeverOpened) {
    const TestFolder world;
    test::makeFifo(world / "Screenshot.png");
    EXPECT_EQ(scanOf({world.url()}).items.at(0).size, 0);
}

TEST(ScreenshotsScanner, whereNoDateCanBeReadThereIsNoDetail) {
    const TestFolder world;
    world.file("Desktop/Screenshot.png");
    // The names in it may be seen, and nothing else of what they stand for.
    test::setMode(world / "Desktop", 0400);
    {
        const test::OrdinaryUser user;
        const RecordedScan scan = scanOf({world / "Desktop"});
        EXPECT_EQ(scan.named("Screenshot.png").detail, std::nullopt);
        EXPECT_EQ(scan.named("Screenshot.png").size, 0);
    }
    test::setMode(world / "Desktop", 0700);
}

TEST(ScreenshotsScanner, aLockedFolderOfSuchANameIsMeasuredWithoutAWord) {
    const TestFolder world;
    world.file("Screenshot locked.png/inside");
    const LockedFolder lock(world / "Screenshot locked.png");
    const RecordedScan scan = scanOf({world.url()});
    EXPECT_EQ(scan.named("Screenshot locked.png").size, 0);
    EXPECT_EQ(scan.reports.back(), test::doneReport(1, 0));
}

TEST(ScreenshotsScanner, withBothLocationsEqualEachFileAppearsOnce) {
    const TestFolder world;
    world.file("Screenshot 1.png");
    EXPECT_EQ(scanOf({world.url(), world.url()}).items.size(), 1U);
    world.folder("x");
    EXPECT_EQ(scanOf({world.url(), world / "x/.."}).items.size(), 1U) << "by another way";
}

TEST(ScreenshotsScanner, findingsComeLargestFirst) {
    const TestFolder world;
    world.fileOfSize("a/Screenshot small.png", 10'000);
    world.fileOfSize("b/Screenshot large.png", 50'000);
    world.fileOfSize("b/Screenshot middle.png", 30'000);
    EXPECT_THAT(scanOf({world / "a", world / "b"}).paths(world),
                ElementsAre("b/Screenshot large.png", "b/Screenshot middle.png", "a/Screenshot small.png"));
}

TEST(ScreenshotsScanner, aMissingLocationIsPassedOverWithoutAReport) {
    const TestFolder world;
    const RecordedScan scan = scanOf({world / "missing"});
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_EQ(scan.reports.size(), 1U);
}

TEST(ScreenshotsScanner, aRefusedDesktopFailsTheScanUnlessTheOtherPlaceHasSome) {
    const TestFolder world;
    const URL desktop = world.folder("Desktop");
    const URL shots = world.folder("shots");
    const LockedFolder lock(desktop);
    EXPECT_EQ(scanOf({desktop, shots}).failure, ScanError::accessDenied(desktop));
    world.file("shots/Screenshot.png");
    const RecordedScan scan = scanOf({desktop, shots});
    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
}

TEST(ScreenshotsScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder world;
    world.file("Screenshot 1.png");
    world.file("other.txt");
    world.file("Screenshot 2.png/inside");
    test::expectCancellableAtEveryPoll(ScreenshotsScanner(std::vector{world.url()}));
}

TEST(ScreenshotsScanner, theFactorysScannerLooksAtTheDesktopAlone) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    const test::ScopedVariable settings("XDG_CONFIG_HOME", nullptr);
    home.file("Desktop/Screenshot.png");
    home.file("Pictures/Screenshot.png");
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::screenshots);
    EXPECT_EQ(scanner->kind(), ModuleKind::screenshots);
    EXPECT_THAT(test::record(*scanner).paths(home), ElementsAre("Desktop/Screenshot.png"));

    home.file(".config/spectaclerc", "[ImageSave]\nimageSaveLocation=file://" + home.path() + "/Pictures\n");
    EXPECT_THAT(test::record(*scanner).paths(home),
                UnorderedElementsAre("Desktop/Screenshot.png", "Pictures/Screenshot.png"))
        << "and at the folder that is set, where there is one";
}

TEST(ScreenshotsScanner, aFolderThatIsReachedOverALinkIsTheSameFolder) {
    const TestFolder world;
    world.file("Desktop/Screenshot 1.png", "x");
    world.link("home", ".");
    world.link("Captures", "Desktop");
    std::filesystem::create_hard_link((world / "Desktop/Screenshot 1.png").path(),
                                      (world / "Desktop/Screenshot 2.png").path());
    EXPECT_THAT(
        test::record(ScreenshotsScanner(std::vector{world / "Desktop", world / "Captures", world / "home/Desktop"}))
            .paths(world),
        testing::UnorderedElementsAre("Desktop/Screenshot 1.png", "Desktop/Screenshot 2.png"))
        << "two names in one folder are two captures";
}

}  // namespace
}  // namespace tavrin
