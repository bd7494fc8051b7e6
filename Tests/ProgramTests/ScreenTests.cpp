#include "Screen.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace tavrin {
namespace {

std::vector<Screen> allScreens() {
    std::vector<Screen> screens;
    for (const Screen::Case which : {Screen::Case::smartScan, Screen::Case::dashboard, Screen::Case::performance,
                                     Screen::Case::diskMap, Screen::Case::history, Screen::Case::trash})
        screens.emplace_back(which);
    for (const ModuleKind kind : allModuleKinds)
        screens.push_back(Screen::module(kind));
    return screens;
}

TEST(Screen, eachHasAKeyOfItsOwnThatLeadsBackToIt) {
    std::set<std::string_view> keys;
    for (const Screen& screen : allScreens()) {
        EXPECT_TRUE(keys.insert(screen.key()).second) << screen.key();
        EXPECT_EQ(Screen::fromKey(screen.key()), screen) << screen.key();
    }
    EXPECT_EQ(keys.size(), 21U);
}

TEST(Screen, noOtherTextIsAKey) {
    for (const char* key : {"", "systemjunk", "History", "module", "smartScan "})
        EXPECT_FALSE(Screen::fromKey(key)) << key;
}

TEST(Screen, eachHasATitleAndASymbol) {
    for (const Screen& screen : allScreens()) {
        EXPECT_FALSE(screen.title().empty()) << screen.key();
        EXPECT_FALSE(screen.symbol().empty()) << screen.key();
        EXPECT_EQ(screen.subtitle().empty(), screen.which() != Screen::Case::module) << screen.key();
    }
    EXPECT_EQ(Screen(Screen::Case::trash).symbol(), "trash.slash");
    EXPECT_EQ(Screen::module(ModuleKind::duplicates).title(), title(ModuleKind::duplicates));
}

TEST(Screen, modulesAreToldApart) {
    EXPECT_EQ(Screen::module(ModuleKind::duplicates), Screen::module(ModuleKind::duplicates));
    EXPECT_NE(Screen::module(ModuleKind::duplicates), Screen::module(ModuleKind::largeFiles));
    const std::vector<Screen> screens = allScreens();
    const std::unordered_set<Screen> distinct(screens.begin(), screens.end());
    EXPECT_EQ(distinct.size(), screens.size());
}

}  // namespace
}  // namespace tavrin
