#include "Support/TestFolder.h"
#include "TavrinCore/Cleaning/Cleaner.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

bool isProtected(std::string_view path) {
    return Cleaner::isProtected(URL::fromPath(path));
}

TEST(Protection, coversTheSystemsTreesAndTheFoldersThatHoldWhatIsTheUsers) {
    const test::ScopedVariable home("HOME", "/Users/nina");
    const std::vector<std::pair<std::string_view, bool>> cases{
        {"/", true},
        {"/System", true},
        {"/SYSTEM/x", true},
        {"/systemx", false},
        {"/usr", true},
        {"/usr/local/bin/x", true},
        {"/bin/sh", true},
        {"/sbin/x", true},
        {"/private", true},
        {"/private/tmp/x", true},
        {"/private/var/folders/x", true},
        {"/private/etc/hosts", true},
        {"/cores/core.1", true},
        {"/Library", true},
        {"/Library/Caches/foo", true},
        {"/Librarian", false},
        {"/var", true},
        {"/var/log/x", true},
        {"/etc/hosts", true},
        {"/tmp", true},
        {"/tmp/", true},
        {"/tmp/x", true},
        {"/tmpx", false},
        {"/Users", true},
        {"/Users/Shared", false},
        {"/Applications", true},
        {"/APPLICATIONS", true},
        {"/Applications/Foo", false},
        {"/Applications/Foo.app", false},
        {"/Volumes", true},
        {"/Volumes/Disk", false},
        {"/opt", false},
        {"/opt/homebrew", true},
        {"/opt/homebrew/Cellar", false},
        {"/Users/nina", true},
        {"/users/NINA/", true},
        {"/Users/nina2", false},
        {"/Users/nina/Documents", true},
        {"/Users/nina/Documents/x", false},
        {"/Users/nina/Desktop", true},
        {"/Users/nina/Downloads", true},
        {"/Users/nina/Downloads/x.dmg", false},
        {"/Users/nina/Pictures", true},
        {"/Users/nina/Movies", true},
        {"/Users/nina/Music", true},
        {"/Users/nina/Public", true},
        {"/Users/nina/Library", true},
        {"/Users/nina/Library/Containers", true},
        {"/Users/nina/Library/Containers/com.foo", false},
        {"/Users/nina/Library/Group Containers", true},
        {"/Users/nina/Library/Keychains", true},
        {"/Users/nina/Library/Keychains/login.keychain", false},
        {"/Users/nina/Library/Application Support", true},
        {"/Users/nina/Library/Preferences", true},
        {"/Users/nina/Library/Mail", true},
        {"/Users/nina/Library/Caches", true},
        {"/users/nina/LIBRARY/caches", true},
        {"/Users/nina/Library/Caches/com.foo", false},
        {"/Users/nina/Library/Logs", false},
        {"/Users/nina/.Trash/x", false},
        {"/Users/nina/x/../Documents", true},
        {"/Users/nina/Documents/./", true},
        {"/Users/nina/../../etc/hosts", true},
        {"/Users//nina", true},
        {"/Users/other/Documents", false},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(isProtected(path), expected) << path;
}

TEST(Protection, comparesTheHomeWithoutDotsAndWithoutCase) {
    const test::ScopedVariable home("HOME", "/Users/./Nina/x/..");
    EXPECT_TRUE(isProtected("/users/nina"));
    EXPECT_TRUE(isProtected("/Users/Nina/Downloads"));
    EXPECT_FALSE(isProtected("/Users/Nina/x"));
}

TEST(Protection, readsTheHomeEachTime) {
    const test::ScopedVariable first("HOME", "/Users/nina");
    EXPECT_FALSE(isProtected("/Users/otto"));
    const test::ScopedVariable second("HOME", "/Users/otto");
    EXPECT_TRUE(isProtected("/Users/otto"));
    EXPECT_FALSE(isProtected("/Users/nina"));
}

TEST(Protection, asksTheSystemAppGuardOfABundleWhateverTheCaseOfItsExtension) {
    const test::TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    const auto bundle = [&](std::string_view name, const std::string& identifier) {
        world.file(std::string(name) + "/Contents/Info.plist",
                   "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                   "<key>CFBundleIdentifier</key><string>" +
                       identifier + "</string></dict></plist>\n");
        return world / name;
    };
    EXPECT_TRUE(Cleaner::isProtected(bundle("Own.app", "com.apple.own")));
    EXPECT_TRUE(Cleaner::isProtected(bundle("Loud.APP", "com.apple.loud")));
    EXPECT_FALSE(Cleaner::isProtected(bundle("Other.app", "com.other")));
    EXPECT_FALSE(Cleaner::isProtected(bundle("Folder", "com.apple.folder")));
    EXPECT_FALSE(Cleaner::isProtected(world / "Missing.app"));
}

TEST(Protection, anAppThatTheGuardLetsGoIsStillHeldToTheOtherRules) {
    EXPECT_TRUE(isProtected("/Library/Foo.app"));
}

}  // namespace
}  // namespace tavrin
