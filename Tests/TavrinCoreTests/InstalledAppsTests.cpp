#include "Support/OrdinaryUser.h"
#include "Support/PropertyLists.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Scanning/InstalledApps.h"
#include "TavrinCore/Scanning/ScanRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::makeBundle;
using test::makeBundleWithIdentifier;
using test::OrdinaryUser;
using test::setMode;
using test::TestFolder;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

const ProgressCallback kNobodyListens = [](const ScanProgress&) {};
const CancellationCallback kNeverCancelled = neverCancelled;

std::vector<std::string> namesIn(const std::vector<URL>& directories, ScanRun& run) {
    std::vector<std::string> names;
    for (const URL& app : appsIn(directories, run))
        names.emplace_back(app.lastPathComponent());
    return names;
}

TEST(InstalledApps, areWhatBearsTheExtensionInJustThisCase) {
    const TestFolder world;
    world.folder("Foo.app/Contents");
    world.folder("Bar.APP");
    world.folder("Bar.app.bak");
    world.folder("app");
    world.folder(".hidden.app");
    world.file("Plain.app");
    world.link("Linked.app", "Foo.app");
    world.folder("Games/Deep.app");
    ScanRun run(kNobodyListens, kNeverCancelled);
    EXPECT_THAT(namesIn({world.url()}, run), UnorderedElementsAre("Foo.app", "Plain.app", "Linked.app"));
}

TEST(InstalledApps, comeInTheOrderOfTheDirectories) {
    const TestFolder world;
    world.folder("second/A.app");
    world.folder("first/B.app");
    ScanRun run(kNobodyListens, kNeverCancelled);
    EXPECT_THAT(namesIn({world / "first", world / "missing", world / "second"}, run), ElementsAre("B.app", "A.app"));
    EXPECT_TRUE(run.denials().isEmpty()) << "a missing directory refuses nothing";
}

TEST(InstalledApps, aDirectoryThatRefusesIsRecordedAndTheOthersAreListed) {
    const TestFolder world;
    world.folder("open/A.app");
    const URL closed = world.folder("closed");
    setMode(closed, 0000);
    const OrdinaryUser user;
    ScanRun run(kNobodyListens, kNeverCancelled);
    EXPECT_THAT(namesIn({closed, world / "open"}, run), ElementsAre("A.app"));
    EXPECT_THAT(run.denials().all(), ElementsAre(closed));
    setMode(closed, 0700);
}

TEST(InstalledApps, areCalledByTheirNameWithoutTheExtension) {
    EXPECT_EQ(appName(URL::fromPath("/Applications/Foo Bar.app/")), "Foo Bar");
    EXPECT_EQ(appName(URL::fromPath("/Applications/Foo.bar.app")), "Foo.bar");
}

TEST(InstalledApps, theDefaultDirectoriesAreThoseThatExist) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    const auto isInHome = [&](const URL& url) { return url.path().starts_with(world.path()); };
    EXPECT_FALSE(std::ranges::any_of(defaultAppDirectories(), isInHome));
    const URL own = world.folder("Applications");
    EXPECT_EQ(defaultAppDirectories().back(), own);
}

TEST(RemovableApps, leaveOutTheSystemsOwnUnlessTheyHaveAReceipt) {
    const TestFolder world;
    makeBundleWithIdentifier(world, "System.app", "com.apple.system");
    makeBundleWithIdentifier(world, "Bought.app", "com.apple.Bought");
    world.file("Bought.app/Contents/_MASReceipt/receipt");
    makeBundleWithIdentifier(world, "Foreign.app", "com.applesauce.x");
    ScanRun run(kNobodyListens, kNeverCancelled);
    std::vector<std::string> names;
    for (const RemovableApp& app : removableAppsIn({world.url()}, run))
        names.push_back(app.identity.name);
    EXPECT_THAT(names, UnorderedElementsAre("Bought", "Foreign"));
}

TEST(RemovableApps, bearTheirIdentifierAndGoWithoutWhereTheBundleTellsNone) {
    const TestFolder world;
    makeBundleWithIdentifier(world, "a/Named.app", "com.example.Named");
    makeBundle(world, "b/Broken.app", "this is no property list");
    makeBundle(world, "c/Bomb.app", test::propertyListBomb(12));
    world.file("d/Plain.app");
    ScanRun run(kNobodyListens, kNeverCancelled);
    const auto apps = removableAppsIn({world / "a", world / "b", world / "c", world / "d"}, run);
    EXPECT_EQ(identitiesOf(apps), (std::vector<AppMatching::AppIdentity>{{"Named", "com.example.Named"},
                                                                         {"Broken", std::nullopt},
                                                                         {"Bomb", std::nullopt},
                                                                         {"Plain", std::nullopt}}));
}

TEST(RemovableApps, aCancelIsNoticedBeforeEachApp) {
    const TestFolder world;
    for (int i = 0; i < 20; ++i)
        world.folder(std::to_string(i) + ".app");
    int polls = 0;
    const CancellationCallback afterTheListing = [&] { return ++polls > 25; };
    ScanRun run(kNobodyListens, afterTheListing);
    EXPECT_THROW((void)removableAppsIn({world.url()}, run), ScanError);
    EXPECT_EQ(polls, 26);
}

}  // namespace
}  // namespace tavrin
