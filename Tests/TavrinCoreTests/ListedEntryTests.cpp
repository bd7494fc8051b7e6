#include "TavrinCore/Platform/Linux/ListedEntry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace tavrin {
namespace {

using namespace std::string_literals;

/// A record as getdents64 writes it, with any length that the test wants.
std::string record(const std::string& nameField, std::uint16_t length, char type = 8, std::int64_t next = 42) {
    std::string bytes(19, '\0');
    std::memcpy(bytes.data() + 8, &next, sizeof next);
    std::memcpy(bytes.data() + 16, &length, sizeof length);
    bytes[18] = type;
    return bytes + nameField;
}

TEST(ListedEntry, aRecordTellsNameTypeAndWhereToGoOn) {
    const std::string buffer = record("name\0"s, 24) + "what follows";
    const auto entry = readListedEntry(buffer);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "name");
    EXPECT_EQ(entry->type, FileType::regular);
    EXPECT_EQ(entry->next, 42);
    EXPECT_EQ(entry->length, 24U);
    EXPECT_EQ(entry->name.data()[4], '\0');
}

TEST(ListedEntry, aTypeThatIsNotTheirsIsUnknown) {
    for (const char type : {'\0', '\7', '\x0e', '\xff'})
        EXPECT_EQ(readListedEntry(record("name\0"s, 24, type))->type, FileType::unknown);
}

TEST(ListedEntry, whatIsNoRecordIsRefused) {
    EXPECT_FALSE(readListedEntry(""));
    EXPECT_FALSE(readListedEntry(record("", 19))) << "no room for a name";
    EXPECT_FALSE(readListedEntry(record("name\0"s, 0))) << "no length";
    EXPECT_FALSE(readListedEntry(record("name\0"s, 19))) << "a length without a name";
    EXPECT_FALSE(readListedEntry(record("name\0"s, 25))) << "longer than the buffer";
    EXPECT_FALSE(readListedEntry(record("name\0"s, 23))) << "the end of the name beyond the record";
    EXPECT_FALSE(readListedEntry(record("\0"s, 20))) << "an empty name";
    EXPECT_FALSE(readListedEntry(record("../x\0"s, 24))) << "a name that leads elsewhere";
    EXPECT_FALSE(readListedEntry(record("/\0"s, 21))) << "a name that leads elsewhere";
}

}  // namespace
}  // namespace tavrin
