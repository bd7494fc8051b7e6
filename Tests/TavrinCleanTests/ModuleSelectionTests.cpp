#include "KitWorld.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace tavrin::test {
namespace {

struct ModuleSelection : testing::Test {
    KitWorld world;
    std::unique_ptr<ModuleViewModel> flow;

    void scanned(ModuleKind kind, const std::vector<CleanableItem>& items) {
        world.finds(items);
        flow = std::make_unique<ModuleViewModel>(kind, world.services);
        flow->startScan();
        world.settle();
    }
    [[nodiscard]] std::vector<std::string> selected() const { return namesOf(flow->selectedItems()); }
};

using Names = std::vector<std::string>;

TEST_F(ModuleSelection, togglingFlipsOneItem) {
    const CleanableItem a = finding("a", 5);
    scanned(ModuleKind::systemJunk, {a, ticked(finding("b", 7))});
    flow->toggle(a);
    EXPECT_EQ(selected(), (Names{"a", "b"}));
    EXPECT_EQ(flow->selection().bytes(), 12);
    EXPECT_EQ(flow->selection().count(), 2U);
    flow->toggle(a);
    EXPECT_EQ(selected(), Names{"b"});
    EXPECT_EQ(flow->selection().bytes(), 7);
}

TEST_F(ModuleSelection, togglingWhatIsNotThereDoesNothing) {
    scanned(ModuleKind::systemJunk, {finding("a", 5)});
    const QSignalSpy changes(flow.get(), &ModuleViewModel::selectionChanged);
    flow->toggle(finding("a", 5));
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(selected().empty());
}

TEST_F(ModuleSelection, tickingAGroupPassesItsKeeperOver) {
    scanned(ModuleKind::duplicates, {grouped(keeper(finding("a", 1)), "g"), grouped(finding("b", 1), "g"),
                                     grouped(finding("c", 1), "g"), grouped(finding("d", 1), "other")});
    flow->setAll(true, "g");
    EXPECT_EQ(selected(), (Names{"b", "c"}));
}

TEST_F(ModuleSelection, untickingAGroupReachesItsKeeperToo) {
    const CleanableItem kept = grouped(keeper(finding("a", 1)), "g");
    scanned(ModuleKind::duplicates, {kept, grouped(finding("b", 1), "g")});
    flow->toggle(kept);
    flow->setAll(true, "g");
    EXPECT_EQ(selected(), (Names{"a", "b"}));
    flow->setAll(false, "g");
    EXPECT_TRUE(selected().empty());
}

TEST_F(ModuleSelection, tickingAllPassesKeepersOverAndUntickingDoesNot) {
    const CleanableItem kept = grouped(keeper(finding("a", 1)), "g");
    scanned(ModuleKind::duplicates, {kept, grouped(finding("b", 1), "g"), grouped(finding("c", 1), "h")});
    flow->setAll(true);
    EXPECT_EQ(selected(), (Names{"b", "c"}));
    flow->toggle(kept);
    flow->setAll(false);
    EXPECT_TRUE(selected().empty());
}

TEST_F(ModuleSelection, aKeeperTickedByHandIsCleanedLikeAnyOther) {
    const CleanableItem kept = grouped(keeper(finding("a", 1)), "g");
    scanned(ModuleKind::duplicates, {kept});
    flow->toggle(kept);
    flow->clean();
    world.settle();
    EXPECT_EQ(world.cleaned.front().size(), 1U);
}

TEST_F(ModuleSelection, eachChangeIsOneSignal) {
    scanned(ModuleKind::systemJunk, {finding("a", 1), finding("b", 1), finding("c", 1)});
    const QSignalSpy changes(flow.get(), &ModuleViewModel::selectionChanged);
    flow->setAll(true);
    flow->setAll(false, "userCache");
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModuleSelection, aGroupThatIsNotThereIsNobodys) {
    scanned(ModuleKind::systemJunk, {finding("a", 1)});
    flow->setAll(true, "logs");
    EXPECT_TRUE(selected().empty());
}

TEST_F(ModuleSelection, groupedResultsTellTicksAndBytes) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 3)), finding("b", 4), finding("l", 1, ScanCategory::logs)});
    const std::vector<ResultGroup> groups = flow->groupedResults();
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].id, "userCache");
    EXPECT_EQ(groups[0].title, S::categoryUserCache());
    EXPECT_EQ(namesOf(groups[0].items), (Names{"b", "a"}));
    EXPECT_EQ(groups[0].totalBytes, 7);
    EXPECT_EQ(groups[0].selectedCount, 1);
    EXPECT_EQ(groups[1].selectedCount, 0);
}

TEST_F(ModuleSelection, theSortOrderSurvivesARescanAndTicksDoNot) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 1)), finding("b", 2)});
    flow->setSortOrder(SortOrder::name);
    flow->setAll(true);
    flow->startScan();
    world.settle();
    EXPECT_EQ(flow->sortOrder(), SortOrder::name);
    EXPECT_EQ(flow->arrangement()->sortOrder, SortOrder::name);
    EXPECT_EQ(namesOf(flow->sortedItems()), (Names{"a", "b"}));
    EXPECT_EQ(selected(), Names{"a"});
}

TEST_F(ModuleSelection, anotherOrderArrivesALittleLater) {
    scanned(ModuleKind::systemJunk, {finding("a", 1), finding("b", 2)});
    const QSignalSpy arrivals(flow.get(), &ModuleViewModel::arrangementChanged);
    flow->setSortOrder(SortOrder::sizeAsc);
    EXPECT_EQ(flow->sortOrder(), SortOrder::sizeAsc);
    EXPECT_TRUE(flow->isArranging());
    world.settle();
    EXPECT_FALSE(flow->isArranging());
    EXPECT_EQ(arrivals.count(), 1);
    EXPECT_EQ(flow->arrangement()->order, (std::vector<std::uint32_t>{0, 1}));
}

TEST_F(ModuleSelection, anOrderChosenWhileAScanRunsHoldsForItsResults) {
    Gate gate;
    world.scans.push_back([&gate](const auto&, const auto&) {
        gate.pass();
        return std::vector{finding("a", 1), finding("b", 2)};
    });
    flow = std::make_unique<ModuleViewModel>(ModuleKind::systemJunk, world.services);
    flow->startScan();
    flow->setSortOrder(SortOrder::sizeAsc);
    gate.open();
    world.settle();
    EXPECT_EQ(flow->arrangement()->sortOrder, SortOrder::sizeAsc);
    EXPECT_EQ(flow->arrangement()->findings, flow->findings());
}

TEST_F(ModuleSelection, tickingWhileACleanRunsHoldsForWhatIsLeft) {
    const CleanableItem b = finding("b", 2);
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 1)), b});
    Gate gate;
    world.beforeClean = [&gate](const auto&, const auto&) { gate.pass(); };
    flow->clean();
    flow->toggle(b);
    gate.open();
    world.settle();
    EXPECT_EQ(selected(), Names{"b"});
}

}  // namespace
}  // namespace tavrin::test
