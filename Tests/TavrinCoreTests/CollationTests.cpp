#include "TavrinCore/Scanning/Collation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <compare>
#include <string>
#include <vector>

namespace tavrin {
namespace {

std::vector<std::string> sorted(std::vector<std::string> names, Language language) {
    std::ranges::stable_sort(
        names, [&](const std::string& a, const std::string& b) { return std::is_lt(compareNames(a, b, language)); });
    return names;
}

using Names = std::vector<std::string>;

TEST(Collation, capitalsAndSmallLettersSortAlike) {
    EXPECT_EQ(compareNames("ZEBRA.app", "zebra.app", Language::english), std::weak_ordering::equivalent);
    EXPECT_EQ(sorted({"banana", "Cherry", "Apple", "apple pie"}, Language::english),
              (Names{"Apple", "apple pie", "banana", "Cherry"}));
}

TEST(Collation, equivalentNamesKeepTheirOrder) {
    EXPECT_EQ(sorted({"b", "B", "a", "A"}, Language::english), (Names{"a", "A", "b", "B"}));
    EXPECT_EQ(sorted({"B", "b", "A", "a"}, Language::english), (Names{"A", "a", "B", "b"}));
}

TEST(Collation, accentsDecideOnlyWhereAllElseIsEqual) {
    EXPECT_EQ(sorted({"Zoo", "\u00c1rbol", "arena", "arbol"}, Language::spanish),
              (Names{"arbol", "\u00c1rbol", "arena", "Zoo"}));
}

TEST(Collation, anAccentIsTheSameHoweverItIsStored) {
    EXPECT_EQ(compareNames("caf\u00e9", "cafe\u0301", Language::english), std::weak_ordering::equivalent);
}

TEST(Collation, eachLanguageHasItsOwnOrder) {
    const Names names{"nube", "\u00f1and\u00fa", "nz"};
    EXPECT_EQ(sorted(names, Language::english), (Names{"\u00f1and\u00fa", "nube", "nz"}));
    EXPECT_EQ(sorted(names, Language::spanish), (Names{"nube", "nz", "\u00f1and\u00fa"}));
}

TEST(Collation, digitsAreLettersAmongOthers) {
    EXPECT_TRUE(std::is_lt(compareNames("10", "9", Language::english)));
}

TEST(Collation, bytesThatAreNoTextComeInSomeOrderAndHarmNothing) {
    EXPECT_EQ(compareNames("a\xff", "a\xff", Language::english), std::weak_ordering::equivalent);
    EXPECT_TRUE(std::is_lt(compareNames("a\xff", "b", Language::english)));
    EXPECT_TRUE(std::is_lt(compareNames("", "a", Language::english)));
}

}  // namespace
}  // namespace tavrin
