#include "EndToEndTests/SampleHome.h"
#include "Support/TestFolder.h"

#include <gtest/gtest.h>

namespace tavrin::test {
namespace {

CommandResult tryToMake(const URL& folder) {
    return runAsSeen({TAVRIN_SCRIPTS "/make-sample-home", "--small", "--force", folder.path()});
}

TEST(SampleHome, isTheSameInEveryRunToTheByte) {
    const TestFolder world;
    const URL home = world / "home";
    makeSampleHome(home);
    const std::string first = homeManifest(home);

    makeSampleHome(home, {"--force"});

    EXPECT_GT(first.size(), 1'000'000U);
    EXPECT_TRUE(first == homeManifest(home));
}

TEST(SampleHome, aFolderThatIsNoneIsLeftAlone) {
    const TestFolder world;
    const URL letter = world.file("mine/letter", "Dear all,");

    const CommandResult refused = tryToMake(world / "mine");

    EXPECT_EQ(refused.status, 1) << refused.output;
    EXPECT_EQ(contentsOf(letter), "Dear all,");
}

TEST(SampleHome, aLinkToOneIsNone) {
    const TestFolder world;
    makeSampleHome(world / "home", {"--small"});
    const std::string before = homeManifest(world / "home");
    const URL link = world.link("link", "home");

    const CommandResult refused = tryToMake(link);

    EXPECT_EQ(refused.status, 1) << refused.output;
    EXPECT_TRUE(before == homeManifest(world / "home"));
}

TEST(SampleHome, oneThatStandsIsMadeAnewOnlyWhenAskedTo) {
    const TestFolder world;
    makeSampleHome(world / "home", {"--small"});
    const URL added = world.file("home/added later");

    EXPECT_EQ(runAsSeen({TAVRIN_SCRIPTS "/make-sample-home", "--small", (world / "home").path()}).status, 1);
    EXPECT_TRUE(somethingAt(added));

    makeSampleHome(world / "home", {"--small", "--force"});
    EXPECT_FALSE(somethingAt(added));
}

TEST(HomeManifest, seesEachKindOfChange) {
    const TestFolder world;
    const URL home = world.folder("home");
    const URL file = world.file("home/file", "contents");
    world.link("home/link", "file");
    const std::string before = homeManifest(home);

    // Each change is alone: what it does to a time is undone. The next command undoes it whole.
    const auto changes = [&](const std::string& command) {
        EXPECT_EQ(runAsSeen({"sh", "-c", "cd \"$0\" && " + command, home.path()}).status, 0) << command;
        return homeManifest(home) != before;
    };
    EXPECT_FALSE(changes("true"));
    EXPECT_TRUE(changes("chmod 600 file"));
    EXPECT_FALSE(changes("chmod 644 file"));
    EXPECT_TRUE(changes("cp -p file ../kept && touch -d @1.000000001 file"));
    EXPECT_FALSE(changes("touch -r ../kept file"));
    EXPECT_TRUE(changes("touch -r . ../time && ln file second && touch -r ../time ."));
    EXPECT_FALSE(changes("rm second && touch -r ../time ."));
    EXPECT_TRUE(changes("printf Contents >file && touch -r ../kept file"));
    EXPECT_FALSE(changes("printf contents >file && touch -r ../kept file"));
    EXPECT_TRUE(changes("setfattr -n user.note -v here file"));
    EXPECT_FALSE(changes("setfattr -x user.note file"));
    EXPECT_TRUE(
        changes("touch ../link-time && touch -h -r link ../link-time && ln -sfn elsewhere link && touch -h -r "
                "../link-time link && "
                "touch -r ../time ."));
}

}  // namespace
}  // namespace tavrin::test
