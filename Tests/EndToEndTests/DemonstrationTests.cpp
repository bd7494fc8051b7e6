#include "EndToEndTests/SampleHome.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace tavrin::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// The times of folders that lost and regained a child have changed, and only those.
std::string comparableManifest(const URL& home) {
    return homeManifest(home, {"--no-folder-times"});
}

CommandResult demonstrate(const URL& home) {
    return runAsSeen({TAVRIN_DEMONSTRATION, home.path()});
}

TEST(Demonstration, everyClaimIsTrueOnTheSampleHome) {
    const ScopedVariable language("LANGUAGE", "en");
    const TestFolder world;
    makeSampleHome(world / "home");
    const std::string before = comparableManifest(world / "home");

    const CommandResult shown = demonstrate(world / "home");

    EXPECT_EQ(shown.status, 0) << shown.output;
    EXPECT_THAT(shown.output, EndsWith("All of it is true.\n"));
    EXPECT_THAT(shown.output, HasSubstr("Checking "));
    EXPECT_TRUE(before == comparableManifest(world / "home")) << "another witness saw the home change";
}

TEST(Demonstration, speaksSpanishToo) {
    const ScopedVariable language("LANGUAGE", "es");
    const ScopedVariable everything("LC_ALL", "C.UTF-8");
    const TestFolder world;
    makeSampleHome(world / "home", {"--small"});

    const CommandResult shown = demonstrate(world / "home");

    EXPECT_EQ(shown.status, 0) << shown.output;
    EXPECT_THAT(shown.output, HasSubstr("Revisando "));
    EXPECT_THAT(shown.output, Not(HasSubstr("Checking ")));
}

TEST(Demonstration, sendsNoControlCharacterOfANameToTheTerminal) {
    const TestFolder world;
    makeSampleHome(world / "home", {"--small"});

    const CommandResult shown = demonstrate(world / "home");

    EXPECT_THAT(shown.output, EndsWith("All of it is true.\n"));
    EXPECT_THAT(shown.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(shown.output, Not(HasSubstr("\u202e")));
}

TEST(Demonstration, failsWhereNothingCanBeMovedAway) {
    const TestFolder world;
    makeSampleHome(world / "home", {"--small"});
    std::filesystem::remove_all((world / "home/.local/share/Trash").path());
    world.file("home/.local/share/Trash", "in the way");
    const std::string before = comparableManifest(world / "home");

    const CommandResult shown = demonstrate(world / "home");

    EXPECT_EQ(shown.status, 1) << shown.output;
    EXPECT_THAT(shown.output, HasSubstr("FALSE"));
    EXPECT_TRUE(before == comparableManifest(world / "home"));
}

TEST(Demonstration, failsOnAHomeThatHoldsNothing) {
    const TestFolder world;
    EXPECT_EQ(demonstrate(world.folder("home")).status, 1);
    EXPECT_EQ(demonstrate(world / "no such home").status, 1);
}

}  // namespace
}  // namespace tavrin::test
