#include "KitWorld.h"
#include "TavrinClean/Kit/ModuleScreenModel.h"
#include "TavrinClean/Kit/ModuleScreenTexts.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <cerrno>
#include <stdexcept>

namespace tavrin::test {
namespace {

struct Screen : testing::Test {
    KitWorld world;
    ModuleStore store{world.services, nullptr};
    std::unique_ptr<ModuleScreenModel> screen;

    void open(ModuleKind kind) {
        screen = std::make_unique<ModuleScreenModel>();
        screen->setModuleKey(QString::fromUtf8(rawValue(kind).data()));
        screen->setStore(&store);
    }
    void scanned(ModuleKind kind, const std::vector<CleanableItem>& items) {
        world.finds(items);
        open(kind);
        screen->startScan();
        world.settle();
    }
    void cleaned() {
        screen->askToClean();
        world.settle();
        screen->clean();
        world.settle();
    }
    [[nodiscard]] static std::string text(const QString& text) { return text.toStdString(); }
};

TEST_F(Screen, isEmptyUntilItKnowsItsModule) {
    ModuleScreenModel empty;
    EXPECT_EQ(empty.rows(), nullptr);
    EXPECT_EQ(empty.phase(), ModuleScreenModel::Idle);
    EXPECT_EQ(empty.title(), QString());
    EXPECT_FALSE(empty.canClean());
    empty.setStore(&store);
    empty.setModuleKey(QStringLiteral("systemjunk"));
    empty.startScan();
    empty.askToClean();
    EXPECT_EQ(empty.title(), QString());
    EXPECT_EQ(empty.phase(), ModuleScreenModel::Idle);
}

TEST_F(Screen, aPhaseFollowsTheFlow) {
    open(ModuleKind::systemJunk);
    EXPECT_EQ(text(screen->title()), title(ModuleKind::systemJunk));
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Idle);
    Gate gate;
    world.scans.push_back([&gate](const auto&, const auto&) {
        gate.pass();
        return std::vector<CleanableItem>{};
    });
    screen->startScan();
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Scanning);
    EXPECT_TRUE(screen->busy());
    EXPECT_EQ(text(screen->progressText()), S::moduleStarting());
    EXPECT_LT(screen->fraction(), 0);
    gate.open();
    world.settle();
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Results);
    EXPECT_TRUE(screen->nothingFound());
    EXPECT_FALSE(screen->showsFooter());
}

TEST_F(Screen, progressIsToldInSafeLines) {
    world.scans.push_back([](const ProgressCallback& progress, const auto&) -> std::vector<CleanableItem> {
        progress({.phase = "look", .itemsFound = 1, .currentPath = "/a\nb\xFF", .fractionCompleted = 0.5});
        throw ScanError::cancelled();
    });
    open(ModuleKind::systemJunk);
    EXPECT_EQ(screen->progressFound(), QString());
    screen->startScan();
    world.settle();
    EXPECT_EQ(text(screen->progressPath()), "/a\uFFFDb\uFFFD");
    EXPECT_EQ(text(screen->progressFound()), S::moduleItemsFound(1));
    EXPECT_EQ(screen->fraction(), 0.5);
}

TEST_F(Screen, foldersThatCouldNotBeReadAreToldOnlyWithResults) {
    world.scans.push_back([](const ProgressCallback& progress, const auto&) {
        progress({.phase = "end", .fractionCompleted = 1.0, .blockedFolders = 2});
        return std::vector{ticked(finding("a", 1))};
    });
    open(ModuleKind::systemJunk);
    screen->startScan();
    world.settle();
    EXPECT_EQ(text(screen->warning()), S::moduleScanPartial(2));
    cleaned();
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Done);
    EXPECT_EQ(screen->warning(), QString());
}

TEST_F(Screen, modulesHaveTheirNotes) {
    EXPECT_EQ(moduleNote(ModuleKind::uninstaller), S::moduleNoteUninstaller());
    EXPECT_EQ(moduleNote(ModuleKind::appLanguages), S::moduleNoteAppLanguages());
    EXPECT_EQ(moduleNote(ModuleKind::mailAttachments), S::moduleNoteMail());
    EXPECT_EQ(moduleNote(ModuleKind::screenshots), S::moduleNoteYourFiles());
    EXPECT_EQ(moduleNote(ModuleKind::downloadsJunk), S::moduleNoteYourFiles());
    int without = 0;
    for (const ModuleKind kind : allModuleKinds)
        without += moduleNote(kind).empty() ? 1 : 0;
    EXPECT_EQ(without, 10);
}

TEST_F(Screen, theCountSpeaksOfAllWhateverTheSearchShows) {
    scanned(ModuleKind::systemJunk, {finding("a", 1), finding("b", 1)});
    screen->setSearchText(QStringLiteral("zzz"));
    world.settle();
    EXPECT_EQ(text(screen->itemCountText()), S::countItems(2));
    EXPECT_TRUE(screen->nothingMatches());
    EXPECT_EQ(screen->rows()->rowCount(), 0);
    screen->setSearchText(QStringLiteral("  "));
    EXPECT_FALSE(screen->nothingMatches());
    EXPECT_EQ(screen->rows()->rowCount(), 3);
}

TEST_F(Screen, whatASearchShowsStandsWhenItIsTold) {
    scanned(ModuleKind::systemJunk, {finding("a", 1), finding("b", 1)});
    std::vector<std::pair<int, bool>> told;
    QObject::connect(screen.get(), &ModuleScreenModel::shownChanged, screen.get(),
                     [&] { told.emplace_back(screen->rows()->rowCount(), screen->nothingMatches()); });
    screen->setSearchText(QStringLiteral("zzz"));
    world.settle();
    screen->setSearchText(QString());
    EXPECT_EQ(told, (std::vector<std::pair<int, bool>>{{0, true}, {3, false}}));
}

TEST_F(Screen, aRescanUnderASearchNeverSaysThatNothingMatches) {
    scanned(ModuleKind::systemJunk, {finding("a", 1)});
    screen->setSearchText(QStringLiteral("a"));
    world.settle();
    bool said = false;
    QObject::connect(screen.get(), &ModuleScreenModel::shownChanged, screen.get(),
                     [&] { said = said || screen->nothingMatches(); });
    screen->startScan();
    world.settle();
    EXPECT_EQ(screen->rows()->rowCount(), 2);
    EXPECT_FALSE(said);
}

TEST_F(Screen, ofManyKeysOnlyTheLastSearchIsShown) {
    scanned(ModuleKind::systemJunk, {finding("abc", 1), finding("abd", 1)});
    const QSignalSpy resets(screen->rows(), &QAbstractItemModel::modelReset);
    for (const char* typed : {"a", "ab", "abc"})
        screen->setSearchText(QString::fromLatin1(typed));
    world.settle();
    EXPECT_EQ(screen->rows()->rowCount(), 2);
    EXPECT_EQ(resets.count(), 1);
}

TEST_F(Screen, aNewScreenBeginsWithoutASearchAndWithTheSameFindings) {
    scanned(ModuleKind::systemJunk, {finding("a", 1), ticked(finding("b", 1))});
    screen->setSearchText(QStringLiteral("a"));
    screen->toggleCollapsed(QStringLiteral("userCache"));
    world.settle();
    open(ModuleKind::systemJunk);
    EXPECT_EQ(screen->searchText(), QString());
    EXPECT_EQ(screen->rows()->rowCount(), 3);
    EXPECT_EQ(screen->selectedCount(), 1);
}

TEST_F(Screen, theOrdersOfTheModuleArePickedByTheirPlace) {
    scanned(ModuleKind::systemJunk, {finding("a", 1)});
    EXPECT_EQ(screen->sortLabels(), (QStringList{QString::fromStdString(S::moduleSortSizeDesc()),
                                                 QString::fromStdString(S::moduleSortSizeAsc()),
                                                 QString::fromStdString(S::moduleSortName())}));
    EXPECT_EQ(screen->sortIndex(), 0);
    screen->setSortIndex(2);
    EXPECT_EQ(screen->sortIndex(), 2);
    EXPECT_EQ(store.viewModel(ModuleKind::systemJunk).sortOrder(), SortOrder::name);
    screen->setSortIndex(3);
    screen->setSortIndex(-1);
    EXPECT_EQ(screen->sortIndex(), 2);
}

TEST_F(Screen, theFooterTellsWhatIsTicked) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5'000)), finding("b", 7'000)});
    EXPECT_TRUE(screen->showsFooter());
    EXPECT_EQ(text(screen->selectedCountText()), S::moduleSelectedCount(1));
    EXPECT_EQ(text(screen->selectedSizeText()), ByteFormatter::string(5'000));
    screen->selectNone();
    EXPECT_FALSE(screen->canClean());
    screen->selectAll();
    EXPECT_EQ(text(screen->selectedSizeText()), ByteFormatter::string(12'000));
}

TEST_F(Screen, selectingAllReachesWhatTheSearchHides) {
    scanned(ModuleKind::systemJunk, {finding("a", 1), finding("b", 1)});
    screen->setSearchText(QStringLiteral("a"));
    world.settle();
    screen->selectAll();
    EXPECT_EQ(screen->selectedCount(), 2);
}

TEST_F(Screen, theQuestionCountsPathsAndItsAnswerCleans) {
    CleanableItem item = ticked(finding("a", 5'000));
    item.relatedURLs = {URL::fromPath("/home/me/b")};
    scanned(ModuleKind::systemJunk, {item});
    screen->askToClean();
    EXPECT_TRUE(screen->confirming());
    EXPECT_EQ(text(screen->confirmMessage()), S::moduleConfirmMove(2, ByteFormatter::string(5'000)));
    EXPECT_TRUE(world.cleaned.empty());
    screen->clean();
    EXPECT_FALSE(screen->confirming());
    world.settle();
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Done);
}

TEST_F(Screen, theQuestionCanBeDismissed) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5))});
    screen->askToClean();
    screen->dismissClean();
    EXPECT_FALSE(screen->confirming());
    world.settle();
    EXPECT_TRUE(world.cleaned.empty());
}

TEST_F(Screen, theQuestionIsWithdrawnWhenOtherFindingsAreTickedThanItTellsOf) {
    const CleanableItem item = finding("a", 5'000);
    scanned(ModuleKind::systemJunk, {ticked(item), ticked(finding("b", 5'000))});
    screen->askToClean();
    ASSERT_TRUE(screen->confirming());
    screen->toggle(QString::fromStdString(item.id.uuidString()));
    EXPECT_FALSE(screen->confirming());
    screen->askToClean();
    EXPECT_EQ(text(screen->confirmMessage()), S::moduleConfirmMove(1, ByteFormatter::string(5'000)));
    screen->selectAll();
    EXPECT_FALSE(screen->confirming());
}

TEST_F(Screen, withNothingTickedNoQuestionIsPut) {
    scanned(ModuleKind::systemJunk, {finding("a", 5)});
    screen->askToClean();
    world.settle();
    EXPECT_FALSE(screen->confirming());
}

TEST_F(Screen, mailIsAskedAboutWithItsWarning) {
    EXPECT_EQ(confirmMessage(ModuleKind::mailAttachments, 1, 5'000, 0),
              S::moduleConfirmMove(1, ByteFormatter::string(5'000)) + S::moduleConfirmMailWarning());
    EXPECT_EQ(confirmMessage(ModuleKind::uninstaller, 2, 5'000, 1),
              S::moduleConfirmMove(2, ByteFormatter::string(5'000)) + S::moduleConfirmRunningApps(1));
}

TEST_F(Screen, runningAppsAmongTheTickedAreCounted) {
    const TestFolder disk;
    const auto app = [&disk](const std::string& name, const std::string& id) {
        (void)disk.file(name + "/Contents/Info.plist", infoPlist(id));
        return finding((disk / name).path(), 5'000, ScanCategory::application);
    };
    world.running = {"com.foo", "com.bar", "com.baz"};
    const CleanableItem foo = app("Foo.app", "com.Foo");
    const CleanableItem bar = app("Bar.app", "com.bar");
    scanned(ModuleKind::uninstaller, {foo, bar, app("Baz.app", "com.baz"), app("Quiet.app", "com.quiet")});
    for (const CleanableItem& item : {foo, bar})
        screen->toggle(QString::fromStdString(item.id.uuidString()));
    screen->askToClean();
    world.settle();
    ASSERT_TRUE(screen->confirming());
    EXPECT_EQ(text(screen->confirmMessage()), confirmMessage(ModuleKind::uninstaller, 2, 10'000, 2));
}

TEST_F(Screen, afterACleanTheSummaryIsToldAndMailHasItsOwn) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5))});
    cleaned();
    EXPECT_FALSE(screen->doneWithFailures());
    EXPECT_EQ(text(screen->doneSummary()), S::smartDoneSummary(ByteFormatter::string(0), 1));
    EXPECT_EQ(doneSummary(ModuleKind::mailAttachments, 2, 3'000), S::moduleDoneMail(ByteFormatter::string(3'000), 2));
}

TEST_F(Screen, failuresAreListedAndWithoutAByteReclaimedThereIsNoSummary) {
    world.disk.refusals["/home/me/a\nb"] = EACCES;
    scanned(ModuleKind::systemJunk, {ticked(finding("a\nb", 5)), ticked(finding("c", 5))});
    cleaned();
    EXPECT_TRUE(screen->doneWithFailures());
    EXPECT_FALSE(screen->doneReclaimed());
    EXPECT_EQ(screen->doneSummary(), QString());
    EXPECT_EQ(text(screen->failuresTitle()), S::cleanFailuresTitle(1));
    const FailuresModel& failures = *screen->failures();
    ASSERT_EQ(failures.rowCount(), 1);
    EXPECT_EQ(text(failures.index(0).data(FailuresModel::NameRole).toString()), "a\uFFFDb");
    EXPECT_EQ(text(failures.index(0).data(FailuresModel::ReasonRole).toString()), S::systemRefusal(EACCES));
}

TEST_F(Screen, aFailedScanTellsItsError) {
    world.scans.push_back(
        [](const auto&, const auto&) -> std::vector<CleanableItem> { throw std::runtime_error("no luck"); });
    open(ModuleKind::systemJunk);
    screen->startScan();
    world.settle();
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Failed);
    EXPECT_EQ(text(screen->errorText()), S::moduleError("no luck"));
}

TEST_F(Screen, deniedAccessOffersTheSettings) {
    world.scans.push_back(
        [](const auto&, const auto&) -> std::vector<CleanableItem> { throw ScanError::accessDenied(URL()); });
    open(ModuleKind::mailAttachments);
    screen->startScan();
    world.settle();
    EXPECT_EQ(screen->phase(), ModuleScreenModel::NeedsAccess);
    screen->openAccessSettings();
    EXPECT_EQ(world.accessSettingsOpened, 1);
}

TEST_F(Screen, aFileIsShownByItsURLWhateverItsBytes) {
    scanned(ModuleKind::systemJunk, {finding("a\xFF", 5)});
    screen->showInFinder(screen->rows()->index(1).data(UrlRole).toString());
    screen->showInFinder(QStringLiteral("not a url"));
    ASSERT_EQ(world.shownInFileBrowser.size(), 1U);
    EXPECT_EQ(world.shownInFileBrowser.front().path(), "/home/me/a\xFF");
}

TEST_F(Screen, whatRunsIsAskedWhenItAppearsAndWhenTheFindingsChange) {
    open(ModuleKind::systemJunk);
    world.settle();
    EXPECT_EQ(world.timesAskedWhatRuns, 1);
    world.finds({finding("a", 1)});
    screen->startScan();
    world.settle();
    // The scan asks for itself, and the screen for the list that was emptied and the one that came.
    EXPECT_EQ(world.timesAskedWhatRuns, 4);
}

TEST_F(Screen, leavingItStopsNothing) {
    Gate gate;
    world.scans.push_back([&gate](const auto&, const CancellationCallback& isCancelled) {
        gate.pass();
        if (isCancelled()) throw ScanError::cancelled();
        return std::vector{finding("a", 1)};
    });
    open(ModuleKind::systemJunk);
    screen->startScan();
    screen.reset();
    gate.open();
    world.settle();
    open(ModuleKind::systemJunk);
    EXPECT_EQ(screen->phase(), ModuleScreenModel::Results);
    EXPECT_EQ(screen->itemCount(), 1);
}

}  // namespace
}  // namespace tavrin::test
