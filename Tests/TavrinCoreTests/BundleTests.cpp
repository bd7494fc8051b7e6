#include "Support/OrdinaryUser.h"
#include "Support/PropertyLists.h"
#include "TavrinCore/Platform/Bundle.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace tavrin {
namespace {

using test::BinaryPropertyList;
using test::makeBundle;
using test::makeBundleWithIdentifier;
using test::TestFolder;
using test::xmlPropertyList;

std::string binaryInfo(std::string_view identifier) {
    BinaryPropertyList list;
    const std::size_t key = list.string("CFBundleIdentifier");
    const std::size_t value = list.string(identifier);
    return list.bytes(list.dictionary({key}, {value}));
}

TEST(Bundle, itsIdentifierIsReadFromAnXMLList) {
    const TestFolder world;
    EXPECT_EQ(bundleIdentifier(makeBundleWithIdentifier(world, "Foo.app", "com.Foo.App")), "com.Foo.App");
}

TEST(Bundle, itsIdentifierIsReadFromABinaryList) {
    const TestFolder world;
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Foo.app", binaryInfo("com.foo.app"))), "com.foo.app");
}

TEST(Bundle, isSeenThroughLinks) {
    const TestFolder world;
    makeBundleWithIdentifier(world, "Real.app", "com.real");
    EXPECT_EQ(bundleIdentifier(world.link("Link.app", "Real.app")), "com.real");
    world.folder("Other.app/Contents");
    world.link("Other.app/Contents/Info.plist", "../../Real.app/Contents/Info.plist");
    EXPECT_EQ(bundleIdentifier(world / "Other.app"), "com.real");
    world.link("Loop.app/Contents", "Contents");
    EXPECT_EQ(bundleIdentifier(world / "Loop.app"), std::nullopt);
}

TEST(Bundle, aPathThatIsNoBundleHasNoIdentifier) {
    const TestFolder world;
    EXPECT_EQ(bundleIdentifier(world / "missing.app"), std::nullopt);
    EXPECT_EQ(bundleIdentifier(world.file("file.app")), std::nullopt);
    EXPECT_EQ(bundleIdentifier(world.folder("empty.app")), std::nullopt);
    EXPECT_EQ(bundleInfo(world / "empty.app"), std::nullopt);
}

TEST(Bundle, aListWithoutAnIdentifierGivesNone) {
    const TestFolder world;
    int number = 0;
    for (std::string_view value :
         {"<dict/>", "<array><string>CFBundleIdentifier</string></array>", "<string>com.foo</string>",
          "<dict><key>CFBundleIdentifier</key><integer>1</integer></dict>",
          "<dict><key>CFBundleIdentifier</key><string></string></dict>",
          "<dict><key>cfbundleidentifier</key><string>com.foo</string></dict>"}) {
        const URL bundle = makeBundle(world, std::to_string(++number) + ".app", xmlPropertyList(value));
        EXPECT_EQ(bundleIdentifier(bundle), std::nullopt) << value;
    }
}

TEST(Bundle, aBrokenListGivesNoIdentifier) {
    const TestFolder world;
    const std::string sound = xmlPropertyList("<dict><key>CFBundleIdentifier</key><string>com.foo</string></dict>");
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Sound.app", sound)), "com.foo");
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Short.app", sound.substr(0, sound.size() - 20))), std::nullopt);
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Empty.app", "")), std::nullopt);
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "JSON.app", R"({"CFBundleIdentifier": "com.foo"})")), std::nullopt);
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Text.app", "{ CFBundleIdentifier = \"com.foo\"; }")), std::nullopt);
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Bomb.app", test::propertyListBomb(8))), std::nullopt);
}

TEST(Bundle, whatStandsInTheListsPlaceIsNotOpened) {
    const TestFolder world;
    world.folder("Fifo.app/Contents");
    ASSERT_EQ(::mkfifo((world / "Fifo.app/Contents/Info.plist").path().c_str(), 0600), 0);
    EXPECT_EQ(bundleIdentifier(world / "Fifo.app"), std::nullopt);
    world.folder("Folder.app/Contents/Info.plist");
    EXPECT_EQ(bundleIdentifier(world / "Folder.app"), std::nullopt);
    world.link("Device.app/Contents/Info.plist", "/dev/zero");
    EXPECT_EQ(bundleIdentifier(world / "Device.app"), std::nullopt);
}

TEST(Bundle, aListOfTwoMebibytesGivesNoIdentifier) {
    const TestFolder world;
    const std::string filler = "<key>filler</key><string>" + std::string(std::size_t{2} << 20U, 'x') + "</string>";
    const std::string info =
        xmlPropertyList("<dict><key>CFBundleIdentifier</key><string>com.foo</string>" + filler + "</dict>");
    EXPECT_EQ(bundleIdentifier(makeBundle(world, "Large.app", info)), std::nullopt);
}

TEST(Bundle, aListThatMayNotBeReadGivesNoIdentifier) {
    const TestFolder world;
    const URL bundle = makeBundleWithIdentifier(world, "Foo.app", "com.foo");
    test::setMode(bundle.appendingPathComponent("Contents/Info.plist"), 0000);
    const test::OrdinaryUser user;
    EXPECT_EQ(bundleIdentifier(bundle), std::nullopt);
}

TEST(Bundle, itsWholeDictionaryCanBeHad) {
    const TestFolder world;
    const URL bundle =
        makeBundle(world, "Foo.app", xmlPropertyList("<dict><key>CFBundleName</key><string>Foo</string></dict>"));
    const std::optional<PropertyList> info = bundleInfo(bundle);
    ASSERT_TRUE(info);
    EXPECT_EQ(*info->string("CFBundleName"), "Foo");
    EXPECT_EQ(bundleInfo(makeBundle(world, "Array.app", xmlPropertyList("<array/>"))), std::nullopt);
}

}  // namespace
}  // namespace tavrin
