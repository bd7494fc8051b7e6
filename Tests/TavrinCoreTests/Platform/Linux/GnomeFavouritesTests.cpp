#include "Support/Command.h"
#include "Support/LockedFolder.h"
#include "Support/TestFolder.h"
#include "TavrinCore/DockCleaner.h"
#include "TavrinCore/Platform/Linux/GnomeFavourites.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tavrin {
namespace {

using test::contentsOf;
using test::TestFolder;
using testing::HasSubstr;

/// A desktop with a shell of its own, whose settings are a file.
class Desktop {
  public:
    explicit Desktop(const std::string& schema = shell(R"(<key name="favorite-apps" type="as">
        <default>['default.desktop', 'gone-default.desktop']</default></key>)")) {
        world.file("schemas/shell.gschema.xml", "<schemalist>" + schema + "</schemalist>");
        const test::CommandResult compiled =
            test::run({"glib-compile-schemas", "--strict", (world / "schemas").path()}, test::Complaints::inTheOutput);
        EXPECT_EQ(compiled.status, 0) << compiled.output;
    }

    static std::string shell(const std::string& keys) {
        return R"(<schema id="org.gnome.shell" path="/org/gnome/shell/">)" + keys + "</schema>";
    }

    void hasFavourites(const std::string& list) const {
        world.file("settings", "[org/gnome/shell]\nfavorite-apps=" + list + "\n");
    }
    /// An app that is installed and known to the desktop.
    URL installs(const std::string& identifier, const std::string& exec) const {
        return world.file("entries/" + identifier, "[Desktop Entry]\nType=Application\nName=X\nExec=" + exec + "\n");
    }

    [[nodiscard]] GnomePlaces places() const {
        return {.schemas = world / "schemas",
                .settings = world / "settings",
                .desktopEntries = {world / "user entries", world / "entries"}};
    }
    [[nodiscard]] std::string settings() const { return contentsOf(world / "settings"); }

    TestFolder world;
};

std::int64_t sweep(const Desktop& desktop, const std::set<std::string>& removed = {}) {
    const std::unique_ptr<DockStore> store = gnomeFavourites(desktop.places());
    EXPECT_NE(store, nullptr);
    return store != nullptr ? DockCleaner::removeEntries(removed, *store) : -1;
}

TEST(GnomeFavourites, aFavouriteWithoutADesktopEntryIsSweptOut) {
    const Desktop desktop;
    desktop.installs("here.desktop", "tool");
    desktop.installs("also-here.desktop", "/bin/sh");
    desktop.hasFavourites("['here.desktop', 'gone.desktop', 'also-here.desktop']");

    EXPECT_EQ(sweep(desktop), 1);

    EXPECT_THAT(desktop.settings(), HasSubstr("favorite-apps=['here.desktop', 'also-here.desktop']"));
    EXPECT_EQ(sweep(desktop), 0) << "a second time there is nothing to do";
}

TEST(GnomeFavourites, theFavouriteOfARemovedAppGoes) {
    const Desktop desktop;
    const URL app = desktop.world.folder("Applications/Foo.app");
    desktop.world.file("Applications/Foo.app/AppRun");
    desktop.installs("foo.desktop", app.path() + "/AppRun %U");
    desktop.installs("other.desktop", "other");
    desktop.hasFavourites("['foo.desktop', 'other.desktop']");

    EXPECT_EQ(sweep(desktop), 0) << "as long as it stands";
    EXPECT_EQ(sweep(desktop, {app.path()}), 1);

    EXPECT_THAT(desktop.settings(), HasSubstr("favorite-apps=['other.desktop']"));
}

TEST(GnomeFavourites, anAppInAFolderThatCantBeLookedIntoKeepsItsPlace) {
    const Desktop desktop;
    const URL app = desktop.world.file("locked/Foo.app/AppRun");
    desktop.installs("foo.desktop", app.path());
    desktop.hasFavourites("['foo.desktop', 'gone.desktop']");
    const test::LockedFolder lock(desktop.world / "locked");
    EXPECT_EQ(sweep(desktop), 1);
    EXPECT_THAT(desktop.settings(), HasSubstr("favorite-apps=['foo.desktop']"));
}

TEST(GnomeFavourites, theLastOneLeavesAnEmptyList) {
    const Desktop desktop;
    desktop.hasFavourites("['gone.desktop']");
    EXPECT_EQ(sweep(desktop), 1);
    const std::unique_ptr<DockStore> store = gnomeFavourites(desktop.places());
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->tiles(), PropertyList(PropertyList::Array{}));
}

TEST(GnomeFavourites, whereNothingIsDroppedTheFileStaysAsItIs) {
    const Desktop desktop;
    desktop.installs("here.desktop", "tool");
    desktop.hasFavourites("[ 'here.desktop' ]  ");
    const std::string before = desktop.settings();
    EXPECT_EQ(sweep(desktop), 0);
    EXPECT_EQ(desktop.settings(), before);
}

TEST(GnomeFavourites, thatTheUserNeverTouchedAreLeftToTheDesktop) {
    const Desktop desktop;
    desktop.world.file("settings", "");
    EXPECT_EQ(sweep(desktop, {"/anything.app"}), 0);
    EXPECT_EQ(desktop.settings(), "");
}

TEST(GnomeFavourites, aDesktopWithoutTheShellHasNoDock) {
    const Desktop other(R"(<schema id="org.example" path="/org/example/"><key name="favorite-apps" type="as">
        <default>[]</default></key></schema>)");
    EXPECT_EQ(gnomeFavourites(other.places()), nullptr);
    const TestFolder empty;
    EXPECT_EQ(gnomeFavourites({.schemas = empty.url(), .desktopEntries = {empty.url()}}), nullptr);
}

TEST(GnomeFavourites, aShellWithoutSuchAListHasNoDock) {
    EXPECT_EQ(
        gnomeFavourites(Desktop(Desktop::shell(R"(<key name="other" type="as"><default>[]</default></key>)")).places()),
        nullptr);
    EXPECT_EQ(
        gnomeFavourites(
            Desktop(Desktop::shell(R"(<key name="favorite-apps" type="s"><default>''</default></key>)")).places()),
        nullptr);
}

}  // namespace
}  // namespace tavrin
