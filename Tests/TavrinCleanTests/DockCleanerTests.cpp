#include "TavrinClean/Kit/AppBundle.h"
#include "TavrinClean/Kit/DockCleaner.h"

#include <gtest/gtest.h>

namespace tavrin::test {
namespace {

class FakeDock final : public DockStore {
  public:
    std::optional<std::vector<DockTile>> stored;
    int writes = 0;
    int restarts = 0;

    explicit FakeDock(const std::vector<std::optional<std::string>>& urls) : stored(std::in_place) {
        for (const auto& url : urls)
            stored->push_back({.entry = stored->size(), .urlString = url});
    }
    [[nodiscard]] std::optional<std::vector<DockTile>> tiles() override { return stored; }
    void setTiles(const std::vector<DockTile>& kept) override {
        stored = kept;
        ++writes;
    }
    void restartDock() override { ++restarts; }
    [[nodiscard]] std::vector<std::size_t> entries() const {
        std::vector<std::size_t> result;
        for (const DockTile& tile : *stored)
            result.push_back(tile.entry);
        return result;
    }
};

bool everythingStands(const URL&) {
    return true;
}
bool nothingStands(const URL&) {
    return false;
}

TEST(DockCleaner, dropsWhatWasUninstalledAlsoWhereItStillStands) {
    FakeDock dock({"file:///Applications/Foo.app/", "file:///Applications/Bar.app/"});
    EXPECT_EQ(DockCleaner::removeEntries({"/Applications/Foo.app"}, dock, everythingStands), 1U);
    EXPECT_EQ(dock.entries(), std::vector<std::size_t>{1});
    EXPECT_EQ(dock.writes, 1);
    EXPECT_EQ(dock.restarts, 1);
}

TEST(DockCleaner, sweepsOutWhatIsGoneEvenWithNothingUninstalled) {
    FakeDock dock({"file:///Applications/Gone.app/"});
    EXPECT_EQ(DockCleaner::removeEntries({}, dock, nothingStands), 1U);
    EXPECT_TRUE(dock.entries().empty());
}

TEST(DockCleaner, keepsSpacersAndWhatIsNoURL) {
    FakeDock dock({std::nullopt, "no url at all", "https://example.com/", "file:///%zz"});
    EXPECT_EQ(DockCleaner::removeEntries({}, dock, nothingStands), 0U);
    EXPECT_EQ(dock.writes, 0);
    EXPECT_EQ(dock.restarts, 0);
}

TEST(DockCleaner, comparesStandardisedPaths) {
    FakeDock dock({"file:///Applications/Utilities/../My%20App.app/"});
    EXPECT_EQ(DockCleaner::removeEntries({"/Applications/My App.app"}, dock, everythingStands), 1U);
}

TEST(DockCleaner, withoutAStoreOfKnownShapeNothingHappens) {
    FakeDock dock({});
    dock.stored.reset();
    EXPECT_EQ(DockCleaner::removeEntries({"/a"}, dock, nothingStands), 0U);
    EXPECT_EQ(dock.writes, 0);
}

TEST(AppBundle, isTheNearestFolderThatEndsInApp) {
    EXPECT_EQ(appBundle(URL::fromPath("/A.app/Contents/B.app/c"))->path(), "/A.app/Contents/B.app");
    EXPECT_EQ(appBundle(URL::fromPath("/A.app"))->path(), "/A.app");
    EXPECT_EQ(appBundle(URL::fromPath("/A.APP/c")), std::nullopt);
    EXPECT_EQ(appBundle(URL::fromPath("/a/b")), std::nullopt);
    EXPECT_EQ(appBundle(URL()), std::nullopt);
}

}  // namespace
}  // namespace tavrin::test
