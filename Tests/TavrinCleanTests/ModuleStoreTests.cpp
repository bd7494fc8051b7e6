#include "KitWorld.h"
#include "TavrinClean/Kit/ModuleStore.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinClean/Kit/ModulesModel.h"
#include "TavrinCore/Scanning/ByteFormatter.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <stdexcept>

namespace tavrin::test {
namespace {

using Phase = ModuleViewModel::Phase;

struct Store : testing::Test {
    KitWorld world;
    ModuleStore store{world.services, nullptr};

    /// So that what was opened before is let go.
    void openThreeOthers() {
        for (const ModuleKind kind : {ModuleKind::duplicates, ModuleKind::largeFiles, ModuleKind::loginItems})
            (void)store.viewModel(kind);
    }
    ModuleViewModel& scanned(ModuleKind kind) {
        ModuleViewModel& flow = store.viewModel(kind);
        flow.startScan();
        world.settle();
        return flow;
    }
};

TEST_F(Store, aModuleHasOneFlow) {
    EXPECT_EQ(&store.viewModel(ModuleKind::systemJunk), &store.viewModel(ModuleKind::systemJunk));
    EXPECT_NE(&store.viewModel(ModuleKind::systemJunk), &store.viewModel(ModuleKind::duplicates));
    EXPECT_EQ(store.viewModel(ModuleKind::duplicates).kind(), ModuleKind::duplicates);
}

TEST_F(Store, theThreeLatestAreRemembered) {
    for (const ModuleKind kind : {ModuleKind::systemJunk, ModuleKind::duplicates, ModuleKind::systemJunk})
        (void)store.viewModel(kind);
    EXPECT_EQ(store.recent(), (std::vector{ModuleKind::systemJunk, ModuleKind::duplicates}));
    (void)store.viewModel(ModuleKind::largeFiles);
    (void)store.viewModel(ModuleKind::loginItems);
    EXPECT_EQ(store.recent(), (std::vector{ModuleKind::loginItems, ModuleKind::largeFiles, ModuleKind::systemJunk}));
}

TEST_F(Store, aFourthModuleLetsTheOldestsFindingsGo) {
    world.finds({finding("a", 10)});
    ModuleViewModel& oldest = scanned(ModuleKind::systemJunk);
    oldest.setSortOrder(SortOrder::name);
    ModuleViewModel& second = scanned(ModuleKind::duplicates);
    (void)scanned(ModuleKind::largeFiles);
    EXPECT_EQ(oldest.phase(), Phase::results);
    (void)store.viewModel(ModuleKind::loginItems);
    EXPECT_EQ(oldest.phase(), Phase::idle);
    EXPECT_TRUE(oldest.items().empty());
    EXPECT_EQ(oldest.sortOrder(), SortOrder::name);
    EXPECT_EQ(second.phase(), Phase::results);
}

TEST_F(Store, theSidebarsFigureOutlivesTheFindings) {
    world.finds({finding("a", 10)});
    (void)scanned(ModuleKind::systemJunk);
    openThreeOthers();
    ModuleViewModel& reopened = store.viewModel(ModuleKind::systemJunk);
    EXPECT_EQ(reopened.phase(), Phase::idle);
    EXPECT_TRUE(reopened.items().empty());
    EXPECT_EQ(store.reclaimable().at(ModuleKind::systemJunk), 10);
}

TEST_F(Store, aBusyModuleKeepsItsScanAndItsResults) {
    Gate gate;
    world.scans.push_back([&gate](const auto&, const auto&) {
        gate.pass();
        return std::vector{finding("a", 10)};
    });
    ModuleViewModel& busy = store.viewModel(ModuleKind::systemJunk);
    busy.startScan();
    openThreeOthers();
    EXPECT_EQ(busy.phase(), Phase::scanning);
    EXPECT_EQ(store.recent().size(), 3U);
    gate.open();
    world.settle();
    EXPECT_EQ(busy.phase(), Phase::results);
    (void)store.viewModel(ModuleKind::iosBackups);
    EXPECT_EQ(busy.phase(), Phase::results);
    EXPECT_EQ(busy.items().size(), 1U);
}

TEST_F(Store, aModuleThatIsDoneIsLetGoToo) {
    world.finds({ticked(finding("a", 10))});
    ModuleViewModel& flow = scanned(ModuleKind::systemJunk);
    flow.clean();
    world.settle();
    ASSERT_EQ(flow.phase(), Phase::done);
    openThreeOthers();
    EXPECT_EQ(flow.phase(), Phase::idle);
}

TEST_F(Store, aModuleThatCleansIsPassedOver) {
    world.finds({ticked(finding("a", 10)), finding("b", 7)});
    ModuleViewModel& flow = scanned(ModuleKind::systemJunk);
    Gate gate;
    world.beforeClean = [&gate](const auto&, const auto&) { gate.pass(); };
    flow.clean();
    openThreeOthers();
    EXPECT_EQ(flow.phase(), Phase::cleaning);
    EXPECT_EQ(flow.items().size(), 2U);
    gate.open();
    world.settle();
    EXPECT_EQ(flow.phase(), Phase::done);
    EXPECT_EQ(flow.items().size(), 1U);
}

TEST_F(Store, aModuleThatFailedOrHadNoAccessIsLetGoToo) {
    const auto error = [](const auto& thrown) {
        return [thrown](const auto&, const auto&) -> std::vector<CleanableItem> { throw thrown; };
    };
    world.scans = {error(std::runtime_error("broken")), error(ScanError::accessDenied(URL()))};
    for (const Phase phase : {Phase::failed, Phase::needsAccess}) {
        ModuleViewModel& flow = scanned(ModuleKind::systemJunk);
        EXPECT_EQ(flow.phase(), phase);
        openThreeOthers();
        EXPECT_EQ(flow.phase(), Phase::idle);
    }
}

TEST_F(Store, howManyFoldersWereBlockedOutlivesTheFindings) {
    world.scans.push_back([](const ProgressCallback& progress, const auto&) {
        progress({.phase = "end", .fractionCompleted = 1.0, .blockedFolders = 2});
        return std::vector{finding("a", 1)};
    });
    ModuleViewModel& flow = scanned(ModuleKind::systemJunk);
    openThreeOthers();
    EXPECT_EQ(flow.phase(), Phase::idle);
    EXPECT_EQ(flow.blockedFolders(), 2);
}

TEST_F(Store, theHistoryGivenLastIsTheOneThatIsWritten) {
    const HistoryWorld historyWorld;
    HistoryModel history(*world.services.background, world.services.restore);
    world.finds({ticked(finding("a", 10))});
    ModuleViewModel& flow = scanned(ModuleKind::systemJunk);
    (void)store.viewModel(ModuleKind::systemJunk, &history);
    flow.clean();
    world.settle();
    EXPECT_EQ(history.count(), 1);
}

TEST_F(Store, rowsOfTheSidebarStandInTheirOrder) {
    const ModulesModel cleanup(ModuleSection::cleanup, store);
    const ModulesModel space(ModuleSection::space, store);
    EXPECT_EQ(cleanup.rowCount() + space.rowCount(), 15);
    EXPECT_EQ(cleanup.index(0).data(ModulesModel::KeyRole).toString(), QStringLiteral("systemJunk"));
    EXPECT_EQ(cleanup.index(1).data(ModulesModel::KeyRole).toString(), QStringLiteral("uninstaller"));
    EXPECT_EQ(space.index(0).data(ModulesModel::KeyRole).toString(), QStringLiteral("duplicates"));
    EXPECT_EQ(space.index(0).data(ModulesModel::SymbolRole).toString(), QStringLiteral("doc.on.doc"));
}

TEST_F(Store, aCapsuleShowsOnlyWhatCouldBeFreed) {
    ModulesModel model(ModuleSection::cleanup, store);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QModelIndex row = model.index(0);
    EXPECT_EQ(row.data(ModulesModel::CapsuleRole).toString(), QString());
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    world.finds({});
    (void)scanned(ModuleKind::systemJunk);
    EXPECT_EQ(row.data(ModulesModel::CapsuleRole).toString(), QString());
    world.finds({finding("a", 1'500'000)});
    (void)scanned(ModuleKind::systemJunk);
    EXPECT_EQ(row.data(ModulesModel::CapsuleRole).toString().toStdString(), ByteFormatter::string(1'500'000));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(changes.last().at(0).toModelIndex(), row);
}

}  // namespace
}  // namespace tavrin::test
