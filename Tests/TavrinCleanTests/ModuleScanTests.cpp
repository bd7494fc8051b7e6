#include "KitWorld.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <stdexcept>

namespace tavrin::test {
namespace {

using Phase = ModuleViewModel::Phase;

struct ModuleScan : testing::Test {
    KitWorld world;
    ModuleViewModel flow{ModuleKind::systemJunk, world.services};
    std::vector<std::int64_t> reclaimable;

    ModuleScan() {
        flow.onReclaimableChange = [this](ModuleKind kind, std::int64_t bytes) {
            EXPECT_EQ(kind, ModuleKind::systemJunk);
            reclaimable.push_back(bytes);
        };
    }
    void scanFails(const std::function<void()>& fail) {
        world.scans.push_back([fail](const auto&, const auto&) {
            fail();
            return std::vector<CleanableItem>{};
        });
        flow.startScan();
        world.settle();
    }
};

TEST_F(ModuleScan, beginsIdleAndEmpty) {
    EXPECT_EQ(flow.phase(), Phase::idle);
    EXPECT_TRUE(flow.items().empty());
    EXPECT_TRUE(flow.groupedResults().empty());
    EXPECT_EQ(flow.sortOrder(), SortOrder::sizeDesc);
    EXPECT_EQ(flow.totalBytes(), 0);
    EXPECT_EQ(flow.blockedFolders(), 0);
    EXPECT_EQ(flow.progress(), ScanProgress{});
}

TEST_F(ModuleScan, whileItRunsTheListIsEmptyAndTheProgressSaysThatItStarts) {
    world.finds({finding("a", 10)});
    flow.startScan();
    world.settle();
    Gate gate;
    world.scans.push_back([&gate](const auto&, const auto&) {
        gate.pass();
        return std::vector<CleanableItem>{};
    });
    flow.startScan();
    EXPECT_EQ(flow.phase(), Phase::scanning);
    EXPECT_TRUE(flow.items().empty());
    EXPECT_EQ(flow.progress(), ScanProgress{.phase = S::moduleStarting()});
    gate.open();
    world.settle();
    EXPECT_EQ(flow.phase(), Phase::results);
}

TEST_F(ModuleScan, resultsComeInTheScannersOrderWithItsTicks) {
    world.finds({finding("small", 1), ticked(finding("large", 9)), finding("middle", 5)});
    flow.startScan();
    world.settle();
    EXPECT_EQ(flow.phase(), Phase::results);
    EXPECT_EQ(namesOf(flow.items()), (std::vector<std::string>{"small", "large", "middle"}));
    EXPECT_EQ(namesOf(flow.selectedItems()), std::vector<std::string>{"large"});
    EXPECT_EQ(flow.totalBytes(), 15);
    EXPECT_EQ(reclaimable, std::vector<std::int64_t>{15});
}

TEST_F(ModuleScan, anEmptyListIsAResult) {
    world.finds({});
    flow.startScan();
    world.settle();
    EXPECT_EQ(flow.phase(), Phase::results);
    EXPECT_TRUE(flow.groupedResults().empty());
    EXPECT_EQ(reclaimable, std::vector<std::int64_t>{0});
}

TEST_F(ModuleScan, blockedFoldersAreThoseOfTheLastReport) {
    world.scans.push_back([](const ProgressCallback& progress, const auto&) {
        progress({.phase = "looking", .itemsFound = 1});
        progress({.phase = "the end", .itemsFound = 1, .fractionCompleted = 1.0, .blockedFolders = 3});
        return std::vector{finding("a", 1)};
    });
    flow.startScan();
    world.settle();
    EXPECT_EQ(flow.blockedFolders(), 3);
    EXPECT_EQ(flow.progress().phase, "the end");

    world.finds({});
    flow.startScan();
    EXPECT_EQ(flow.blockedFolders(), 0);
}

TEST_F(ModuleScan, aCancelledScanIsIdle) {
    scanFails([] { throw ScanError::cancelled(); });
    EXPECT_EQ(flow.phase(), Phase::idle);
    EXPECT_TRUE(reclaimable.empty());
}

TEST_F(ModuleScan, deniedAccessNeedsAccess) {
    scanFails([] { throw ScanError::accessDenied(URL()); });
    EXPECT_EQ(flow.phase(), Phase::needsAccess);
    EXPECT_TRUE(reclaimable.empty());
}

TEST_F(ModuleScan, anyOtherErrorFailsWithItsWords) {
    scanFails([] { throw std::runtime_error("the disk is on fire"); });
    EXPECT_EQ(flow.phase(), Phase::failed);
    EXPECT_EQ(flow.failure(), "the disk is on fire");
    EXPECT_TRUE(reclaimable.empty());
}

TEST_F(ModuleScan, whatIsNoExceptionFailsToo) {
    scanFails([] { throw 1; });
    EXPECT_EQ(flow.phase(), Phase::failed);
}

TEST_F(ModuleScan, aFailedRescanKeepsTheSidebarsFigureAndShowsNothing) {
    world.finds({finding("a", 10)});
    flow.startScan();
    world.settle();
    scanFails([] { throw std::runtime_error("no"); });
    EXPECT_EQ(reclaimable, std::vector<std::int64_t>{10});
    EXPECT_TRUE(flow.items().empty());
}

TEST_F(ModuleScan, cancellingSetsTheFlagAndNothingElse) {
    Gate gate;
    bool wasCancelled = false;
    world.scans.push_back([&](const auto&, const CancellationCallback& isCancelled) {
        gate.pass();
        wasCancelled = isCancelled();
        if (wasCancelled) throw ScanError::cancelled();
        return std::vector<CleanableItem>{};
    });
    flow.startScan();
    flow.cancel();
    EXPECT_EQ(flow.phase(), Phase::scanning);
    gate.open();
    world.settle();
    EXPECT_TRUE(wasCancelled);
    EXPECT_EQ(flow.phase(), Phase::idle);
}

TEST_F(ModuleScan, aScannerThatIgnoresTheCancelStillShowsItsResult) {
    Gate gate;
    world.scans.push_back([&](const auto&, const auto&) {
        gate.pass();
        return std::vector{finding("a", 1)};
    });
    flow.startScan();
    flow.cancel();
    gate.open();
    world.settle();
    EXPECT_EQ(flow.phase(), Phase::results);
    EXPECT_EQ(flow.items().size(), 1U);
}

TEST_F(ModuleScan, aSecondScanCancelsTheFirstAndIgnoresItsLateResult) {
    Gate gate;
    std::atomic<bool> firstWasCancelled = false;
    world.scans.push_back([&](const auto&, const CancellationCallback& isCancelled) {
        gate.pass();
        firstWasCancelled = isCancelled();
        return std::vector{finding("first", 1)};
    });
    world.scans.push_back([](const auto&, const CancellationCallback& isCancelled) {
        EXPECT_FALSE(isCancelled());
        return std::vector{finding("second", 2)};
    });
    flow.startScan();
    flow.startScan();
    world.waitUntil([this] { return flow.phase() == Phase::results; });
    gate.open();
    world.settle();
    EXPECT_TRUE(firstWasCancelled);
    EXPECT_EQ(flow.phase(), Phase::results);
    EXPECT_EQ(namesOf(flow.items()), std::vector<std::string>{"second"});
    EXPECT_EQ(reclaimable, std::vector<std::int64_t>{2});
}

TEST_F(ModuleScan, aLateErrorOfAReplacedScanIsIgnoredToo) {
    Gate first;
    Gate second;
    world.scans.push_back([&](const auto&, const auto&) -> std::vector<CleanableItem> {
        first.pass();
        throw ScanError::cancelled();
    });
    world.scans.push_back([&](const auto&, const auto&) {
        second.pass();
        return std::vector{finding("a", 1)};
    });
    flow.startScan();
    flow.startScan();
    QSignalSpy phases(&flow, &ModuleViewModel::phaseChanged);
    first.open();
    // The quick lane's answer comes after that of the first scan only by luck, so the second one is let go as well.
    second.open();
    world.settle();
    EXPECT_EQ(flow.phase(), Phase::results);
    EXPECT_EQ(phases.count(), 1);
}

TEST_F(ModuleScan, whatBelongsToARunningAppIsUntickedAndStays) {
    world.running = {"com.foo.app"};
    world.finds({ticked(finding("com.foo.app.helper", 1)), ticked(finding("com.bar", 2)), finding("com.baz", 3)});
    flow.startScan();
    world.settle();
    EXPECT_EQ(flow.items().size(), 3U);
    EXPECT_EQ(namesOf(flow.selectedItems()), std::vector<std::string>{"com.bar"});
    EXPECT_EQ(world.timesAskedWhatRuns, 1);
}

TEST_F(ModuleScan, aRunningAppsFindingMayBeTickedByHand) {
    world.running = {"com.foo.app"};
    const CleanableItem item = ticked(finding("com.foo.app", 1));
    world.finds({item});
    flow.startScan();
    world.settle();
    flow.toggle(item);
    EXPECT_EQ(flow.selectedItems().size(), 1U);
}

TEST_F(ModuleScan, everythingStandsWhenThePhaseIsTold) {
    world.finds({ticked(finding("a", 7))});
    bool told = false;
    const QObject listener;
    QObject::connect(&flow, &ModuleViewModel::phaseChanged, &listener, [&] {
        if (flow.phase() != Phase::results) return;
        told = true;
        EXPECT_EQ(flow.items().size(), 1U);
        EXPECT_EQ(flow.selection().count(), 1U);
        EXPECT_EQ(flow.arrangement()->order.size(), 1U);
        EXPECT_TRUE(reclaimable.empty());
    });
    flow.startScan();
    world.settle();
    EXPECT_TRUE(told);
    EXPECT_EQ(reclaimable.size(), 1U);
}

TEST(ModuleScanLifetime, aFlowThatGoesTellsItsScanToStop) {
    KitWorld world;
    Gate gate;
    std::atomic<bool> wasCancelled = false;
    world.scans.push_back([&](const auto&, const CancellationCallback& isCancelled) {
        gate.pass();
        wasCancelled = isCancelled();
        return std::vector{finding("a", 1)};
    });
    auto flow = std::make_unique<ModuleViewModel>(ModuleKind::systemJunk, world.services);
    flow->startScan();
    flow.reset();
    gate.open();
    world.settle();
    EXPECT_TRUE(wasCancelled);
}

}  // namespace
}  // namespace tavrin::test
