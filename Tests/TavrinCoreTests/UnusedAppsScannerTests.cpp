#include "Support/OrdinaryUser.h"
#include "Support/PropertyLists.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Scanning/UnusedAppsScanner.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::makeBundleWithIdentifier;
using test::OrdinaryUser;
using test::record;
using test::RecordedScan;
using test::setMode;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

const Date kNow = Date::fromUnix(1'750'000'000);

Date daysAgo(int days, std::chrono::seconds more = {}) {
    return kNow.adding(-std::chrono::hours(24) * days - more);
}

/// A home whose apps were last used when it says.
class Home {
  public:
    void uses(const std::string& app, Date lastUsed) { lastUsed_[app + ".app"] = lastUsed; }

    [[nodiscard]] UnusedAppsScanner scanner(int days = 180) const {
        const auto lastUsed = [this](const URL& app) -> std::optional<Date> {
            const auto found = lastUsed_.find(std::string(app.lastPathComponent()));
            return found != lastUsed_.end() ? std::optional(found->second) : std::nullopt;
        };
        return UnusedAppsScanner(days, std::vector{world / "Applications"},
                                 {.lastUsed = lastUsed, .now = [] { return kNow; }});
    }

    /// With an app in it that has this identifier.
    URL app(const std::string& name, const std::string& identifier) const {
        return makeBundleWithIdentifier(world, "Applications/" + name + ".app", identifier);
    }

    TestFolder world;

  private:
    test::ScopedVariable variable_{"HOME", world.path().c_str()};
    std::map<std::string, Date> lastUsed_;
};

TEST(UnusedAppsScanner, anAppUsedExactlyAtTheCutoffIsNotListedAndOneAMomentEarlierIs) {
    Home home;
    home.app("Just", "com.example.just");
    home.app("Before", "com.example.before");
    home.app("After", "com.example.after");
    home.uses("Just", daysAgo(180));
    home.uses("Before", daysAgo(180, std::chrono::seconds(1)));
    home.uses("After", daysAgo(179));
    EXPECT_THAT(record(home.scanner()).names(), ElementsAre("Before.app"));
}

TEST(UnusedAppsScanner, anAppOfWhichNobodyKnowsIsNotListed) {
    const Home home;
    home.app("Unknown", "com.example.unknown");
    const RecordedScan scan = record(home.scanner());
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_EQ(scan.failure, std::nullopt);
}

TEST(UnusedAppsScanner, aSystemAppIsNotListedHoweverOldItsDate) {
    Home home;
    home.app("System", "com.apple.system");
    home.uses("System", daysAgo(4'000));
    EXPECT_THAT(record(home.scanner()).items, IsEmpty());
}

TEST(UnusedAppsScanner, anAppWithLeftoversTellsTheDayAndTheirNumber) {
    Home home;
    const URL app = home.app("Foo", "com.example.Foo");
    const URL support = home.world.folder("Library/Application Support/Foo");
    home.world.fileOfSize("Library/Application Support/Foo/data", 70'000);
    const URL preferences = home.world.file("Library/Preferences/com.example.foo.plist");
    home.uses("Foo", daysAgo(200));

    const CleanableItem item = record(home.scanner()).items.at(0);

    EXPECT_EQ(item.url, app);
    EXPECT_THAT(item.relatedURLs, ElementsAre(support, preferences));
    EXPECT_EQ(item.size,
              FileSystemUtils::size(app) + FileSystemUtils::size(support) + FileSystemUtils::size(preferences));
    EXPECT_EQ(item.detail, S::detailNotOpenedSince(dateText(daysAgo(200))) + S::detailAlsoIncludesRelated(2));
    EXPECT_EQ(item.category, ScanCategory::application);
    EXPECT_EQ(item.groupID, std::nullopt);
    EXPECT_FALSE(item.isGroupKeeper);
}

TEST(UnusedAppsScanner, leftoversAreSingularOnlyInEnglish) {
    EXPECT_EQ(S::detailAlsoIncludesRelated.in(Language::english, 1), " \u00b7 includes 1 related file");
    EXPECT_EQ(S::detailAlsoIncludesRelated.in(Language::english, 2), " \u00b7 includes 2 related files");
    EXPECT_EQ(S::detailAlsoIncludesRelated.in(Language::spanish, 1), " \u00b7 incluye 1 archivos asociados");
}

TEST(UnusedAppsScanner, anAppWithoutLeftoversTellsTheDayAlone) {
    Home home;
    home.app("Foo", "com.example.Foo");
    home.uses("Foo", daysAgo(200));
    EXPECT_EQ(record(home.scanner()).items.at(0).detail, S::detailNotOpenedSince(dateText(daysAgo(200))));
}

TEST(UnusedAppsScanner, anAppInUseOwnsItsLeftoversToo) {
    Home home;
    // Without the one in use, the other would be the only one of that name.
    home.app("Foo", "com.example.one");
    makeBundleWithIdentifier(home.world, "More/Foo.app", "com.example.foo");
    home.world.file("Library/Caches/Foo/data");
    const auto lastUsed = [&](const URL& app) -> std::optional<Date> {
        return daysAgo(app.path().find("/More/") != std::string::npos ? 1 : 300);
    };
    const UnusedAppsScanner scanner(180, std::vector{home.world / "Applications", home.world / "More"},
                                    {.lastUsed = lastUsed, .now = [] { return kNow; }});

    const RecordedScan scan = record(scanner);

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_THAT(scan.items[0].relatedURLs, IsEmpty());
}

TEST(UnusedAppsScanner, allAreUnselectedAndTheLastReportHasTheirTotal) {
    Home home;
    for (const char* name : {"A", "B", "C"}) {
        home.app(name, std::string("com.example.") + name);
        home.uses(name, daysAgo(400));
    }
    home.app("Used", "com.example.used");
    home.uses("Used", daysAgo(1));
    home.world.fileOfSize("Applications/B.app/Contents/data", 90'000);
    home.world.fileOfSize("Applications/C.app/Contents/data", 40'000);

    const RecordedScan scan = record(home.scanner());

    ASSERT_THAT(scan.names(), ElementsAre("B.app", "C.app", "A.app")) << "largest first";
    std::int64_t total = 0;
    for (const CleanableItem& item : scan.items) {
        EXPECT_FALSE(item.isSelected);
        total += item.size;
    }
    ASSERT_EQ(scan.reports.size(), 5U) << "one for each app, listed or not";
    EXPECT_EQ(scan.reports[1].phase, S::scanCheckingApps());
    EXPECT_EQ(scan.reports[1].fractionCompleted, 1.0 / 4);
    EXPECT_EQ(scan.reports[1].bytesFound, 0);
    EXPECT_EQ(scan.reports.back(),
              (ScanProgress{.phase = S::scanDone(), .itemsFound = 3, .bytesFound = total, .fractionCompleted = 1.0}));
}

TEST(UnusedAppsScanner, theSignOfLifeIsTheAppsNameAlone) {
    const Home home;
    home.app("Foo", "com.example.Foo");
    EXPECT_EQ(record(home.scanner()).reports.at(0).currentPath, "Foo.app");
}

TEST(UnusedAppsScanner, aRefusedDirectoryFailsTheScanWhereNothingIsFound) {
    const Home home;
    const URL apps = home.world.folder("Applications");
    setMode(apps, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(record(home.scanner()).failure, ScanError::accessDenied(home.world / "Applications"));
    setMode(apps, 0700);
}

TEST(UnusedAppsScanner, aRefusedLeftoverFolderIsToldInTheLastReport) {
    Home home;
    home.app("Foo", "com.example.Foo");
    home.uses("Foo", daysAgo(400));
    const URL caches = home.world.folder("Library/Caches");
    setMode(caches, 0000);
    const OrdinaryUser user;

    const RecordedScan scan = record(home.scanner());

    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    setMode(caches, 0700);
}

TEST(UnusedAppsScanner, aCancelIsNoticedAtTheNextAppAndAfterTheLastNotAtAll) {
    Home home;
    home.app("A", "com.example.a");
    home.uses("A", daysAgo(400));
    bool cancelled = false;
    const auto cancelAtTheFirstReport = [&](const ScanProgress&) { cancelled = true; };
    const auto isCancelled = [&] { return cancelled; };
    EXPECT_EQ(record(home.scanner(), isCancelled, cancelAtTheFirstReport).items.size(), 1U);

    home.app("B", "com.example.b");
    cancelled = false;
    EXPECT_EQ(record(home.scanner(), isCancelled, cancelAtTheFirstReport).failure, ScanError::cancelled());
}

TEST(ScannerFactory, makesTheUnusedAppsScannerOverTheHome) {
    const Home home;
    home.app("Foo", "com.example.Foo");
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::unusedApps);
    EXPECT_EQ(scanner->kind(), ModuleKind::unusedApps);
    EXPECT_EQ(scannerDefaults::UnusedApps::unusedAfterDays, 180);
    EXPECT_EQ(record(*scanner).reports.size(), 2U);
}

}  // namespace
}  // namespace tavrin
