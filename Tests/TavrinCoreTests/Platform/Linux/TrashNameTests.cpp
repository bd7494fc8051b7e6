#include "TavrinCore/Platform/Linux/TrashName.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

namespace tavrin {
namespace {

using namespace std::string_literals;

constexpr std::size_t kRoom = 245;

TEST(TrashName, isTheItemsOwnWhereItFits) {
    for (const std::string& name : {"a"s, "photo.jpeg"s, ".hidden"s, "\xFF\n"s, std::string(kRoom, 'x')})
        EXPECT_EQ(trashName(name), name);
}

TEST(TrashName, leavesRoomForTheNoteAndKeepsTheExtension) {
    EXPECT_EQ(trashName(std::string(250, 'x') + ".jpeg"), std::string(kRoom - 5, 'x') + ".jpeg");
    EXPECT_EQ(trashName(std::string(255, 'x')), std::string(kRoom, 'x'));
    EXPECT_EQ(trashName("x." + std::string(253, 'y')), "x." + std::string(kRoom - 2, 'y'))
        << "so long an ending is no extension";
    EXPECT_EQ(trashName("." + std::string(254, 'y')), "." + std::string(kRoom - 1, 'y'));
}

TEST(TrashName, isCutBetweenCharacters) {
    std::string umlauts;
    for (int i = 0; i < 127; ++i)
        umlauts += "ü";
    EXPECT_EQ(trashName(umlauts), umlauts.substr(0, kRoom - 1));
    EXPECT_EQ(trashName(std::string(255, '\x80')).size(), kRoom - 3) << "bytes that are no text are cut somewhere";
}

TEST(TrashName, anUncommonOneDiffersEachTimeAndKeepsTheExtension) {
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        const std::string name = uncommonTrashName("photo.jpeg");
        EXPECT_TRUE(seen.insert(name).second);
        EXPECT_TRUE(name.starts_with("photo ") && name.ends_with(".jpeg")) << name;
    }
    EXPECT_LE(uncommonTrashName(std::string(255, 'x')).size(), kRoom);
    EXPECT_EQ(uncommonTrashName(".hidden").substr(0, 8), ".hidden ");
}

TEST(TrashName, aShortOneIsShort) {
    EXPECT_EQ(shortTrashName().size(), 8U);
    EXPECT_NE(shortTrashName(), shortTrashName());
}

}  // namespace
}  // namespace tavrin
