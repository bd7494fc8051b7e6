// The scanners of apps and startup items, on a home with everything in it that they look for, traps included.
#include "EndToEndTests/SampleHome.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace tavrin::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class AppScanners : public testing::Test {
  protected:
    static RecordedScan scan(ModuleKind kind) { return record(*ScannerFactory::makeScanner(kind)); }

    static std::vector<std::string> selected(const RecordedScan& scan) {
        std::vector<std::string> names;
        for (const CleanableItem& item : scan.items)
            if (item.isSelected) names.emplace_back(item.name());
        return names;
    }

    void SetUp() override { makeSampleHome(world_ / "home", {"--small"}); }

    TestFolder world_;
    ScopedVariable home_{"HOME", (world_ / "home").path().c_str()};
    ScopedVariable language_{"LANGUAGE", "de"};
    ScopedVariable locale_{"LC_ALL", "de_DE.UTF-8"};
};

TEST_F(AppScanners, changeNothing) {
    const std::string before = homeManifest(world_ / "home");
    for (ModuleKind kind :
         {ModuleKind::uninstaller, ModuleKind::appLanguages, ModuleKind::loginItems, ModuleKind::unusedApps}) {
        const RecordedScan found = scan(kind);
        EXPECT_EQ(found.failure, std::nullopt) << rawValue(kind);
        EXPECT_THAT(found.items, Not(IsEmpty())) << rawValue(kind);
        EXPECT_EQ(found.reports.back().blockedFolders, 0) << rawValue(kind);
    }
    EXPECT_TRUE(before == homeManifest(world_ / "home"));
}

TEST_F(AppScanners, theUninstallerOffersEveryAppButTheSystemsOwnAndNothingTwice) {
    const RecordedScan found = scan(ModuleKind::uninstaller);

    EXPECT_THAT(found.names(), AllOf(Contains("Papermill.app"), Contains("Slides.app"), Contains("Plain file.app"),
                                     Contains("Hostile bomb.app"), Contains("Hostile pipe.app")));
    for (const char* name : {"Counter.app", "Loud.APP", "Chess in a folder.app", ".Hidden.app"})
        EXPECT_THAT(found.names(), Not(Contains(name)));
    EXPECT_THAT(selected(found), IsEmpty());
    EXPECT_THAT(found.named("Diario.app").relatedURLs, SizeIs(Ge(7U)));
    std::set<std::string> paths;
    for (const CleanableItem& item : found.items) {
        EXPECT_TRUE(paths.insert(item.url.path()).second) << item.url.path();
        for (const URL& related : item.relatedURLs) {
            EXPECT_TRUE(paths.insert(related.path()).second) << related.path();
            EXPECT_NE(related.lastPathComponent(), "Google");
        }
    }
}

TEST_F(AppScanners, theLanguagesOfTheUserStayAndThoseOfBoughtAppsToo) {
    const RecordedScan found = scan(ModuleKind::appLanguages);

    const auto isKept = [](const CleanableItem& item) {
        return item.name() == "de.lproj" || item.name() == "German.lproj" || item.name() == "en.lproj" ||
               item.url.path().find("/Papermill.app/") != std::string::npos;
    };
    EXPECT_THAT(found.names(), AllOf(Contains("de.lproj"), Contains("German.lproj"), Contains("Pirate talk.lproj")));
    EXPECT_THAT(found.names(), Not(Contains("Base.lproj")));
    EXPECT_TRUE(
        std::ranges::none_of(found.items, [&](const CleanableItem& item) { return item.isSelected && isKept(item); }));
    EXPECT_THAT(selected(found), Contains("fr.lproj"));
}

TEST_F(AppScanners, onlyTheBrokenStartupItemsAreSelected) {
    EXPECT_THAT(selected(scan(ModuleKind::loginItems)),
                ElementsAre("com.example.gone-too.plist", "com.example.gone.plist", "zz.example.not-a-string.plist"));
}

TEST_F(AppScanners, appsOfWhichNobodyKnowsTheLastUseAreNoUnusedOnes) {
    const RecordedScan found = scan(ModuleKind::unusedApps);
    EXPECT_THAT(found.names(), Contains("Old Glory.app"));
    EXPECT_THAT(found.names(), Not(Contains("Slides.app")));
    EXPECT_THAT(selected(found), IsEmpty());
}

}  // namespace
}  // namespace tavrin::test
