#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/BrowserCacheScanner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
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
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

constexpr std::int64_t kMinSize = 10'000;

RecordedScan scanOf(const TestFolder& library, std::int64_t minSize = kMinSize) {
    return test::record(BrowserCacheScanner(minSize, library.url()));
}

/// A file of its own in each folder, a little smaller each time, so that the findings come in this order.
void fill(const TestFolder& library, const Paths& folders) {
    std::size_t size = 20'000 + 4'096 * folders.size();
    for (const std::string& folder : folders)
        library.fileOfSize(folder + "/data", size -= 4'096);
}

TEST(BrowserCacheScanner, theCachesOfEightBrowsersAreFoundAndStartSelected) {
    const TestFolder library;
    const Paths folders{"Caches/com.apple.Safari",
                        "Caches/Google/Chrome",
                        "Caches/Microsoft Edge",
                        "Caches/BraveSoftware/Brave-Browser",
                        "Caches/Firefox",
                        "Caches/com.operasoftware.Opera",
                        "Caches/Vivaldi",
                        "Caches/company.thebrowser.Browser",
                        "Containers/com.apple.Safari/Data/Library/Caches/com.apple.Safari",
                        "Containers/com.apple.Safari/Data/Library/Caches/WebKit"};
    fill(library, folders);

    const RecordedScan scan = scanOf(library);

    EXPECT_EQ(scan.paths(library), folders);
    std::vector<std::string> details;
    for (const char* browser :
         {"Safari", "Chrome", "Edge", "Brave", "Firefox", "Opera", "Vivaldi", "Arc", "Safari", "Safari"})
        details.push_back(S::detailBrowserCache(browser));
    EXPECT_EQ(scan.details(), details);
    for (const CleanableItem& item : scan.items) {
        EXPECT_EQ(item.size, FileSystemUtils::size(item.url));
        EXPECT_EQ(item.category, ScanCategory::browserCache);
        EXPECT_TRUE(item.isSelected);
        EXPECT_EQ(item.groupID, std::nullopt);
    }
    EXPECT_EQ(scan.reports.size(), folders.size() + 1);
    EXPECT_EQ(scan.reports[1],
              (ScanProgress{.phase = S::scanCheckingLabel("Chrome"), .itemsFound = 1, .currentPath = "Chrome"}));
}

TEST(BrowserCacheScanner, everyFolderBesideTheSupportFilesIsAProfileWithEightCaches) {
    const TestFolder library;
    Paths folders;
    for (const char* support :
         {"Google/Chrome", "Microsoft Edge", "BraveSoftware/Brave-Browser", "Vivaldi", "company.thebrowser.Browser"}) {
        for (const char* cache : {"Cache", "Code Cache", "GPUCache", "DawnCache", "DawnGraphiteCache", "GrShaderCache",
                                  "ShaderCache", "Service Worker/CacheStorage"})
            folders.push_back(std::string("Application Support/") + support + "/Any name/" + cache);
    }
    fill(library, folders);
    for (const char* kept : {"History", "Cookies", "Login Data", "Cached", "Service Worker/Database/x"})
        library.fileOfSize(std::string("Application Support/Google/Chrome/Any name/") + kept, 50'000);

    const RecordedScan scan = scanOf(library);

    EXPECT_EQ(scan.paths(library), folders);
    EXPECT_EQ(scan.items[0].detail, S::detailBrowserCache("Chrome · Any name"));
    EXPECT_EQ(scan.reports[7],
              (ScanProgress{
                  .phase = S::scanCheckingLabel("Chrome · Any name"), .itemsFound = 7, .currentPath = "CacheStorage"}));
}

TEST(BrowserCacheScanner, theDetailNamesBrowserAndProfile) {
    const TestFolder library;
    library.fileOfSize("Application Support/BraveSoftware/Brave-Browser/P/Cache/data", 20'000);
    EXPECT_EQ(scanOf(library).items.at(0).detail, S::detailBrowserCache("Brave · P"));
    EXPECT_EQ(S::detailBrowserCache.in(Language::english, "Brave · P"), "Brave · P · cache (comes back on its own)");
}

TEST(BrowserCacheScanner, aFolderIsListedFromTheLeastSizeOn) {
    const TestFolder library;
    library.fileOfSize("Caches/Firefox/data", 20'000);
    const std::int64_t size = FileSystemUtils::size(library / "Caches/Firefox");
    EXPECT_EQ(scanOf(library, size).items.size(), 1U);
    EXPECT_THAT(scanOf(library, size + 1).items, IsEmpty());
    EXPECT_EQ(scannerDefaults::BrowserCaches::minSizeBytes, 1'000'000);
}

TEST(BrowserCacheScanner, aFileOrALinkInPlaceOfACacheIsSkipped) {
    const TestFolder library;
    library.fileOfSize("Application Support/Vivaldi/Default/Cache", 50'000);
    library.fileOfSize("elsewhere/data", 50'000);
    library.link("Application Support/Vivaldi/Default/GPUCache", "../../../elsewhere");
    library.fileOfSize("Caches/Firefox", 50'000);
    library.link("Caches/Vivaldi", "../elsewhere");
    EXPECT_THAT(scanOf(library).items, IsEmpty());
}

TEST(BrowserCacheScanner, aSupportFolderWithoutProfilesGivesNothing) {
    const TestFolder library;
    library.file("Application Support/Google/Chrome/Local State");
    const RecordedScan scan = scanOf(library);
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.reports, ElementsAre(doneReport(0, 0)));
}

TEST(BrowserCacheScanner, aHiddenFolderAndALinkAreNeverTakenForAProfile) {
    const TestFolder library;
    library.fileOfSize("Application Support/Google/Chrome/.hidden/Cache/data", 20'000);
    library.fileOfSize("elsewhere/Cache/data", 20'000);
    library.link("Application Support/Google/Chrome/Linked", "../../../elsewhere");
    EXPECT_THAT(scanOf(library).items, IsEmpty());
}

TEST(BrowserCacheScanner, findingsComeLargestFirstWhateverTheBrowser) {
    const TestFolder library;
    library.fileOfSize("Caches/com.apple.Safari/data", 20'000);
    library.fileOfSize("Application Support/Vivaldi/Default/Cache/data", 50'000);
    library.fileOfSize("Caches/Firefox/data", 20'000);

    const RecordedScan scan = scanOf(library);

    EXPECT_THAT(scan.paths(library),
                ElementsAre("Application Support/Vivaldi/Default/Cache", "Caches/com.apple.Safari", "Caches/Firefox"));
    EXPECT_EQ(scan.reports.back().bytesFound, scan.items[0].size + scan.items[1].size + scan.items[2].size);
}

TEST(BrowserCacheScanner, whatRefusesIsReportedOrFailsTheScan) {
    const TestFolder library;
    const URL profiles = library.folder("Application Support/Google/Chrome");
    const URL sandbox = library.folder("Containers/com.apple.Safari/Data/Library/Caches/WebKit");
    const LockedFolder lock(profiles);
    const LockedFolder secondLock(sandbox);
    EXPECT_EQ(scanOf(library).failure, ScanError::accessDenied(sandbox));
    library.fileOfSize("Caches/Firefox/data", 20'000);
    const RecordedScan scan = scanOf(library);
    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 2);
}

TEST(BrowserCacheScanner, aProfileWhoseNameIsNoTextIsNamedAsFarAsItIs) {
    const TestFolder library;
    library.fileOfSize("Application Support/Vivaldi/\xff/Cache/data", 20'000);
    EXPECT_EQ(scanOf(library).items.at(0).detail, S::detailBrowserCache("Vivaldi · \uFFFD"));
}

TEST(BrowserCacheScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder library;
    library.fileOfSize("Caches/Firefox/data", 20'000);
    library.fileOfSize("Application Support/Vivaldi/Default/Cache/data", 20'000);
    test::expectCancellableAtEveryPoll(BrowserCacheScanner(kMinSize, library.url()));
}

TEST(BrowserCacheScanner, theFactorysScannerLooksIntoTheHomesLibrary) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    home.fileOfSize("Library/Caches/Firefox/data", 1'000'000);
    home.fileOfSize("Library/Caches/Vivaldi/data", 999'424);  // 244 blocks of 4 KiB
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::browserCaches);
    EXPECT_EQ(scanner->kind(), ModuleKind::browserCaches);
    EXPECT_THAT(test::record(*scanner).paths(home), ElementsAre("Library/Caches/Firefox"));
}

TEST(BrowserCacheScanner, aSupportFolderThatCantBeSeenCountsAsNone) {
    const TestFolder library;
    library.fileOfSize("Caches/Firefox/data", 20'000);
    library.fileOfSize("Application Support/Google/Chrome/Default/Cache/data", 20'000);
    const LockedFolder lock(library / "Application Support");
    const RecordedScan scan = scanOf(library);
    EXPECT_THAT(scan.paths(library), ElementsAre("Caches/Firefox"));
    EXPECT_EQ(scan.reports.back(), doneReport(1, scan.items.at(0).size));
}

}  // namespace
}  // namespace tavrin
