#include "Support/OwnMounts.h"
#include "Support/PropertyLists.h"
#include "TavrinCore/Scanning/SystemAppGuard.h"

#include <gtest/gtest.h>

#include <string>

namespace tavrin {
namespace {

using test::makeBundleWithIdentifier;
using test::TestFolder;

bool isProtected(std::string_view path, const std::optional<std::string>& bundleID) {
    return SystemAppGuard::isProtectedApp(URL::fromPath(path), bundleID);
}

TEST(SystemAppGuard, anAppOfTheSystemsMakerIsProtected) {
    EXPECT_TRUE(isProtected("/Applications/Calculator.app", "com.apple.calculator"));
    EXPECT_TRUE(isProtected("/Applications/Calculator.app", "COM.Apple.Calculator"));
}

TEST(SystemAppGuard, theMakersIdentifierIsTheWholeTextOrGoesOnWithADot) {
    EXPECT_TRUE(isProtected("/Applications/X.app", "com.apple"));
    EXPECT_FALSE(isProtected("/Applications/X.app", "com.applesauce.x"));
    EXPECT_FALSE(isProtected("/Applications/X.app", "org.com.apple.x"));
    EXPECT_FALSE(isProtected("/Applications/X.app", ""));
}

TEST(SystemAppGuard, aStoreReceiptMakesTheMakersAppTheUsersToRemove) {
    const TestFolder world;
    const URL app = makeBundleWithIdentifier(world, "Pages.app", "com.apple.iWork.Pages");
    EXPECT_TRUE(SystemAppGuard::isProtectedApp(app));
    world.file("Pages.app/Contents/_MASReceipt/receipt");
    EXPECT_FALSE(SystemAppGuard::isProtectedApp(app));
    EXPECT_FALSE(SystemAppGuard::isProtectedApp(app, "com.apple"));
}

TEST(SystemAppGuard, aStoreReceiptDoesNotOpenAProtectedPlace) {
    const TestFolder world;
    const URL app = makeBundleWithIdentifier(world, "sbin/Tool.app", "com.apple.tool");
    world.file("sbin/Tool.app/Contents/_MASReceipt");
    ASSERT_FALSE(SystemAppGuard::isProtectedApp(app));
    test::withOwnMounts([&] {
        test::mountBind(world / "sbin", URL::fromPath("/usr/local/sbin"));
        EXPECT_TRUE(SystemAppGuard::isProtectedApp(URL::fromPath("/usr/local/sbin/Tool.app")));
    });
}

TEST(SystemAppGuard, thePrefixesDoNotDependOnTheIdentifier) {
    EXPECT_TRUE(isProtected("/Library/Apple/System/X.app", std::nullopt));
    for (std::string_view path : {"/System/Applications/X.app", "/usr/X.app", "/bin/X.app", "/sbin/X.app",
                                  "/private/var/X.app", "/Library/Apple/X.app", "/SYSTEM/x.app", "/library/APPLE/x"})
        EXPECT_TRUE(isProtected(path, "com.foo")) << path;
}

TEST(SystemAppGuard, placesThatOnlyLookAlikeAreFree) {
    for (std::string_view path : {"/Applications/X.app", "/Systems/X.app", "/System", "/Users/me/usr/X.app",
                                  "/private/varnish/X.app", "/Library/Apples/X.app", "/Library/X.app", "/"})
        EXPECT_FALSE(isProtected(path, std::nullopt)) << path;
}

TEST(SystemAppGuard, dotsInThePathHideNothing) {
    EXPECT_TRUE(isProtected("/Applications/../System/X.app", std::nullopt));
    EXPECT_TRUE(isProtected("/Applications/.././/System/./X.app", std::nullopt));
    EXPECT_FALSE(isProtected("/System/../Applications/X.app", std::nullopt));
}

TEST(SystemAppGuard, aLinkIntoAProtectedPlaceIsProtected) {
    const TestFolder world;
    EXPECT_TRUE(SystemAppGuard::isProtectedApp(world.link("Tool.app", "/usr/lib"), std::nullopt));
    world.link("folder", "/usr");
    EXPECT_TRUE(SystemAppGuard::isProtectedApp(world / "folder/lib/Tool.app", std::nullopt));
    EXPECT_FALSE(SystemAppGuard::isProtectedApp(world.link("Other.app", "elsewhere"), std::nullopt));
}

TEST(SystemAppGuard, theIdentifierIsReadFromTheBundle) {
    const TestFolder world;
    EXPECT_TRUE(SystemAppGuard::isProtectedApp(makeBundleWithIdentifier(world, "A.app", "com.apple.a")));
    EXPECT_FALSE(SystemAppGuard::isProtectedApp(makeBundleWithIdentifier(world, "B.app", "com.b")));
    EXPECT_FALSE(SystemAppGuard::isProtectedApp(world.folder("C.app")));
    EXPECT_FALSE(SystemAppGuard::isProtectedApp(world / "missing.app"));
}

TEST(SystemAppGuard, aPathThatCannotBeExaminedIsNotRestricted) {
    EXPECT_FALSE(SystemAppGuard::isSIPRestricted(URL::fromPath("/no/such/path")));
    EXPECT_FALSE(SystemAppGuard::isSIPRestricted(TestFolder().url()));
}

}  // namespace
}  // namespace tavrin
