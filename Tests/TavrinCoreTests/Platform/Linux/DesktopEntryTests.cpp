#include "Support/TestFolder.h"
#include "TavrinCore/Platform/Linux/DesktopEntry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace tavrin {
namespace {

using test::ScopedVariable;
using test::TestFolder;
using testing::Contains;
using testing::ElementsAreArray;

URL appOf(const TestFolder& world, const std::string& exec) {
    return appOfDesktopEntry(world.file("x.desktop", "[Desktop Entry]\nType=Application\nName=X\nExec=" + exec + "\n"));
}

TEST(DesktopEntryFolders, areTheUsersThenTheSystemsThenThoseOfSandboxes) {
    const ScopedVariable home("HOME", "/home/user");
    const ScopedVariable dataHome("XDG_DATA_HOME", "/data");
    const ScopedVariable dataFolders("XDG_DATA_DIRS", "/first:relative::/second/");
    std::vector<std::string> paths;
    for (const URL& folder : desktopEntryFolders())
        paths.push_back(folder.path());
    EXPECT_THAT(paths, ElementsAreArray({"/data/applications", "/first/applications", "/second/applications",
                                         "/home/user/.local/share/flatpak/exports/share/applications",
                                         "/var/lib/flatpak/exports/share/applications",
                                         "/var/lib/snapd/desktop/applications"}));
}

TEST(DesktopEntryFolders, areTheCommonOnesWhereTheEnvironmentNamesNone) {
    const ScopedVariable dataFolders("XDG_DATA_DIRS", nullptr);
    EXPECT_THAT(desktopEntryFolders(), Contains(URL::fromPath("/usr/share/applications/")));
    EXPECT_THAT(desktopEntryFolders(), Contains(URL::fromPath("/usr/local/share/applications/")));
}

TEST(DesktopEntryFile, isTheFirstThatHasIt) {
    const TestFolder world;
    world.file("b/one.desktop");
    const URL first = world.file("a/one.desktop");
    const std::vector<URL> folders{world / "missing", world / "a", world / "b"};
    EXPECT_EQ(desktopEntryFile("one.desktop", folders), first);
    EXPECT_EQ(desktopEntryFile("two.desktop", folders), std::nullopt);
}

TEST(DesktopEntryFile, aDashMayStandForASubfolder) {
    const TestFolder world;
    const URL nested = world.file("kde4/my-app.desktop");
    const URL deep = world.file("a/b/c.desktop");
    EXPECT_EQ(desktopEntryFile("kde4-my-app.desktop", {world.url()}), nested);
    EXPECT_EQ(desktopEntryFile("a-b-c.desktop", {world.url()}), deep);
    EXPECT_EQ(desktopEntryFile(std::string(200, '-') + ".desktop", {world.url()}), std::nullopt);
}

TEST(AppOfDesktopEntry, isTheProgramWhereItsPathIsAbsolute) {
    const TestFolder world;
    EXPECT_EQ(appOf(world, "/opt/tool/bin/tool --new %U").path(), "/opt/tool/bin/tool");
    EXPECT_EQ(appOf(world, "\"/opt/my tool/run\" %F").path(), "/opt/my tool/run");
}

TEST(AppOfDesktopEntry, isTheWholeAppThatTheProgramLiesIn) {
    const TestFolder world;
    EXPECT_EQ(appOf(world, "/home/u/Applications/Foo.app/Contents/Helper.app/run").path(),
              "/home/u/Applications/Foo.app");
}

TEST(AppOfDesktopEntry, isTheEntryItselfWhereNoPathIsTold) {
    const TestFolder world;
    const URL entry = world / "x.desktop";
    EXPECT_EQ(appOf(world, "tool %U"), entry);
    EXPECT_EQ(appOf(world, "env A=b /opt/tool"), entry);
    EXPECT_EQ(appOf(world, ""), entry);
    EXPECT_EQ(appOf(world, "\"unbalanced"), entry);
    EXPECT_EQ(appOfDesktopEntry(world.file("x.desktop", "no entry at all")), entry);
    EXPECT_EQ(appOfDesktopEntry(world.file("x.desktop", std::string("\0\xff[", 3))), entry);
    EXPECT_EQ(appOfDesktopEntry(world.file("x.desktop", std::string(2'000'000, '#'))), entry);
    EXPECT_EQ(appOfDesktopEntry(world / "missing.desktop"), world / "missing.desktop");
    const URL fifo = world / "fifo.desktop";
    ASSERT_EQ(::mkfifo(fifo.path().c_str(), 0600), 0);
    EXPECT_EQ(appOfDesktopEntry(fifo), fifo) << "and nobody waits at it";
}

}  // namespace
}  // namespace tavrin
