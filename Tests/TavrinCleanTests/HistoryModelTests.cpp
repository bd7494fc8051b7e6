#include "KitWorld.h"
#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/HistoryRecordsModel.h"
#include "TavrinClean/Kit/HistoryScreenModel.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <fstream>
#include <thread>

namespace tavrin::test {
namespace {

struct History : testing::Test {
    KitWorld world;
    HistoryWorld folders;
    std::unique_ptr<HistoryModel> history = load();

    [[nodiscard]] std::unique_ptr<HistoryModel> load() {
        return std::make_unique<HistoryModel>(*world.services.background, world.services.restore);
    }
    [[nodiscard]] std::vector<CleanupRecord> onDisk() { return load()->records(); }
    /// A clean of these paths, which stand in the Trash then.
    [[nodiscard]] CleanResult cleanOf(const std::vector<std::string>& names) {
        CleanResult result{.removedItems = std::ssize(names), .reclaimedBytes = 1'000 * std::ssize(names)};
        for (const std::string& name : names) {
            result.restorable.push_back(
                {.original = URL::fromPath("/home/me/" + name), .trashed = URL::fromPath("/Trash/" + name)});
            world.disk.standing.insert("/Trash/" + name);
        }
        world.disk.standing.insert("/home/me");
        return result;
    }
    RestoreResult restoreFirst() {
        RestoreResult outcome;
        QObject owner;
        history->restore(history->records().front(), &owner, [&](const RestoreResult& result) { outcome = result; });
        world.settle();
        return outcome;
    }
};

TEST_F(History, aFirstStartHasNoRecordsAndWritesNothing) {
    EXPECT_EQ(history->count(), 0);
    EXPECT_FALSE(somethingAt(history->fileURL()));
    EXPECT_FALSE(somethingAt(history->damagedURL()));
    EXPECT_EQ(history->totalReclaimed(), 0);
}

TEST_F(History, aCleanIsWrittenAtOnceNewestFirst) {
    const QSignalSpy changes(history.get(), &HistoryModel::recordsChanged);
    history->add("Old", "systemJunk", cleanOf({"a"}));
    history->add("New", "duplicates", cleanOf({"b", "c"}));
    EXPECT_EQ(changes.count(), 2);
    ASSERT_EQ(history->count(), 2);
    EXPECT_EQ(history->records()[0].module, "New");
    EXPECT_EQ(history->records()[0].itemCount, 2);
    EXPECT_EQ(history->records()[0].reclaimedBytes, 2'000);
    EXPECT_EQ(onDisk(), history->records());
}

TEST_F(History, aCleanThatRemovedNothingLeavesNoTrace) {
    history->add("Nothing", "systemJunk", {.failures = {{.url = URL(), .reason = "no"}}});
    EXPECT_EQ(history->count(), 0);
    EXPECT_FALSE(somethingAt(history->fileURL()));
}

TEST_F(History, aCleanThatCannotBePutBackIsARecordToo) {
    history->add("Emptied", std::string(CleanupRecord::emptyTrashKey), {.removedItems = 3, .reclaimedBytes = 70});
    EXPECT_EQ(history->count(), 1);
    EXPECT_TRUE(history->records().front().entries.empty());
}

TEST_F(History, clearingWritesAnEmptyList) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    history->clear();
    EXPECT_EQ(history->count(), 0);
    EXPECT_EQ(contentsOf(history->fileURL()), "[]");
}

TEST_F(History, onlyTheEmptiedTrashCountsAsFreed) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    EXPECT_EQ(history->totalReclaimed(), 0);
    history->add("Trash", std::string(CleanupRecord::emptyTrashKey), {.removedItems = 1, .reclaimedBytes = 70});
    EXPECT_EQ(history->totalReclaimed(), 70);
}

TEST_F(History, aWholeRestoreTakesTheRecordAway) {
    history->add("A", "systemJunk", cleanOf({"a", "b"}));
    const RestoreResult outcome = restoreFirst();
    EXPECT_EQ(outcome.restored, 2);
    EXPECT_EQ(history->count(), 0);
    EXPECT_TRUE(onDisk().empty());
}

TEST_F(History, aPartialRestoreKeepsWhatIsPendingAndTheFigures) {
    history->add("A", "systemJunk", cleanOf({"a", "b", "c"}));
    world.disk.standing.erase("/Trash/b");
    EXPECT_EQ(restoreFirst().restored, 2);
    ASSERT_EQ(history->count(), 1);
    EXPECT_EQ(history->records().front().itemCount, 3);
    EXPECT_EQ(history->records().front().reclaimedBytes, 3'000);
    ASSERT_EQ(history->records().front().entries.size(), 1U);
    EXPECT_EQ(onDisk(), history->records());
    EXPECT_EQ(restoreFirst().restored, 0);
    EXPECT_EQ(history->count(), 1);
}

TEST_F(History, aRecordThatIsGoneMeanwhileIsNoFault) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    world.disk.standing.erase("/Trash/a");
    QObject owner;
    bool told = false;
    history->restore(history->records().front(), &owner, [&told](const auto&) { told = true; });
    history->clear();
    world.settle();
    EXPECT_TRUE(told);
    EXPECT_EQ(history->count(), 0);
}

TEST_F(History, theRecordIsSettledAlsoWhenNobodyWaitsAnyMore) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    bool told = false;
    auto owner = std::make_unique<QObject>();
    history->restore(history->records().front(), owner.get(), [&told](const auto&) { told = true; });
    owner.reset();
    world.settle();
    EXPECT_FALSE(told);
    EXPECT_EQ(history->count(), 0);
}

TEST_F(History, aDamagedFileIsKeptAsideAndWhatIsWholeIsLoaded) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    history->add("B", "systemJunk", cleanOf({"b"}));
    const std::string whole = contentsOf(history->fileURL());
    std::string broken = whole;
    broken.replace(broken.find("\"date\""), 6, "\"dxte\"");
    std::ofstream(history->fileURL().path()) << broken;
    history = load();
    ASSERT_EQ(history->count(), 1);
    EXPECT_EQ(history->records().front().module, "A");
    EXPECT_EQ(contentsOf(history->damagedURL()), broken);
}

TEST_F(History, aDiskThatRefusesChangesNothingInMemory) {
    (void)folders.folder.folder("Tavrin Clean/history.json/occupied");
    history->add("A", "systemJunk", cleanOf({"a"}));
    EXPECT_EQ(history->count(), 1);
}

// The screen.

struct HistoryScreen : History {
    HistoryScreenModel screen;
    HistoryRecordsModel& rows = *screen.records();
    QAbstractItemModelTester tester{&rows, QAbstractItemModelTester::FailureReportingMode::Fatal};

    HistoryScreen() { screen.setHistory(history.get()); }
    [[nodiscard]] QVariant at(int row, int role) const { return rows.index(row).data(role); }
    [[nodiscard]] std::string text(int row, int role) const { return at(row, role).toString().toStdString(); }
    [[nodiscard]] QString idAt(int row) const { return at(row, HistoryRecordsModel::RecordIdRole).toString(); }
};

TEST_F(HistoryScreen, withoutRecordsItIsEmptyAndNothingWasFreed) {
    EXPECT_TRUE(screen.isEmpty());
    EXPECT_EQ(screen.totalText().toStdString(), S::historyTotalReclaimed(ByteFormatter::string(0)));
    EXPECT_EQ(screen.message(), QString());
    screen.askToClear();
    EXPECT_FALSE(screen.confirmingClear());
}

TEST_F(HistoryScreen, aRowTellsOfItsClean) {
    history->add("Papelera", "systemJunk", cleanOf({"a", "b"}));
    ASSERT_EQ(rows.rowCount(), 1);
    EXPECT_EQ(text(0, HistoryRecordsModel::TitleRole), title(ModuleKind::systemJunk));
    EXPECT_EQ(text(0, HistoryRecordsModel::DateTextRole), dateAndTimeText(history->records().front().date));
    EXPECT_EQ(text(0, HistoryRecordsModel::SummaryRole), S::countItemsSize(2, ByteFormatter::string(2'000)));
    EXPECT_TRUE(at(0, HistoryRecordsModel::CanPutBackRole).toBool());
    EXPECT_FALSE(at(0, HistoryRecordsModel::RestoringRole).toBool());
    EXPECT_FALSE(screen.isEmpty());
}

TEST_F(HistoryScreen, aRecordWithoutEntriesCannotBePutBack) {
    history->add("Trash", std::string(CleanupRecord::emptyTrashKey), {.removedItems = 3, .reclaimedBytes = 70});
    EXPECT_FALSE(at(0, HistoryRecordsModel::CanPutBackRole).toBool());
    screen.putBack(idAt(0));
    EXPECT_FALSE(at(0, HistoryRecordsModel::RestoringRole).toBool());
}

TEST_F(HistoryScreen, puttingBackShowsTheIndicatorAndThenTheOutcome) {
    history->add("A", "systemJunk", cleanOf({"a", "b"}));
    history->add("B", "systemJunk", cleanOf({"c"}));
    screen.putBack(idAt(1));
    EXPECT_TRUE(at(1, HistoryRecordsModel::RestoringRole).toBool());
    EXPECT_FALSE(at(0, HistoryRecordsModel::RestoringRole).toBool());
    EXPECT_TRUE(at(0, HistoryRecordsModel::CanPutBackRole).toBool());
    const QSignalSpy removed(&rows, &QAbstractItemModel::rowsRemoved);
    world.settle();
    EXPECT_EQ(screen.message().toStdString(), S::historyPutBackDone(2));
    EXPECT_EQ(rows.rowCount(), 1);
    EXPECT_EQ(removed.count(), 1);
}

TEST_F(HistoryScreen, aPartialPutBackKeepsTheRowAndTellsBothNumbersAgainAndAgain) {
    history->add("A", "systemJunk", cleanOf({"a", "b", "c"}));
    world.disk.standing.erase("/Trash/b");
    screen.putBack(idAt(0));
    world.settle();
    EXPECT_EQ(screen.message().toStdString(), S::historyPutBackPartial(2, 1));
    screen.putBack(idAt(0));
    EXPECT_EQ(screen.message(), QString());
    world.settle();
    EXPECT_EQ(screen.message().toStdString(), S::historyPutBackPartial(0, 1));
    EXPECT_EQ(rows.rowCount(), 1);
    EXPECT_TRUE(at(0, HistoryRecordsModel::CanPutBackRole).toBool());
}

TEST_F(HistoryScreen, oneRecordIsPutBackOnceAtATime) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    history->add("B", "systemJunk", cleanOf({"b"}));
    const QString a = idAt(1);
    screen.putBack(a);
    screen.putBack(idAt(0));
    EXPECT_FALSE(at(1, HistoryRecordsModel::RestoringRole).toBool());
    EXPECT_FALSE(at(1, HistoryRecordsModel::CanPutBackRole).toBool());
    screen.putBack(a);
    world.settle();
    EXPECT_EQ(world.disk.acts.size(), 2U);
    EXPECT_TRUE(screen.isEmpty());
}

TEST_F(HistoryScreen, leavingTheScreenDoesNotFreeARecordThatIsBeingPutBack) {
    Gate gate;
    world.services.restore = [this, &gate](std::span<const TrashedEntry> entries) {
        gate.pass();
        return Cleaner(world.disk).restore(entries);
    };
    history = load();
    history->add("A", "systemJunk", cleanOf({"a"}));
    history->add("B", "systemJunk", cleanOf({"b"}));
    auto left = std::make_unique<HistoryScreenModel>();
    left->setHistory(history.get());
    const QString a = left->records()->index(1).data(HistoryRecordsModel::RecordIdRole).toString();
    left->putBack(a);
    left.reset();

    HistoryScreenModel back;
    back.setHistory(history.get());
    const auto of = [&back](int row, int role) { return back.records()->index(row).data(role).toBool(); };
    EXPECT_TRUE(of(1, HistoryRecordsModel::RestoringRole));
    EXPECT_FALSE(of(1, HistoryRecordsModel::CanPutBackRole));
    EXPECT_FALSE(of(0, HistoryRecordsModel::RestoringRole));
    EXPECT_TRUE(of(0, HistoryRecordsModel::CanPutBackRole));
    back.putBack(a);
    gate.open();
    world.settle();
    EXPECT_EQ(world.disk.acts.size(), 1U);
    ASSERT_EQ(back.records()->rowCount(), 1);
    EXPECT_FALSE(of(0, HistoryRecordsModel::RestoringRole));
    EXPECT_EQ(back.message(), QString());
}

TEST_F(HistoryScreen, whatStaysPendingCanBePutBackFromANewScreenOnceTheFirstRunHasEnded) {
    history->add("A", "systemJunk", cleanOf({"a", "b"}));
    world.disk.standing.erase("/Trash/b");
    const QString id = idAt(0);
    screen.putBack(id);
    HistoryScreenModel back;
    back.setHistory(history.get());
    const QSignalSpy changes(back.records(), &QAbstractItemModel::dataChanged);
    world.settle();
    EXPECT_GT(changes.count(), 0);
    EXPECT_TRUE(back.records()->index(0).data(HistoryRecordsModel::CanPutBackRole).toBool());
    EXPECT_FALSE(back.records()->index(0).data(HistoryRecordsModel::RestoringRole).toBool());
    back.putBack(id);
    world.settle();
    EXPECT_EQ(back.message().toStdString(), S::historyPutBackPartial(0, 1));
}

TEST_F(HistoryScreen, clearingAsksWithTheCountOfRecords) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    history->add("B", "systemJunk", cleanOf({"b"}));
    screen.askToClear();
    EXPECT_TRUE(screen.confirmingClear());
    EXPECT_EQ(screen.clearMessage().toStdString(), S::historyClearConfirmMessage(2));
    screen.dismissClear();
    EXPECT_EQ(rows.rowCount(), 2);
    screen.askToClear();
    screen.clear();
    EXPECT_FALSE(screen.confirmingClear());
    EXPECT_TRUE(screen.isEmpty());
    EXPECT_EQ(rows.rowCount(), 0);
}

TEST_F(HistoryScreen, aNewCleanIsInsertedAboveTheOthers) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    const QSignalSpy inserted(&rows, &QAbstractItemModel::rowsInserted);
    const QSignalSpy resets(&rows, &QAbstractItemModel::modelReset);
    history->add("B", "duplicates", cleanOf({"b"}));
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted.at(0).at(1).toInt(), 0);
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(text(0, HistoryRecordsModel::TitleRole), title(ModuleKind::duplicates));
}

TEST_F(HistoryScreen, aFileWithOneIdTwiceIsFollowedAllTheSame) {
    history->add("A", "systemJunk", cleanOf({"a"}));
    std::string text = contentsOf(history->fileURL());
    const std::string record = text.substr(text.find('{'), text.rfind('}') - text.find('{') + 1);
    std::ofstream(history->fileURL().path()) << "[" << record << "," << record << "]";
    const auto twice = load();
    HistoryScreenModel other;
    other.setHistory(twice.get());
    const QAbstractItemModelTester otherTester(other.records(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    ASSERT_EQ(other.records()->rowCount(), 2);
    other.putBack(other.records()->index(0).data(HistoryRecordsModel::RecordIdRole).toString());
    world.settle();
    EXPECT_EQ(other.records()->rowCount(), 0);
}

TEST_F(HistoryScreen, aTitleFromTheFileIsSafeInItsRow) {
    history->add("two\nlines\xE2\x80\xAE", std::nullopt, cleanOf({"a"}));
    EXPECT_EQ(text(0, HistoryRecordsModel::TitleRole), "two\uFFFDlines\uFFFD");
}

// The end of the program.

TEST(AppModelEnd, whatAStoppedCleanHasMovedIsWrittenDown) {
    KitWorld world;
    const HistoryWorld folders;
    world.finds({ticked(finding("moved", 5)), ticked(finding("spared", 5))});
    world.services.clean = [&world](std::span<const CleanableItem> items, const ProgressCallback& progress,
                                    const CancellationCallback& isCancelled, const TrashedCallback& onTrashed) {
        CleanResult result = Cleaner(world.disk).clean(items.first(1), progress, neverCancelled, onTrashed);
        while (!isCancelled())
            std::this_thread::yield();
        return result;
    };
    auto app = std::make_unique<AppModel>(world.services);
    ModuleViewModel& flow = app->store()->viewModel(ModuleKind::systemJunk);
    flow.startScan();
    world.settle();
    const URL file = app->history()->fileURL();
    flow.clean();
    EXPECT_TRUE(app->stopWork(std::chrono::milliseconds(1)));
    EXPECT_EQ(flow.phase(), ModuleViewModel::Phase::done);
    EXPECT_NE(contentsOf(file).find("moved"), std::string::npos);
    EXPECT_EQ(contentsOf(file).find("spared"), std::string::npos);
}

// As a start finds it whose forerunner was killed in the middle of a clean.
TEST_F(History, whatACleanHasMovedIsKnownBeforeItsEnd) {
    Gate gate;
    world.finds({ticked(finding("first", 5)), ticked(finding("second", 7))});
    world.disk.standing = {"/home/me/first", "/home/me/second"};
    world.services.clean = [this, &gate](std::span<const CleanableItem> items, const ProgressCallback& progress,
                                         const CancellationCallback& isCancelled, const TrashedCallback& onTrashed) {
        CleanResult result = Cleaner(world.disk).clean(items, progress, isCancelled, onTrashed);
        gate.pass();
        return result;
    };
    ModuleViewModel flow(ModuleKind::systemJunk, world.services);
    flow.setHistory(history.get());
    flow.startScan();
    world.settle();
    flow.clean();
    const auto hasJournal = [this] {
        const std::vector<UnfinishedClean> found = unfinishedCleans(folders.folder / "Tavrin Clean");
        return found.size() == 1 && found[0].record && found[0].record->entries.size() == 2;
    };
    world.waitUntil(hasJournal);
    EXPECT_EQ(history->count(), 0);
    gate.open();
    world.settle();
    ASSERT_EQ(history->count(), 1);
    EXPECT_EQ(history->records().front().itemCount, 2);
    EXPECT_EQ(onDisk(), history->records());
    EXPECT_TRUE(unfinishedCleans(folders.folder / "Tavrin Clean").empty());
}

TEST(AppModelEnd, whatIsBeingPutBackIsWaitedForAndSettled) {
    KitWorld world;
    const HistoryWorld folders;
    Gate gate;
    world.services.restore = [&gate](std::span<const TrashedEntry> entries) {
        gate.pass();
        return RestoreResult{.restored = std::ssize(entries)};
    };
    AppModel app(world.services);
    HistoryModel& history = *app.history();
    const TrashedEntry moved{.original = URL::fromPath("/home/me/a"), .trashed = URL::fromPath("/Trash/a")};
    history.add("A", "systemJunk", {.removedItems = 1, .reclaimedBytes = 5, .restorable = {moved}});
    history.restore(history.records().front(), &app, {});
    // Delivered when the patience is spent: what goes on waiting is the end of the program.
    world.services.background->toMain(&app, [&gate] { gate.open(); });
    EXPECT_TRUE(app.stopWork(std::chrono::milliseconds(1)));
    EXPECT_EQ(contentsOf(history.fileURL()), "[]");
}

TEST(AppModelEnd, aScanThatDoesNotAnswerIsNotWaitedFor) {
    KitWorld world;
    const HistoryWorld folders;
    Gate gate;
    world.scans.push_back([&gate](const auto&, const auto&) {
        gate.pass();
        return std::vector<CleanableItem>{};
    });
    AppModel app(world.services);
    app.store()->viewModel(ModuleKind::systemJunk).startScan();
    EXPECT_FALSE(app.stopWork(std::chrono::milliseconds(1)));
    gate.open();
    EXPECT_TRUE(app.stopWork(std::chrono::minutes(1)));
}

TEST(AppModelStart, leaveForBannersIsAskedOnce) {
    KitWorld world;
    const HistoryWorld folders;
    AppModel app(world.services);
    app.mainInterfaceAppeared();
    app.mainInterfaceAppeared();
    EXPECT_EQ(world.notificationsRequested, 1);
    EXPECT_EQ(app.cleanupModules()->rowCount() + app.spaceModules()->rowCount(), 15);
}

}  // namespace
}  // namespace tavrin::test
