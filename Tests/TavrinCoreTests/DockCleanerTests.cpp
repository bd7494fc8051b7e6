#include "TavrinCore/DockCleaner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::set<std::string>;

PropertyList text(const std::string& value) {
    return PropertyList(value);
}

PropertyList dictionary(const std::string& key, PropertyList value) {
    PropertyList::Dictionary entries;
    entries.emplace(key, std::move(value));
    return PropertyList(std::move(entries));
}

/// As the Dock writes it.
PropertyList tile(PropertyList url) {
    return dictionary("tile-data", dictionary("file-data", dictionary("_CFURLString", std::move(url))));
}

PropertyList tile(const std::string& url) {
    return tile(text(url));
}

/// A dock in memory that notes what is asked of it.
class MemoryDock final : public DockStore {
  public:
    explicit MemoryDock(std::optional<PropertyList> stored) : stored_(std::move(stored)) {}
    explicit MemoryDock(PropertyList::Array tiles) : stored_(PropertyList(std::move(tiles))) {}

    std::optional<PropertyList> tiles() override { return stored_; }
    void setTiles(const PropertyList::Array& tiles) override {
        calls.emplace_back("set");
        stored_ = PropertyList(tiles);
    }
    void restartDock() override { calls.emplace_back("restart"); }

    [[nodiscard]] const std::optional<PropertyList>& stored() const { return stored_; }

    std::vector<std::string> calls;

  private:
    std::optional<PropertyList> stored_;
};

/// The files that exist.
DockCleaner::FileExists only(const Paths& existing) {
    return [existing](const URL& url) { return existing.contains(url.path()); };
}

const DockCleaner::FileExists kEverything = [](const URL&) { return true; };

PropertyList listOf(PropertyList::Array tiles) {
    return PropertyList(std::move(tiles));
}

TEST(DockCleaner, dropsTheTilesOfRemovedAppsAndKeepsTheOrderOfTheOthers) {
    const PropertyList one = tile("file:///Applications/One.app/");
    const PropertyList two = tile("file:///Applications/Two.app/");
    const PropertyList three = tile("file:///Applications/Three.app/");
    MemoryDock dock(PropertyList::Array{one, two, three});

    EXPECT_EQ(DockCleaner::removeEntries({"/Applications/Two.app"}, dock, kEverything), 1);

    EXPECT_EQ(dock.stored(), listOf({one, three}));
    EXPECT_THAT(dock.calls, ElementsAre("set", "restart"));
}

TEST(DockCleaner, anAppThatWasSelectedAndIsStillThereIsDroppedAllTheSame) {
    MemoryDock dock(PropertyList::Array{tile("file:///Applications/One.app")});
    EXPECT_EQ(DockCleaner::removeEntries({"/Applications/One.app"}, dock, only({"/Applications/One.app"})), 1);
    EXPECT_EQ(dock.stored(), listOf({}));
}

TEST(DockCleaner, anEmptySetStillSweepsTilesWhoseFilesAreGone) {
    const PropertyList here = tile("file:///Applications/Here.app/");
    MemoryDock dock(PropertyList::Array{tile("file:///Volumes/Away/Gone.app/"), here});
    EXPECT_EQ(DockCleaner::removeEntries({}, dock, only({"/Applications/Here.app"})), 1);
    EXPECT_EQ(dock.stored(), listOf({here}));
}

TEST(DockCleaner, whereNothingIsDroppedNothingIsWrittenAndTheDockGoesOn) {
    MemoryDock dock(PropertyList::Array{tile("file:///Applications/One.app/")});
    EXPECT_EQ(DockCleaner::removeEntries({"/Applications/Other.app"}, dock, kEverything), 0);
    EXPECT_THAT(dock.calls, IsEmpty());
}

TEST(DockCleaner, aPathMatchesHoweverTheTileSpellsIt) {
    for (const char* spelling : {"file:///Applications/My%20App.app/", "file:///Applications/My%20App.app",
                                 "file://localhost/Applications/My%20App.app/", "/Applications/My%20App.app",
                                 "file:///Applications/./Games/../My%20App.app//"}) {
        MemoryDock dock(PropertyList::Array{tile(spelling)});
        EXPECT_EQ(DockCleaner::removeEntries({"/Applications/My App.app"}, dock, kEverything), 1) << spelling;
    }
}

TEST(DockCleaner, aTileThatNamesNoFileIsKept) {
    const PropertyList::Array tiles{
        dictionary("tile-type", text("spacer-tile")),
        dictionary("tile-data", text("no dictionary")),
        dictionary("tile-data", dictionary("file-data", text("no dictionary"))),
        tile(PropertyList(std::int64_t{3})),
        tile("not a URL"),
        tile("file:///broken%zzescape.app"),
        tile("file:///zero%00byte.app"),
        tile("https://example.org/Some.app"),
        tile(""),
    };
    MemoryDock dock(tiles);
    EXPECT_EQ(DockCleaner::removeEntries({}, dock, only({})), 0);
    EXPECT_THAT(dock.calls, IsEmpty());
}

TEST(DockCleaner, whatElseATileHoldsComesBackWithIt) {
    PropertyList::Dictionary entries = *tile("file:///Applications/One.app/").dictionary();
    entries.emplace("GUID", PropertyList(std::int64_t{42}));
    const PropertyList rich(entries);
    MemoryDock dock(PropertyList::Array{rich, tile("file:///gone.app")});
    EXPECT_EQ(DockCleaner::removeEntries({}, dock, only({"/Applications/One.app"})), 1);
    EXPECT_EQ(dock.stored(), listOf({rich}));
}

TEST(DockCleaner, aStoreOfTheWrongShapeIsLeftAsItIs) {
    const std::vector<std::optional<PropertyList>> shapes{
        std::nullopt,
        text("no list"),
        dictionary("persistent-apps", listOf({})),
        listOf({}),
        listOf({tile("file:///gone.app"), text("no tile")}),
    };
    for (const auto& shape : shapes) {
        MemoryDock dock(shape);
        EXPECT_EQ(DockCleaner::removeEntries({"/gone.app"}, dock, only({})), 0);
        EXPECT_THAT(dock.calls, IsEmpty());
    }
}

}  // namespace
}  // namespace tavrin
