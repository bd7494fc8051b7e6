#include "KitWorld.h"
#include "TavrinClean/Kit/RowLayout.h"

#include <gtest/gtest.h>

namespace tavrin::test {
namespace {

/// Groups of two, three and one finding.
std::shared_ptr<const Arrangement> sixInThree() {
    auto all = std::make_shared<const Findings>(
        ModuleKind::duplicates,
        std::vector{grouped(finding("a1", 60), "a"), grouped(finding("a2", 60), "a"), grouped(finding("b1", 10), "b"),
                    grouped(finding("b2", 10), "b"), grouped(finding("b3", 10), "b"), grouped(finding("c1", 1), "c")});
    return arranged(all, SortOrder::sizeDesc, {});
}

/// "g0 i0 i1 x1.0": header of group 0, items at places 0 and 1, the first row below the item at place 1.
std::string told(const RowLayout& layout) {
    std::string text;
    for (int row = 0; row < layout.rowCount(); ++row) {
        const RowRef ref = layout.at(row);
        if (!text.empty()) text += ' ';
        if (ref.kind == RowRef::Kind::group) text += "g" + std::to_string(ref.group);
        if (ref.kind == RowRef::Kind::item) text += "i" + std::to_string(ref.place);
        if (ref.kind == RowRef::Kind::extra) text += "x" + std::to_string(ref.place) + "." + std::to_string(ref.extra);
    }
    return text;
}

TEST(RowLayout, withoutAGroupThereIsNoRow) {
    EXPECT_EQ(RowLayout().rowCount(), 0);
}

TEST(RowLayout, eachGroupHasItsHeaderAndItsMembers) {
    const RowLayout layout(sixInThree(), {false, false, false}, {});
    EXPECT_EQ(told(layout), "g0 i0 i1 g1 i2 i3 i4 g2 i5");
    EXPECT_EQ(layout.rowsBelowGroup(1), 3);
    EXPECT_EQ(layout.rowsBelowGroup(2), 1);
}

TEST(RowLayout, aClosedGroupHasItsHeaderAlone) {
    const RowLayout layout(sixInThree(), {false, true, false}, {});
    EXPECT_EQ(told(layout), "g0 i0 i1 g1 g2 i5");
    EXPECT_EQ(layout.rowOfPlace(3), -1);
    EXPECT_EQ(layout.rowsBelowGroup(1), 0);
}

TEST(RowLayout, openedItemsHaveTheirRowsBelow) {
    const RowLayout layout(sixInThree(), {false, false, false}, {{4, 1}, {0, 2}, {5, 3}});
    EXPECT_EQ(told(layout), "g0 i0 x0.0 x0.1 i1 g1 i2 i3 i4 x4.0 g2 i5 x5.0 x5.1 x5.2");
    EXPECT_EQ(layout.rowsBelowGroup(0), 4);
    EXPECT_EQ(layout.rowsBelowGroup(2), 4);
}

TEST(RowLayout, whatIsOpenInAClosedGroupTakesNoRow) {
    const RowLayout layout(sixInThree(), {true, false, false}, {{0, 2}, {2, 1}});
    EXPECT_EQ(told(layout), "g0 g1 i2 x2.0 i3 i4 g2 i5");
}

TEST(RowLayout, rowsAndPlacesSayTheSameBothWays) {
    const RowLayout layout(sixInThree(), {false, false, true}, {{1, 2}, {3, 1}});
    for (int row = 0; row < layout.rowCount(); ++row) {
        const RowRef ref = layout.at(row);
        int back = layout.rowOfPlace(ref.place) + 1 + ref.extra;
        if (ref.kind == RowRef::Kind::group) back = layout.rowOfGroup(ref.group);
        if (ref.kind == RowRef::Kind::item) back = layout.rowOfPlace(ref.place);
        EXPECT_EQ(back, row);
    }
}

}  // namespace
}  // namespace tavrin::test
