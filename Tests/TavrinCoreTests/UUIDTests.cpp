#include "TavrinCore/Models/UUID.h"

#include <gtest/gtest.h>

#include <set>

namespace tavrin {
namespace {

TEST(UUID, isWrittenInItsCanonicalUpperCaseForm) {
    const UUID uuid({0xE6, 0x21, 0xE1, 0xF8, 0xC3, 0x6C, 0x49, 0x5A, 0x93, 0xFC, 0x0C, 0x24, 0x7A, 0x3E, 0x6E, 0x5F});
    EXPECT_EQ(uuid.uuidString(), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    EXPECT_EQ(UUID::fromString("e621e1f8-c36c-495a-93fc-0c247a3e6e5f"), uuid);
}

TEST(UUID, randomOnesDifferAndAreOfVersionFour) {
    std::set<UUID> seen;
    for (int i = 0; i < 1000; ++i) {
        const UUID uuid = UUID::random();
        EXPECT_EQ(uuid.bytes()[6] >> 4, 4);
        EXPECT_EQ(uuid.bytes()[8] >> 6, 2);
        EXPECT_TRUE(seen.insert(uuid).second);
        EXPECT_EQ(UUID::fromString(uuid.uuidString()), uuid);
    }
}

TEST(UUID, whatIsNotThirtySixCharactersOfItsFormIsRefused) {
    for (const char* text : {"", "E621E1F8C36C495A93FC0C247A3E6E5F", "E621E1F8-C36C-495A-93FC-0C247A3E6E5",
                             "G621E1F8-C36C-495A-93FC-0C247A3E6E5F", "E621E1F8_C36C-495A-93FC-0C247A3E6E5F",
                             "E621E1F8-C36C-495A-93FC-0C247A3E6E5F0"})
        EXPECT_EQ(UUID::fromString(text), std::nullopt) << text;
}

}  // namespace
}  // namespace tavrin
