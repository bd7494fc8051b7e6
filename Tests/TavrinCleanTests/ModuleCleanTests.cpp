#include "KitWorld.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tavrin::test {
namespace {

using Phase = ModuleViewModel::Phase;

struct ModuleClean : testing::Test {
    KitWorld world;
    HistoryWorld historyWorld;
    std::unique_ptr<HistoryModel> history =
        std::make_unique<HistoryModel>(*world.services.background, world.services.restore);
    std::unique_ptr<ModuleViewModel> flow;
    std::vector<std::int64_t> reclaimable;

    void scanned(ModuleKind kind, const std::vector<CleanableItem>& items) {
        world.finds(items);
        flow = std::make_unique<ModuleViewModel>(kind, world.services);
        flow->setHistory(history.get());
        flow->startScan();
        world.settle();
        flow->onReclaimableChange = [this](ModuleKind, std::int64_t bytes) { reclaimable.push_back(bytes); };
    }
    void clean() {
        flow->clean();
        world.settle();
    }
};

TEST_F(ModuleClean, withNothingTickedNothingHappensNotEvenToTheCancelFlag) {
    Gate gate;
    world.finds({ticked(finding("a", 1))});
    flow = std::make_unique<ModuleViewModel>(ModuleKind::systemJunk, world.services);
    std::atomic<bool> wasCancelled = false;
    world.scans.front() = [&](const auto&, const CancellationCallback& isCancelled) {
        gate.pass();
        wasCancelled = isCancelled();
        return std::vector<CleanableItem>{};
    };
    flow->startScan();
    flow->clean();
    EXPECT_EQ(flow->phase(), Phase::scanning);
    flow->cancel();
    gate.open();
    world.settle();
    EXPECT_TRUE(wasCancelled);
    EXPECT_TRUE(world.cleaned.empty());
}

TEST_F(ModuleClean, theTickedGoAndTheOthersStay) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5)), finding("b", 7), ticked(finding("c", 11))});
    clean();
    ASSERT_EQ(world.cleaned.size(), 1U);
    EXPECT_EQ(namesOf(world.cleaned.front()), (std::vector<std::string>{"a", "c"}));
    EXPECT_EQ(namesOf(flow->items()), std::vector<std::string>{"b"});
    EXPECT_EQ(flow->phase(), Phase::done);
    EXPECT_EQ(flow->done().removed, 2);
    EXPECT_TRUE(flow->done().failures.empty());
    EXPECT_EQ(reclaimable, std::vector<std::int64_t>{7});
    EXPECT_EQ(flow->selection().count(), 0U);
}

TEST_F(ModuleClean, pathsAreCountedNotRows) {
    CleanableItem app = ticked(finding("a", 5));
    app.relatedURLs = {URL::fromPath("/home/me/x"), URL::fromPath("/home/me/y")};
    scanned(ModuleKind::systemJunk, {app, ticked(finding("b", 1)), finding("c", 1)});
    EXPECT_EQ(flow->selectedPathCount(), 4);
    clean();
    EXPECT_EQ(flow->done().removed, 4);
}

TEST_F(ModuleClean, whatIsRemovedIsWrittenDownUnderTheModulesKey) {
    scanned(ModuleKind::downloadsJunk, {ticked(finding("a", 5))});
    clean();
    ASSERT_EQ(history->count(), 1);
    EXPECT_EQ(history->records().front().moduleKey, "downloadsJunk");
    EXPECT_EQ(history->records().front().module, title(ModuleKind::downloadsJunk));
    EXPECT_EQ(history->records().front().itemCount, 1);
    ASSERT_EQ(history->records().front().entries.size(), 1U);
    EXPECT_EQ(history->records().front().entries.front().original.path(), "/home/me/a");
}

TEST_F(ModuleClean, theRecordStandsBeforeThePhaseIsTold) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5))});
    int recordsWhenDone = -1;
    const QObject listener;
    QObject::connect(flow.get(), &ModuleViewModel::phaseChanged, &listener, [&] {
        if (flow->phase() == Phase::done) recordsWhenDone = history->count();
    });
    clean();
    EXPECT_EQ(recordsWhenDone, 1);
}

TEST_F(ModuleClean, whatCouldNotBeRemovedLeavesTheListToo) {
    world.disk.refusals["/home/me/a"] = EACCES;
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5)), finding("b", 7)});
    clean();
    EXPECT_EQ(namesOf(flow->items()), std::vector<std::string>{"b"});
    ASSERT_EQ(flow->done().failures.size(), 1U);
    EXPECT_EQ(flow->done().failures.front().url.path(), "/home/me/a");
    EXPECT_EQ(history->count(), 0);
    EXPECT_TRUE(world.banners.empty());
}

TEST_F(ModuleClean, aBannerTellsWhatWasMoved) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5)), ticked(finding("b", 5))});
    clean();
    ASSERT_EQ(world.banners.size(), 1U);
    EXPECT_EQ(world.banners.front().first, S::notifyCleanedTitle());
    EXPECT_EQ(world.banners.front().second, S::notifyCleanedBody(ByteFormatter::string(flow->done().reclaimed), 2));
}

TEST_F(ModuleClean, withoutAHistoryItEndsNormally) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5))});
    history.reset();
    clean();
    EXPECT_EQ(flow->phase(), Phase::done);
    EXPECT_EQ(flow->done().removed, 1);
}

TEST_F(ModuleClean, aCancelledCleanIsDoneWithWhatWasDoneByThen) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5)), ticked(finding("b", 5))});
    Gate gate;
    world.beforeClean = [&gate](const auto&, const auto&) { gate.pass(); };
    flow->clean();
    EXPECT_EQ(flow->phase(), Phase::cleaning);
    flow->cancel();
    EXPECT_EQ(flow->phase(), Phase::cleaning);
    gate.open();
    world.settle();
    EXPECT_EQ(flow->phase(), Phase::done);
    EXPECT_EQ(flow->done().removed, 0);
    EXPECT_TRUE(world.disk.acts.empty());
}

TEST_F(ModuleClean, aFlagLeftSetByTheScanDoesNotStopTheClean) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5))});
    flow->cancel();
    clean();
    EXPECT_EQ(flow->done().removed, 1);
}

TEST_F(ModuleClean, theProgressIsTheScansUntilTheCleanerReports) {
    world.scans.push_back([](const ProgressCallback& progress, const auto&) {
        progress({.phase = "scanned", .fractionCompleted = 1.0});
        return std::vector{ticked(finding("a", 1))};
    });
    flow = std::make_unique<ModuleViewModel>(ModuleKind::systemJunk, world.services);
    flow->startScan();
    world.settle();
    Gate gate;
    world.beforeClean = [&gate](const auto&, const auto&) { gate.pass(); };
    flow->clean();
    EXPECT_EQ(flow->progress().phase, "scanned");
    gate.open();
    world.settle();
    EXPECT_EQ(flow->progress().phase, S::scanDone());
}

TEST_F(ModuleClean, languagesOfStoreBoughtAppsAreLeftAlone) {
    const TestFolder disk;
    (void)disk.file("Bought.app/Contents/_MASReceipt/receipt");
    (void)disk.folder("Free.app/Contents");
    const auto language = [&disk](std::string_view path) {
        return ticked(grouped(finding((disk / path).path(), 5, ScanCategory::appLanguage), "French"));
    };
    scanned(ModuleKind::appLanguages, {language("Bought.app/Contents/Resources/fr.lproj"),
                                       language("Free.app/Contents/Resources/fr.lproj"), language("fr.lproj")});
    clean();
    ASSERT_EQ(world.cleaned.size(), 1U);
    EXPECT_EQ(world.cleaned.front().size(), 2U);
    ASSERT_EQ(flow->done().failures.size(), 1U);
    EXPECT_EQ(flow->done().failures.front().url, disk / "Bought.app/Contents/Resources/fr.lproj");
    EXPECT_EQ(flow->done().failures.front().reason, S::moduleMASProtected());
    ASSERT_EQ(flow->items().size(), 1U);
    EXPECT_TRUE(flow->items().front().isSelected);
}

TEST_F(ModuleClean, whatTheCleanerCouldNotDoIsToldBeforeWhatWasSpared) {
    const TestFolder disk;
    (void)disk.file("Bought.app/Contents/_MASReceipt/receipt");
    const std::string bought = (disk / "Bought.app/Contents/Resources/fr.lproj").path();
    const std::string refused = (disk / "Free.app/Contents/Resources/fr.lproj").path();
    world.disk.refusals[refused] = EACCES;
    scanned(ModuleKind::appLanguages, {ticked(finding(bought, 5, ScanCategory::appLanguage)),
                                       ticked(finding(refused, 5, ScanCategory::appLanguage))});
    clean();
    ASSERT_EQ(flow->done().failures.size(), 2U);
    EXPECT_EQ(flow->done().failures[0].url.path(), refused);
    EXPECT_EQ(flow->done().failures[1].url.path(), bought);
    EXPECT_EQ(flow->done().failures[1].reason, S::moduleMASProtected());
}

TEST_F(ModuleClean, withOnlyStoreBoughtAppsTheCleanerRunsOnNothing) {
    const TestFolder disk;
    (void)disk.file("Bought.app/Contents/_MASReceipt/receipt");
    scanned(ModuleKind::appLanguages,
            {ticked(finding((disk / "Bought.app/Contents/Resources/fr.lproj").path(), 5, ScanCategory::appLanguage)),
             ticked(finding((disk / "Bought.app/Contents/Resources/de.lproj").path(), 5, ScanCategory::appLanguage))});
    clean();
    ASSERT_EQ(world.cleaned.size(), 1U);
    EXPECT_TRUE(world.cleaned.front().empty());
    EXPECT_EQ(flow->phase(), Phase::done);
    EXPECT_EQ(flow->done().reclaimed, 0);
    EXPECT_EQ(flow->done().removed, 0);
    EXPECT_EQ(flow->done().failures.size(), 2U);
    EXPECT_EQ(flow->items().size(), 2U);
    EXPECT_EQ(history->count(), 0);
    EXPECT_TRUE(world.banners.empty());
}

TEST_F(ModuleClean, onlyLanguagesAreSpared) {
    const TestFolder disk;
    (void)disk.file("Bought.app/Contents/_MASReceipt/receipt");
    scanned(ModuleKind::uninstaller, {ticked(finding((disk / "Bought.app").path(), 5, ScanCategory::application))});
    clean();
    EXPECT_EQ(world.cleaned.front().size(), 1U);
}

TEST_F(ModuleClean, anExtensionInCapitalsIsNoApp) {
    const TestFolder disk;
    (void)disk.file("Bought.APP/Contents/_MASReceipt/receipt");
    scanned(ModuleKind::appLanguages,
            {ticked(finding((disk / "Bought.APP/Contents/Resources/fr.lproj").path(), 5, ScanCategory::appLanguage))});
    clean();
    EXPECT_EQ(world.cleaned.front().size(), 1U);
}

TEST_F(ModuleClean, afterAnUninstallTheDockIsTidiedOfEverythingTicked) {
    world.disk.refusals["/home/me/Refused.app"] = EACCES;
    scanned(ModuleKind::uninstaller, {ticked(finding("Gone.app/", 5)), ticked(finding("Refused.app", 5)),
                                      ticked(finding("Loud.APP", 5)), finding("Kept.app", 5)});
    clean();
    ASSERT_EQ(world.tidiedDocks.size(), 1U);
    EXPECT_EQ(world.tidiedDocks.front(), (std::set<std::string>{"/home/me/Gone.app", "/home/me/Refused.app"}));
}

TEST_F(ModuleClean, theListIsSettledFirstThenPhaseSidebarBannerAndDockAreTold) {
    std::vector<std::string> told;
    world.services.notify = [&told](const auto&, const auto&) { told.emplace_back("banner"); };
    world.services.tidyDock = [&told](const auto&) { told.emplace_back("dock"); };
    scanned(ModuleKind::uninstaller, {ticked(finding("Gone.app", 5)), finding("Kept.app", 7)});
    const auto itemsAndPhase = [this] {
        return namesOf(flow->items()).front() + (flow->phase() == Phase::done ? " done" : "");
    };
    QObject::connect(flow.get(), &ModuleViewModel::phaseChanged, flow.get(), [&] {
        if (flow->phase() == Phase::done) told.push_back("phase: " + itemsAndPhase());
    });
    flow->onReclaimableChange = [&](auto...) { told.push_back("sidebar: " + itemsAndPhase()); };
    clean();
    EXPECT_EQ(told, (std::vector<std::string>{"phase: Kept.app done", "sidebar: Kept.app done", "banner", "dock"}));
}

TEST_F(ModuleClean, noOtherModuleTouchesTheDock) {
    scanned(ModuleKind::unusedApps, {ticked(finding("Gone.app", 5))});
    clean();
    EXPECT_TRUE(world.tidiedDocks.empty());
}

TEST_F(ModuleClean, theEndOfACleanLeavesTheFindingsOfALaterScanAlone) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5))});
    Gate gate;
    world.beforeClean = [&gate](const auto&, const auto&) { gate.pass(); };
    flow->clean();
    world.finds({finding("later", 3)});
    flow->startScan();
    world.waitUntil([this] { return flow->phase() == Phase::results; });
    gate.open();
    world.settle();
    EXPECT_EQ(flow->phase(), Phase::done);
    EXPECT_EQ(namesOf(flow->items()), std::vector<std::string>{"later"});
}

}  // namespace
}  // namespace tavrin::test
