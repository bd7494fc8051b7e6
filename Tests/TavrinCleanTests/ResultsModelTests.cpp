#include "KitWorld.h"
#include "Support/LockedFolder.h"
#include "Support/OrdinaryUser.h"
#include "TavrinClean/Kit/ModuleScreenModel.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinClean/Kit/ResultsModel.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <filesystem>

namespace tavrin::test {
namespace {

struct ResultsList : testing::Test {
    KitWorld world;
    ModuleStore store{world.services, nullptr};
    std::unique_ptr<ModuleScreenModel> screen;
    std::unique_ptr<QAbstractItemModelTester> tester;
    ResultsModel* rows = nullptr;

    void scanned(ModuleKind kind, const std::vector<CleanableItem>& items) {
        world.finds(items);
        screen = std::make_unique<ModuleScreenModel>();
        screen->setStore(&store);
        screen->setModuleKey(QString::fromUtf8(rawValue(kind).data()));
        rows = screen->rows();
        if (rows != nullptr) {
            tester =
                std::make_unique<QAbstractItemModelTester>(rows, QAbstractItemModelTester::FailureReportingMode::Fatal);
        }
        screen->startScan();
        world.settle();
    }
    ~ResultsList() override {
        tester.reset();
        screen.reset();
    }
    [[nodiscard]] QVariant at(int row, int role) const { return rows->index(row).data(role); }
    [[nodiscard]] std::string text(int row, int role) const { return at(row, role).toString().toStdString(); }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (int row = 0; row < rows->rowCount(); ++row)
            result.push_back(text(row, NameRole));
        return result;
    }
    [[nodiscard]] QString itemAt(int row) const { return at(row, ItemIdRole).toString(); }
};

using Names = std::vector<std::string>;

TEST_F(ResultsList, headersStandAboveTheirFindings) {
    scanned(ModuleKind::systemJunk,
            {finding("a", 5'000), finding("b", 7'000), finding("l", 1'000, ScanCategory::logs)});
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "b", "a", S::categoryLogs(), "l"}));
    EXPECT_EQ(at(0, KindRole).toInt(), ResultsModel::Group);
    EXPECT_EQ(at(1, KindRole).toInt(), ResultsModel::Item);
    EXPECT_EQ(text(0, GroupIdRole), "userCache");
    EXPECT_EQ(text(1, GroupIdRole), "userCache");
    EXPECT_EQ(text(0, SizeTextRole), "12 KB");
    EXPECT_EQ(text(1, UrlRole), "file:///home/me/b");
    EXPECT_EQ(at(0, ItemCountRole).toInt(), 2);
}

TEST_F(ResultsList, everyRowHasAValueOfEveryRolesType) {
    const TestFolder disk;
    (void)disk.file("folder/file");
    scanned(ModuleKind::systemJunk, {finding((disk / "folder").path() + "/", 5)});
    screen->toggleExpanded(itemAt(1));
    world.settle();
    ASSERT_EQ(rows->rowCount(), 3);
    const auto roles = rows->roleNames();
    for (auto role = roles.begin(); role != roles.end(); ++role) {
        if (role.key() == ItemsRole) continue;
        for (int row = 0; row < 3; ++row)
            EXPECT_EQ(at(row, role.key()).typeId() == QMetaType::QString,
                      at(0, role.key()).typeId() == QMetaType::QString)
                << role.value().toStdString() << " of row " << row;
        EXPECT_TRUE(at(0, role.key()).isValid() && at(2, role.key()).isValid()) << role.value().toStdString();
    }
}

TEST_F(ResultsList, aTickChangesItsRowAndItsHeader) {
    scanned(ModuleKind::systemJunk, {finding("a", 5), finding("b", 7)});
    EXPECT_EQ(at(0, CheckStateRole).toInt(), Qt::Unchecked);
    const QSignalSpy changes(rows, &QAbstractItemModel::dataChanged);
    screen->toggle(itemAt(2));
    EXPECT_TRUE(at(2, SelectedRole).toBool());
    EXPECT_EQ(at(0, CheckStateRole).toInt(), Qt::PartiallyChecked);
    EXPECT_EQ(at(0, SelectedCountRole).toInt(), 1);
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 2);
    EXPECT_EQ(changes.at(1).at(0).toModelIndex().row(), 0);
    screen->toggle(itemAt(1));
    EXPECT_EQ(at(0, CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(ResultsList, tickingAllIsOneChangeOfAllRows) {
    std::vector<CleanableItem> many;
    for (int i = 0; i < 500; ++i)
        many.push_back(finding("f" + std::to_string(i), i));
    scanned(ModuleKind::systemJunk, many);
    const QSignalSpy changes(rows, &QAbstractItemModel::dataChanged);
    screen->selectAll();
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.at(0).at(0).toModelIndex().row(), 0);
    EXPECT_EQ(changes.at(0).at(1).toModelIndex().row(), 500);
    EXPECT_EQ(at(0, CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(ResultsList, aHeaderTicksItsGroupAndUnticksItWhenAllOfItIs) {
    scanned(ModuleKind::systemJunk, {ticked(finding("a", 5)), finding("b", 7), finding("l", 1, ScanCategory::logs)});
    const QString group = at(0, GroupIdRole).toString();
    screen->toggleGroup(group);
    EXPECT_EQ(screen->selectedCount(), 2);
    screen->toggleGroup(group);
    EXPECT_EQ(screen->selectedCount(), 0);
}

TEST_F(ResultsList, aGroupWithAKeeperNeverBecomesWholeByItsHeader) {
    scanned(ModuleKind::duplicates, {grouped(keeper(finding("a", 1)), "g"), grouped(finding("b", 1), "g")});
    const QString group = at(0, GroupIdRole).toString();
    screen->toggleGroup(group);
    EXPECT_EQ(at(0, CheckStateRole).toInt(), Qt::PartiallyChecked);
    EXPECT_TRUE(at(1, KeeperRole).toBool());
    screen->toggleGroup(group);
    EXPECT_EQ(screen->selectedCount(), 1);
}

TEST_F(ResultsList, underASearchAHeaderSpeaksOfWhatIsShownAndActsOnAll) {
    scanned(ModuleKind::systemJunk, {finding("match1", 5), finding("match2", 7), finding("other", 9)});
    screen->setSearchText(QStringLiteral("match"));
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "match2", "match1"}));
    EXPECT_EQ(at(0, ItemCountRole).toInt(), 2);
    screen->toggle(itemAt(1));
    screen->toggle(itemAt(2));
    EXPECT_EQ(at(0, CheckStateRole).toInt(), Qt::Checked);
    screen->toggleGroup(at(0, GroupIdRole).toString());
    EXPECT_EQ(screen->selectedCount(), 0);
    screen->toggleGroup(at(0, GroupIdRole).toString());
    EXPECT_EQ(screen->selectedCount(), 3);
}

TEST_F(ResultsList, closingAGroupTakesItsRowsAndOpeningBringsThemBack) {
    scanned(ModuleKind::systemJunk, {finding("a", 5), finding("b", 7), finding("l", 1, ScanCategory::logs)});
    const QSignalSpy removed(rows, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy inserted(rows, &QAbstractItemModel::rowsInserted);
    const QString group = at(0, GroupIdRole).toString();
    screen->toggleCollapsed(group);
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), S::categoryLogs(), "l"}));
    EXPECT_TRUE(at(0, CollapsedRole).toBool());
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed.at(0).at(1).toInt(), 1);
    EXPECT_EQ(removed.at(0).at(2).toInt(), 2);
    screen->toggleCollapsed(group);
    EXPECT_EQ(rows->rowCount(), 5);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_FALSE(at(0, CollapsedRole).toBool());
}

TEST_F(ResultsList, aClosedGroupStaysClosedInAnotherOrderAndUnderASearch) {
    scanned(ModuleKind::systemJunk, {finding("a", 5), finding("b", 7), finding("l", 1, ScanCategory::logs)});
    screen->toggleCollapsed(at(0, GroupIdRole).toString());
    screen->setSortIndex(1);
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), S::categoryLogs(), "l"}));
    screen->setSearchText(QStringLiteral("a"));
    world.settle();
    EXPECT_EQ(names(), Names{S::categoryUserCache()});
    screen->setSearchText(QString());
    world.settle();
    EXPECT_EQ(rows->rowCount(), 3);
}

TEST_F(ResultsList, anotherOrderIsAChangeOfLayoutInWhichRowsAreFollowed) {
    scanned(ModuleKind::systemJunk, {finding("a", 5), finding("b", 7), finding("l", 1, ScanCategory::logs)});
    const QSignalSpy resets(rows, &QAbstractItemModel::modelReset);
    const QSignalSpy layouts(rows, &QAbstractItemModel::layoutChanged);
    const QPersistentModelIndex held = rows->index(1);
    const QString rowId = held.data(RowIdRole).toString();
    screen->setSortIndex(1);
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "a", "b", S::categoryLogs(), "l"}));
    EXPECT_EQ(held.row(), 2);
    EXPECT_EQ(rows->rowOf(rowId), 2);
    EXPECT_EQ(layouts.count(), 1);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(ResultsList, rowsAreFoundByTheirId) {
    const TestFolder disk;
    (void)disk.file("folder/file");
    scanned(ModuleKind::systemJunk, {finding((disk / "folder").path() + "/", 5), finding("a", 1)});
    screen->toggleExpanded(itemAt(1));
    world.settle();
    for (int row = 0; row < rows->rowCount(); ++row)
        EXPECT_EQ(rows->rowOf(at(row, RowIdRole).toString()), row);
    EXPECT_EQ(rows->rowOf(QStringLiteral("group nothing")), -1);
    EXPECT_EQ(rows->rowOf(QString()), -1);
    const QString hidden = at(1, RowIdRole).toString();
    screen->toggleCollapsed(at(0, GroupIdRole).toString());
    EXPECT_EQ(rows->rowOf(hidden), -1);
}

TEST_F(ResultsList, anOpenedFolderShowsWhatLiesInItTheLargestFirst) {
    const TestFolder disk;
    (void)disk.fileOfSize("folder/small", 5'000);
    (void)disk.fileOfSize("folder/large", 90'000);
    (void)disk.file("folder/sub/file");
    (void)disk.file("folder/.hidden");
    scanned(ModuleKind::systemJunk, {finding((disk / "folder").path(), 5)});
    (void)at(1, ExpandableRole);
    world.settle();
    ASSERT_TRUE(at(1, ExpandableRole).toBool());
    screen->toggleExpanded(itemAt(1));
    EXPECT_TRUE(at(1, ExpandedRole).toBool());
    EXPECT_EQ(at(2, KindRole).toInt(), ResultsModel::Note);
    EXPECT_EQ(text(2, NameRole), S::moduleReadingContents());
    world.settle();
    ASSERT_EQ(rows->rowCount(), 5);
    EXPECT_EQ(text(2, NameRole), "large");
    EXPECT_EQ(at(2, KindRole).toInt(), ResultsModel::Child);
    EXPECT_FALSE(at(2, IsDirectoryRole).toBool());
    screen->toggleExpanded(itemAt(1));
    EXPECT_EQ(rows->rowCount(), 2);
    screen->toggleExpanded(itemAt(1));
    EXPECT_EQ(rows->rowCount(), 5);
}

TEST_F(ResultsList, fiftyEntriesAreShownAndTheRestIsCounted) {
    const TestFolder disk;
    for (int i = 0; i < 51; ++i)
        (void)disk.file("more/" + std::to_string(i));
    for (int i = 0; i < 50; ++i)
        (void)disk.file("fifty/" + std::to_string(i));
    scanned(ModuleKind::systemJunk,
            {finding((disk / "more").path() + "/", 5), finding((disk / "fifty").path() + "/", 4)});
    screen->toggleExpanded(itemAt(2));
    world.settle();
    EXPECT_EQ(rows->rowCount(), 3 + 50);
    EXPECT_EQ(at(52, KindRole).toInt(), ResultsModel::Child);
    screen->toggleExpanded(itemAt(1));
    world.settle();
    EXPECT_EQ(rows->rowCount(), 3 + 50 + 51);
    EXPECT_EQ(at(52, KindRole).toInt(), ResultsModel::Note);
    EXPECT_EQ(text(52, NameRole), S::moduleMoreItems(1));
}

TEST_F(ResultsList, aFolderThatIsEmptyOrLockedOrGoneSaysThatItIsEmpty) {
    // The threads of the background begin with the rights of this one.
    const OrdinaryUser ordinary;
    const TestFolder disk;
    (void)disk.folder("empty");
    (void)disk.folder("locked/inside");
    (void)disk.folder("gone/inside");
    const LockedFolder locked(disk / "locked");
    scanned(ModuleKind::systemJunk, {finding((disk / "empty").path(), 7), finding((disk / "locked").path(), 6),
                                     finding((disk / "gone").path(), 5)});
    for (int row = 1; row <= 3; ++row)
        (void)at(row, ExpandableRole);
    world.settle();
    std::filesystem::remove_all((disk / "gone").path());
    for (int row = 1; row <= 5; row += 2) {
        screen->toggleExpanded(itemAt(row));
        world.settle();
        EXPECT_EQ(text(row + 1, NameRole), S::moduleEmptyFolder()) << text(row, NameRole);
        EXPECT_EQ(at(row + 1, KindRole).toInt(), ResultsModel::Note);
    }
    EXPECT_EQ(rows->rowCount(), 7);
}

TEST_F(ResultsList, whatGoesWithAFindingIsShownInPlaceOfItsContent) {
    const TestFolder disk;
    (void)disk.fileOfSize("Foo.app/binary", 9'000);
    CleanableItem app = finding((disk / "Foo.app").path() + "/", 5, ScanCategory::application);
    app.relatedURLs = {disk.fileOfSize("leftover", 90'000)};
    scanned(ModuleKind::uninstaller, {app});
    screen->toggleExpanded(itemAt(1));
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryApplication(), "Foo.app", "leftover", "Foo.app"}));
    EXPECT_TRUE(at(3, IsDirectoryRole).toBool());
}

TEST_F(ResultsList, aFileCannotBeOpened) {
    const TestFolder disk;
    scanned(ModuleKind::systemJunk, {finding(disk.file("file").path(), 5)});
    (void)at(1, ExpandableRole);
    world.settle();
    EXPECT_FALSE(at(1, ExpandableRole).toBool());
    screen->toggleExpanded(itemAt(1));
    EXPECT_EQ(rows->rowCount(), 2);
}

TEST_F(ResultsList, opensRowsStayOpenInAnotherOrder) {
    const TestFolder disk;
    (void)disk.file("folder/one");
    scanned(ModuleKind::systemJunk, {finding((disk / "folder").path() + "/", 5), finding("z", 9)});
    screen->toggleExpanded(itemAt(2));
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "z", "folder", "one"}));
    screen->setSortIndex(1);
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "folder", "one", "z"}));
}

TEST_F(ResultsList, aVanishedFindingKeepsItsRow) {
    scanned(ModuleKind::downloadsJunk, {finding("/nowhere/at/all.dmg", 5)});
    (void)at(1, ExpandableRole);
    world.settle();
    EXPECT_EQ(text(1, NameRole), "all.dmg");
    EXPECT_FALSE(at(1, ExpandableRole).toBool());
    EXPECT_EQ(text(1, DateTextRole), "");
}

TEST_F(ResultsList, aNameOfAnyBytesIsSafeInItsRow) {
    scanned(ModuleKind::systemJunk, {detailed(finding("a\nb\xE2\x80\xAE"
                                                      "gpj.\xFF",
                                                      5),
                                              "line\r\nbreak\x1B[31m")});
    EXPECT_EQ(text(1, NameRole), "a\uFFFDb\uFFFDgpj.\uFFFD");
    EXPECT_EQ(text(1, DetailRole), "line\uFFFD\uFFFDbreak\uFFFD[31m");
    EXPECT_EQ(text(1, UrlRole), "file:///home/me/a%0Ab%E2%80%AEgpj.%FF");
}

TEST_F(ResultsList, aGroupOfAnyBytesIsFoundAgain) {
    scanned(ModuleKind::duplicates, {grouped(finding("a", 1), "\xFF\n%41"), grouped(finding("b", 1), "\xFE")});
    screen->toggleGroup(at(0, GroupIdRole).toString());
    EXPECT_EQ(screen->selectedCount(), 1);
    EXPECT_TRUE(at(1, SelectedRole).toBool());
}

TEST_F(ResultsList, aDateShowsOnlyWhereItMeansSomething) {
    const Date day = Date::fromUnix(1'700'000'000);
    world.dates["/home/me/a"] = day;
    scanned(ModuleKind::largeFiles, {finding("a", 5), finding("b", 4)});
    (void)at(1, DateTextRole);
    (void)at(2, DateTextRole);
    world.settle();
    EXPECT_NE(text(1, DateTextRole), "");
    EXPECT_EQ(text(2, DateTextRole), "");
}

TEST_F(ResultsList, modulesWithoutDatesAskForNone) {
    world.dates["/home/me/a"] = Date::fromUnix(1'700'000'000);
    scanned(ModuleKind::systemJunk, {finding("a", 5)});
    (void)at(1, DateTextRole);
    world.settle();
    EXPECT_EQ(text(1, DateTextRole), "");
    EXPECT_TRUE(world.datesAsked.empty());
}

TEST_F(ResultsList, aRunningAppsRowWarnsUntilItHasQuit) {
    world.running = {"com.foo.app"};
    scanned(ModuleKind::systemJunk, {finding("com.foo.app", 5), finding("com.bar", 4)});
    (void)at(1, RunningWarningRole);
    (void)at(2, RunningWarningRole);
    world.settle();
    EXPECT_EQ(text(1, RunningWarningRole), S::moduleRunningAppHelp());
    EXPECT_EQ(text(2, RunningWarningRole), "");
    world.running.clear();
    screen->refreshRunningApps();
    world.settle();
    (void)at(1, RunningWarningRole);
    world.settle();
    EXPECT_EQ(text(1, RunningWarningRole), "");
}

TEST_F(ResultsList, mailTellsWhetherItComesBack) {
    const auto mail = [](std::string group) {
        return detailed(grouped(finding("x", 1, ScanCategory::mailAttachment), std::move(group)), "detail");
    };
    scanned(ModuleKind::mailAttachments, {mail("Outlook (Mac)"), mail("Mail"), mail("My Outlook")});
    EXPECT_EQ(text(1, MailBadgeRole), S::moduleMailRedownloads());
    EXPECT_TRUE(at(1, MailRedownloadsRole).toBool());
    for (const int row : {2, 3}) {
        EXPECT_EQ(text(row, MailBadgeRole), S::moduleMailLocalCopy());
        EXPECT_FALSE(at(row, MailRedownloadsRole).toBool());
    }
    EXPECT_EQ(text(1, DetailRole), "");
}

TEST_F(ResultsList, picturesAreKnownByCategoryAndByExtension) {
    scanned(ModuleKind::largeFiles, {finding("a.JPG", 9), finding("b.txt", 8), finding("c.webp", 7)});
    EXPECT_TRUE(at(1, IsImageRole).toBool());
    EXPECT_FALSE(at(2, IsImageRole).toBool());
    EXPECT_TRUE(at(3, IsImageRole).toBool());
}

TEST_F(ResultsList, aClosedGroupStaysClosedAfterAnotherScan) {
    scanned(ModuleKind::systemJunk, {finding("a", 5), finding("l", 9, ScanCategory::logs)});
    screen->toggleCollapsed(at(0, GroupIdRole).toString());
    EXPECT_EQ(names(), (Names{S::categoryLogs(), S::categoryUserCache(), "a"}));
    // The group has another place among the findings then.
    world.finds({finding("b", 5), finding("t", 7, ScanCategory::tempFiles), finding("m", 6, ScanCategory::logs)});
    screen->startScan();
    EXPECT_EQ(rows->rowCount(), 0);
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryTempFiles(), "t", S::categoryLogs(), S::categoryUserCache(), "b"}));
    screen->toggleCollapsed(at(2, GroupIdRole).toString());
    EXPECT_EQ(rows->rowCount(), 6);
}

TEST_F(ResultsList, anOpenedRowIsClosedAfterAnotherScan) {
    const TestFolder disk;
    (void)disk.file("folder/one");
    const auto folder = [&disk] { return finding((disk / "folder").path() + "/", 5); };
    scanned(ModuleKind::systemJunk, {folder()});
    screen->toggleExpanded(itemAt(1));
    world.settle();
    EXPECT_EQ(rows->rowCount(), 3);
    world.finds({folder()});
    screen->startScan();
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "folder"}));
}

TEST_F(ResultsList, aRescanUnderASearchShowsOnlyWhatMatches) {
    scanned(ModuleKind::systemJunk, {finding("match", 5), finding("b", 5)});
    screen->setSearchText(QStringLiteral("match"));
    world.finds({finding("c", 5), finding("match too", 5)});
    screen->startScan();
    world.settle();
    EXPECT_EQ(names(), (Names{S::categoryUserCache(), "match too"}));
}

}  // namespace
}  // namespace tavrin::test
