#include "Support/PropertyLists.h"
#include "TavrinCore/LiveCacheCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>

namespace tavrin {
namespace {

using test::TestFolder;

constexpr std::array kKnownByName{ScanCategory::systemCache, ScanCategory::userCache, ScanCategory::logs,
                                  ScanCategory::appLeftovers, ScanCategory::derivedData};

CleanableItem itemNamed(std::string_view name, ScanCategory category) {
    return {.id = UUID::random(),
            .url = URL::fromPath("/Users/me/Library/Caches").appendingPathComponent(name),
            .category = category};
}

bool belongs(std::string_view name, const std::set<std::string>& running,
             ScanCategory category = ScanCategory::userCache) {
    return LiveCacheCheck::belongsToRunningApp(itemNamed(name, category), running);
}

TEST(LiveCacheCheck, aCacheNamedLikeARunningAppBelongsToIt) {
    for (ScanCategory category : kKnownByName) {
        EXPECT_TRUE(belongs("com.foo.app", {"com.foo.app"}, category));
        EXPECT_TRUE(belongs("com.Foo.App", {"com.bar", "com.foo.app"}, category));
        EXPECT_FALSE(belongs("com.foo", {"com.foo.app"}, category));
        EXPECT_FALSE(belongs("org.com.foo.app", {"com.foo.app"}, category));
        EXPECT_FALSE(belongs("com.foo.app", {}, category));
    }
}

TEST(LiveCacheCheck, aHelpersCacheBelongsToItsApp) {
    EXPECT_TRUE(belongs("com.foo.app.helper", {"com.foo.app"}));
}

TEST(LiveCacheCheck, noDotIsAskedForBehindTheIdentifier) {
    EXPECT_TRUE(belongs("com.foo.appextra", {"com.foo.app"}));
}

TEST(LiveCacheCheck, anEmptyIdentifierMatchesNothing) {
    EXPECT_FALSE(belongs("com.foo.app.helper", {""}));
    EXPECT_TRUE(belongs("com.foo.app.helper", {"", "com.foo.app"}));
}

TEST(LiveCacheCheck, theOtherCategoriesBelongToNobody) {
    EXPECT_FALSE(belongs("com.foo.app", {"com.foo.app"}, ScanCategory::oldFile));
    const TestFolder world;
    const URL bundle = test::makeBundleWithIdentifier(world, "com.foo.app", "com.foo.app");
    for (ScanCategory category : allScanCategories) {
        if (category == ScanCategory::application || std::ranges::count(kKnownByName, category) > 0) continue;
        const CleanableItem item{.id = UUID::random(), .url = bundle, .category = category};
        EXPECT_FALSE(LiveCacheCheck::belongsToRunningApp(item, {"com.foo.app"})) << rawValue(category);
    }
}

TEST(LiveCacheCheck, anApplicationIsKnownByItsBundle) {
    const TestFolder world;
    const CleanableItem app{.id = UUID::random(),
                            .url = test::makeBundleWithIdentifier(world, "Foo.app", "com.Foo.App"),
                            .category = ScanCategory::application};
    EXPECT_TRUE(LiveCacheCheck::belongsToRunningApp(app, {"com.foo.app"}));
    EXPECT_FALSE(LiveCacheCheck::belongsToRunningApp(app, {"com.foo"}));
    const CleanableItem nameless{
        .id = UUID::random(), .url = world.folder("com.foo.app"), .category = ScanCategory::application};
    EXPECT_FALSE(LiveCacheCheck::belongsToRunningApp(nameless, {"com.foo.app", ""}));
}

}  // namespace
}  // namespace tavrin
