#include "KitWorld.h"
#include "TavrinClean/Kit/GroupsModel.h"
#include "TavrinClean/Kit/ModuleScreenModel.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace tavrin::test {
namespace {

struct Groups : testing::Test {
    KitWorld world;
    ModuleStore store{world.services, nullptr};
    std::unique_ptr<ModuleScreenModel> screen = std::make_unique<ModuleScreenModel>();
    std::unique_ptr<QAbstractItemModelTester> tester;
    GroupsModel* groups = nullptr;

    ~Groups() override {
        tester.reset();
        screen.reset();
    }
    void scanned(ModuleKind kind, const std::vector<CleanableItem>& items) {
        world.finds(items);
        screen->setStore(&store);
        screen->setModuleKey(QString::fromUtf8(rawValue(kind).data()));
        groups = screen->groups();
        ASSERT_NE(groups, nullptr);
        EXPECT_EQ(screen->rows(), nullptr);
        tester =
            std::make_unique<QAbstractItemModelTester>(groups, QAbstractItemModelTester::FailureReportingMode::Fatal);
        screen->startScan();
        world.settle();
    }
    [[nodiscard]] QVariant at(int row, int role) const { return groups->index(row).data(role); }
    [[nodiscard]] std::string text(int row, int role) const { return at(row, role).toString().toStdString(); }
    [[nodiscard]] QAbstractListModel* itemsAt(int row) const {
        return qobject_cast<QAbstractListModel*>(at(row, ItemsRole).value<QObject*>());
    }
};

CleanableItem language(const std::string& folder, const std::string& name, std::int64_t size) {
    return detailed(grouped(finding(folder, size, ScanCategory::appLanguage), name), name);
}

CleanableItem picture(const std::string& name, std::string group) {
    return grouped(finding(name, 1'000, ScanCategory::similarImage), std::move(group));
}

TEST_F(Groups, aLanguageOfWhichNothingIsTickedIsKept) {
    scanned(ModuleKind::appLanguages,
            {ticked(language("A/fr.lproj", "French", 5'000)), ticked(language("B/fr.lproj", "French", 5'000)),
             language("A/de.lproj", "German", 3'000)});
    EXPECT_EQ(screen->layout(), ModuleScreenModel::Languages);
    ASSERT_EQ(groups->rowCount(), 2);
    EXPECT_EQ(text(0, NameRole), "French");
    EXPECT_FALSE(at(0, KeptRole).toBool());
    EXPECT_TRUE(at(1, KeptRole).toBool());
    EXPECT_EQ(text(0, SummaryRole), S::moduleAppsSize(2, ByteFormatter::string(10'000)));
}

TEST_F(Groups, aTapKeepsWhatWasToGoAndTheReverse) {
    scanned(ModuleKind::appLanguages, {ticked(language("A/fr.lproj", "French", 5)), language("B/fr.lproj", "French", 5),
                                       language("A/de.lproj", "German", 3)});
    const QSignalSpy changes(groups, &QAbstractItemModel::dataChanged);
    screen->toggleKept(at(0, GroupIdRole).toString());
    EXPECT_TRUE(at(0, KeptRole).toBool());
    EXPECT_EQ(screen->selectedCount(), 0);
    screen->toggleKept(at(0, GroupIdRole).toString());
    EXPECT_FALSE(at(0, KeptRole).toBool());
    EXPECT_EQ(screen->selectedCount(), 2);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Groups, groupsAndPicturesAreFoundByTheirIds) {
    scanned(ModuleKind::similarImages, {picture("a", "small"), picture("b", "small"), picture("c", "large"),
                                        picture("d", "large"), picture("e", "large")});
    EXPECT_EQ(groups->rowOf(at(1, GroupIdRole).toString()), 1);
    EXPECT_EQ(groups->rowOf(QStringLiteral("another")), -1);
    const QString b = groups->itemIdAt(1, 1);
    EXPECT_EQ(b, itemsAt(1)->index(1, 0).data(ItemIdRole).toString());
    EXPECT_EQ(groups->placeOf(b), QPoint(1, 1));
    EXPECT_EQ(groups->placeOf(QStringLiteral("no id")), QPoint(-1, -1));
    for (const auto& [row, item] : {std::pair(2, 0), {-1, 0}, {0, 3}, {0, -1}})
        EXPECT_EQ(groups->itemIdAt(row, item), QString());
    screen->setSearchText(QStringLiteral("b"));
    world.settle();
    EXPECT_EQ(groups->placeOf(b), QPoint(0, 0));
    screen->setSearchText(QStringLiteral("a"));
    world.settle();
    EXPECT_EQ(groups->placeOf(b), QPoint(-1, -1));
}

TEST_F(Groups, aLanguagesFindingIsCalledByItWithItsFolderBelow) {
    scanned(ModuleKind::appLanguages, {language("A/fr.lproj", "French", 5)});
    const QModelIndex item = itemsAt(0)->index(0, 0);
    EXPECT_EQ(item.data(NameRole).toString().toStdString(), "French");
    EXPECT_EQ(item.data(FolderNameRole).toString().toStdString(), "fr.lproj");
    EXPECT_EQ(item.data(DetailRole).toString(), QString());
}

TEST_F(Groups, aCardHoldsItsPictures) {
    scanned(ModuleKind::similarImages, {keeper(picture("a.jpg", "g")), picture("b.jpg", "g"), picture("c.jpg", "h")});
    EXPECT_EQ(screen->layout(), ModuleScreenModel::Gallery);
    EXPECT_EQ(text(0, NameRole), S::moduleGroupSimilar(2));
    QAbstractListModel* items = itemsAt(0);
    ASSERT_NE(items, nullptr);
    const QAbstractItemModelTester itemsTester(items, QAbstractItemModelTester::FailureReportingMode::Fatal);
    ASSERT_EQ(items->rowCount(), 2);
    EXPECT_TRUE(items->index(0).data(IsImageRole).toBool());
    EXPECT_TRUE(items->index(0).data(GroupedRole).toBool());
    EXPECT_EQ(itemsAt(0), items);
}

TEST_F(Groups, aPictureTickedChangesItsCellAndItsCard) {
    scanned(ModuleKind::similarImages, {picture("a.jpg", "g"), picture("b.jpg", "g"), picture("c.jpg", "h")});
    QAbstractListModel* items = itemsAt(0);
    const QSignalSpy cells(items, &QAbstractItemModel::dataChanged);
    const QSignalSpy cards(groups, &QAbstractItemModel::dataChanged);
    screen->toggle(items->index(1).data(ItemIdRole).toString());
    EXPECT_TRUE(items->index(1).data(SelectedRole).toBool());
    ASSERT_EQ(cells.count(), 1);
    EXPECT_EQ(cells.at(0).at(0).toModelIndex().row(), 1);
    EXPECT_EQ(cards.count(), 1);
    screen->selectAll();
    EXPECT_EQ(cells.count(), 2);
    EXPECT_TRUE(items->index(0).data(SelectedRole).toBool());
}

TEST_F(Groups, cellsOfFindingsThatAreGoneTellNothing) {
    scanned(ModuleKind::similarImages, {picture("a.jpg", "g")});
    const QPointer<QAbstractListModel> items = itemsAt(0);
    screen->startScan();
    const bool tellsNothing = items.isNull() || !items->index(0).data(NameRole).isValid();
    EXPECT_TRUE(tellsNothing);
    world.settle();
    EXPECT_TRUE(items.isNull());
}

TEST_F(Groups, aSearchOfLanguagesLeavesWholeRows) {
    scanned(ModuleKind::appLanguages, {language("A/fr.lproj", "French", 5), language("A/de.lproj", "German", 3)});
    screen->setSearchText(QStringLiteral("GER"));
    world.settle();
    ASSERT_EQ(groups->rowCount(), 1);
    EXPECT_EQ(text(0, NameRole), "German");
}

}  // namespace
}  // namespace tavrin::test
