#include "Support/TestFolder.h"
#include "TavrinClean/Platform/Linux/ProcessIdentifiers.h"
#include "TavrinClean/Platform/RunningApps.h"
#include "TavrinCleanTests/KitWorld.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QProcess>
#include <filesystem>

namespace tavrin::test {
namespace {

TEST(RunningApps, aDesktopsUnitNamesItsApplication) {
    EXPECT_EQ(applicationOfUnit("app-gnome-org.gnome.Nautilus-1234.scope"), "org.gnome.Nautilus");
    EXPECT_EQ(applicationOfUnit("app-org.kde.konsole-0af3.scope"), "org.kde.konsole");
    EXPECT_EQ(applicationOfUnit("app-org.kde.konsole@0af3.service"), "org.kde.konsole");
    EXPECT_EQ(applicationOfUnit("app-gnome-org.gnome.Terminal.service"), "org.gnome.Terminal");
    EXPECT_EQ(applicationOfUnit("app-flatpak-org.mozilla.firefox-77.scope"), "org.mozilla.firefox");
}

TEST(RunningApps, aDashOfTheIdentifierIsUnescaped) {
    EXPECT_EQ(applicationOfUnit("app-gnome-code\\x2doss-1234.scope"), "code-oss");
    EXPECT_EQ(applicationOfUnit("app-a\\x2-1.scope"), "a\\x2");
    EXPECT_EQ(applicationOfUnit("app-a\\xzz-1.scope"), "a\\xzz");
}

TEST(RunningApps, otherUnitsNameNone) {
    for (const char* unit : {"session-2.scope", "dbus.service", "app.slice", "app-", "app-.scope", "app-x.scope", "",
                             "app-x.slice", "app-@1.service", "app--1.scope"})
        EXPECT_EQ(applicationOfUnit(unit), std::nullopt) << unit;
}

TEST(RunningApps, theInnermostUnitOfACgroupCounts) {
    EXPECT_EQ(applicationOfCgroup("0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
                                  "app-gnome-org.gnome.Maps-9.scope\n"),
              "org.gnome.Maps");
    EXPECT_EQ(applicationOfCgroup("1:name=systemd:/app-a-1.scope/app-b-2.scope/leaf\n0::/\n"), "b");
    EXPECT_EQ(applicationOfCgroup("0::/user.slice/session-2.scope\n"), std::nullopt);
    EXPECT_EQ(applicationOfCgroup(""), std::nullopt);
    EXPECT_EQ(applicationOfCgroup("\n\n:::"), std::nullopt);
}

struct Processes : testing::Test {
    TestFolder proc;

    [[nodiscard]] std::set<std::string> identifiers() const { return identifiersOfProcesses(proc.url(), ::geteuid()); }
};

TEST_F(Processes, aBundlesIdentifierIsReadFromAboveItsExecutable) {
    const TestFolder apps;
    (void)apps.file("Foo.app/Contents/Info.plist", infoPlist("com.Example.FOO"));
    (void)proc.link("1/exe", (apps / "Foo.app/Contents/MacOS/foo").path());
    (void)proc.link("2/exe", (apps / "Foo.app/Contents/MacOS/helper").path());
    (void)proc.link("3/exe", "/usr/bin/true");
    EXPECT_EQ(identifiers(), std::set<std::string>{"com.example.foo"});
}

TEST_F(Processes, unitsAndFlatpaksAreLowerCased) {
    (void)proc.file("1/cgroup", "0::/app-gnome-org.gnome.Maps-9.scope\n");
    (void)proc.file("2/root/.flatpak-info",
                    "[Instance]\nname=no\n[Application]\nname=org.Mozilla.Firefox\n[Context]\n");
    EXPECT_EQ(identifiers(), (std::set<std::string>{"org.gnome.maps", "org.mozilla.firefox"}));
}

TEST_F(Processes, whatIsNoProcessIsPassedOver) {
    (void)proc.file("self/cgroup", "0::/app-gnome-org.gnome.Maps-9.scope\n");
    (void)proc.file("12a/cgroup", "0::/app-gnome-org.gnome.Maps-9.scope\n");
    (void)proc.file("7", "a file");
    EXPECT_TRUE(identifiers().empty());
    EXPECT_TRUE(identifiersOfProcesses(proc / "nothing", ::geteuid()).empty());
}

TEST_F(Processes, ofOthersAreNobodysHere) {
    (void)proc.file("1/cgroup", "0::/app-gnome-org.gnome.Maps-9.scope\n");
    EXPECT_TRUE(identifiersOfProcesses(proc.url(), ::geteuid() + 1).empty());
}

TEST(RunningApps, anAppThatReallyRunsIsAmongThemUntilItHasQuit) {
    const TestFolder apps;
    (void)apps.file("Known.app/Contents/Info.plist", infoPlist("org.tavrin.Test.Known"));
    const URL executable = apps / "Known.app/Contents/MacOS/known";
    (void)apps.folder("Known.app/Contents/MacOS");
    std::filesystem::copy_file("/bin/cat", executable.path());
    QProcess process;
    process.start(QString::fromStdString(executable.path()));
    ASSERT_TRUE(process.waitForStarted());
    EXPECT_TRUE(RunningApps::bundleIDs().contains("org.tavrin.test.known"));
    // It reads what it is told, and ends with it.
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_FALSE(RunningApps::bundleIDs().contains("org.tavrin.test.known"));
}

}  // namespace
}  // namespace tavrin::test
