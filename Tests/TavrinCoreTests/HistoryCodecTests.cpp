#include "TavrinCore/Cleaning/HistoryCodec.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::string_view kId = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

/// A record's text with one field in other words; an empty value leaves the field out.
std::string recordText(std::string_view key = {}, std::string_view value = {}) {
    const std::vector<std::pair<std::string, std::string>> fields{
        {"id", '"' + std::string(kId) + '"'},
        {"date", "1.5"},
        {"module", R"("System Junk")"},
        {"moduleKey", R"("systemJunk")"},
        {"itemCount", "2"},
        {"reclaimedBytes", "30"},
        {"entries", R"([{"original": "file:///a/", "trashed": "file:///t/a/"}])"}};
    std::string text;
    for (const auto& [name, usual] : fields) {
        const std::string_view written = name == key ? value : usual;
        if (!written.empty()) text.append(text.empty() ? "{\"" : ", \"").append(name).append("\": ").append(written);
    }
    return text + "}";
}

CleanupRecord usualRecord() {
    return {.id = *UUID::fromString(kId),
            .date = Date::fromReference(1.5),
            .module = "System Junk",
            .moduleKey = "systemJunk",
            .itemCount = 2,
            .reclaimedBytes = 30,
            .entries = {{URL::fromPath("/a/"), URL::fromPath("/t/a/")}}};
}

/// Two good records around this one.
std::string between(std::string_view element) {
    return "[" + recordText("itemCount", "1") + ", " + std::string(element) + ", " + recordText("itemCount", "3") + "]";
}

void expectToCostOneRecord(std::string_view element) {
    const DecodedHistory history = decodeHistory(between(element));
    EXPECT_FALSE(history.isIntact) << element;
    ASSERT_THAT(history.records, SizeIs(2)) << element;
    EXPECT_EQ(history.records[0].itemCount, 1) << element;
    EXPECT_EQ(history.records[1].itemCount, 3) << element;
}

void expectToBeRead(std::string_view key, std::string_view value) {
    const DecodedHistory history = decodeHistory(between(recordText(key, value)));
    EXPECT_TRUE(history.isIntact) << key << ": " << value;
    EXPECT_THAT(history.records, SizeIs(3)) << key << ": " << value;
}

void expectNothing(std::string_view text) {
    const DecodedHistory history = decodeHistory(text);
    EXPECT_FALSE(history.isIntact) << text.substr(0, 100);
    EXPECT_THAT(history.records, IsEmpty()) << text.substr(0, 100);
}

class Random {
  public:
    std::uint64_t below(std::uint64_t limit) { return generator_() % limit; }
    double real() { return std::uniform_real_distribution<double>(-1e12, 1e12)(generator_); }
    std::int64_t integer() { return static_cast<std::int64_t>(generator_()); }

    URL url() {
        std::string path = "/";
        for (std::uint64_t length = below(40); length > 0; --length)
            path.push_back(static_cast<char>(1 + below(255)));
        return URL::fromPath(path, below(2) == 0);
    }

    std::string text() {
        static const std::vector<std::string> pieces{"a",    "/", "\\", "\"", "\n",     "\t",         "\x01",
                                                     "\x7f", "ñ", "漢", "{",  "\u2028", "\U0001F5D1", "\\u"};
        std::string text;
        for (std::uint64_t length = below(12); length > 0; --length)
            text.append(pieces[below(pieces.size())]);
        return text;
    }

    CleanupRecord record() {
        CleanupRecord record{.id = UUID::random(),
                             .date = Date::fromReference(real()),
                             .module = text(),
                             .moduleKey = std::nullopt,
                             .itemCount = integer(),
                             .reclaimedBytes = integer(),
                             .entries = {}};
        if (below(2) == 0) record.moduleKey = text();
        for (std::uint64_t count = below(5); count > 0; --count)
            record.entries.push_back({url(), url()});
        return record;
    }

  private:
    std::mt19937_64 generator_{20260101};  // the same run each time
};

// Writing

TEST(HistoryCodec, theFormIsExactToTheByte) {
    const std::vector<CleanupRecord> records{
        {.id = *UUID::fromString("e621e1f8-c36c-495a-93fc-0c247a3e6e5f"),
         .date = Date::fromReference(812345678.123456),
         .module = "Basura \"del\" sistema/ñ",
         .moduleKey = "systemJunk",
         .itemCount = 2,
         .reclaimedBytes = 9'007'199'254'740'993,
         .entries = {{URL::fromPath("/Users/name/Library/Caches/x/"), URL::fromPath("/Users/name/.Trash/x y/")},
                     {URL::fromPath("/a\xFF\\"), URL::fromPath("/t/a\n")}}},
        {.id = *UUID::fromString("00000000-0000-4000-8000-000000000001"),
         .date = Date::fromReference(700000000),
         .module = "Empty Trash (permanent)",
         .moduleKey = std::nullopt,
         .itemCount = 1,
         .reclaimedBytes = 0,
         .entries = {}}};
    constexpr std::string_view expected = R"json([
  {
    "id": "E621E1F8-C36C-495A-93FC-0C247A3E6E5F",
    "date": 812345678.123456,
    "module": "Basura \"del\" sistema\/ñ",
    "moduleKey": "systemJunk",
    "itemCount": 2,
    "reclaimedBytes": 9007199254740993,
    "entries": [
      {
        "original": "file:\/\/\/Users\/name\/Library\/Caches\/x\/",
        "trashed": "file:\/\/\/Users\/name\/.Trash\/x%20y\/"
      },
      {
        "original": "file:\/\/\/a%FF%5C",
        "trashed": "file:\/\/\/t\/a%0A"
      }
    ]
  },
  {
    "id": "00000000-0000-4000-8000-000000000001",
    "date": 700000000.0,
    "module": "Empty Trash (permanent)",
    "itemCount": 1,
    "reclaimedBytes": 0,
    "entries": []
  }
])json";
    EXPECT_EQ(encodeHistory(records), expected);
}

TEST(HistoryCodec, anEmptyHistoryIsAnEmptyArray) {
    EXPECT_EQ(encodeHistory({}), "[]");
    EXPECT_TRUE(decodeHistory("[]").isIntact);
    EXPECT_THAT(decodeHistory("[]").records, IsEmpty());
}

TEST(HistoryCodec, whatIsWrittenIsReadBackEqual) {
    Random random;
    for (int round = 0; round < 300; ++round) {
        std::vector<CleanupRecord> records;
        for (std::uint64_t count = random.below(6); count > 0; --count)
            records.push_back(random.record());
        const std::optional<std::string> text = encodeHistory(records);
        ASSERT_TRUE(text);
        const DecodedHistory history = decodeHistory(*text);
        ASSERT_TRUE(history.isIntact) << *text;
        ASSERT_EQ(history.records, records) << *text;
    }
}

TEST(HistoryCodec, everyDigitOfADateComesBack) {
    for (double seconds : {0.1, 812345678.1234567, -0.0, 1e-300, 5e-324, 1e300, -63'114'076'800.0,
                           std::nextafter(812345678.5, 1e9), std::numeric_limits<double>::max()}) {
        CleanupRecord record = usualRecord();
        record.date = Date::fromReference(seconds);
        EXPECT_EQ(decodeHistory(encodeHistory({record}).value()).records.at(0).date, record.date) << seconds;
    }
}

TEST(HistoryCodec, theExtremesOfIntegersComeBack) {
    for (std::int64_t value : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1}, std::int64_t{0},
                               std::numeric_limits<std::int64_t>::max()}) {
        CleanupRecord record = usualRecord();
        record.itemCount = value;
        record.reclaimedBytes = value;
        EXPECT_EQ(decodeHistory(encodeHistory({record}).value()).records.at(0), record);
    }
}

TEST(HistoryCodec, aTitleThatIsNotUTF8IsWrittenWithReplacementCharacters) {
    CleanupRecord record = usualRecord();
    record.module = "a\xFFz";
    record.moduleKey = "\xC3";
    const DecodedHistory history = decodeHistory(encodeHistory({record}).value());
    EXPECT_EQ(history.records.at(0).module, "a\uFFFDz");
    EXPECT_EQ(history.records.at(0).moduleKey, "\uFFFD");
}

TEST(HistoryCodec, aDateThatIsNoNumberCannotBeWritten) {
    for (double seconds : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        CleanupRecord record = usualRecord();
        record.date = Date::fromReference(seconds);
        EXPECT_EQ(encodeHistory({usualRecord(), record}), std::nullopt);
    }
}

// Reading

TEST(HistoryCodec, bothFormsOfTheSlashAndAnyOrderOfKeysAreRead) {
    const DecodedHistory history = decodeHistory(
        R"([{"entries":[{"trashed":"file:///t/a/","original":"file:\/\/\/a\/"}],"reclaimedBytes":30,"itemCount":2,)"
        R"("moduleKey":"systemJunk","module":"System Junk","date":1.5,"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f"}])");
    EXPECT_TRUE(history.isIntact);
    EXPECT_EQ(history.records, std::vector{usualRecord()});
}

TEST(HistoryCodec, aRecordWithoutAModuleKeyIsRead) {
    for (std::string_view value : {"", "null"}) {
        expectToBeRead("moduleKey", value);
        const CleanupRecord read = decodeHistory("[" + recordText("moduleKey", value) + "]").records.at(0);
        EXPECT_EQ(read.moduleKey, std::nullopt);
        EXPECT_EQ(read.displayName(), "System Junk");
    }
}

TEST(HistoryCodec, aRecordWithAnUnknownModuleKeyIsRead) {
    expectToBeRead("moduleKey", R"("aModuleOfTomorrow")");
    const CleanupRecord read =
        decodeHistory("[" + recordText("moduleKey", R"("aModuleOfTomorrow")") + "]").records.at(0);
    EXPECT_EQ(read.displayName(), "System Junk");
}

TEST(HistoryCodec, anIntegerMayBeWrittenAsARealNumber) {
    for (std::string_view key : {"itemCount", "reclaimedBytes"}) {
        for (std::string_view value : {"3.0", "3e2", "-0.0", "9223372036854775807", "-9223372036854775808", "-4"})
            expectToBeRead(key, value);
    }
    EXPECT_EQ(decodeHistory("[" + recordText("itemCount", "3e2") + "]").records.at(0).itemCount, 300);
}

TEST(HistoryCodec, aDateMayBeWrittenAsAnInteger) {
    for (std::string_view value : {"3", "-3", "18446744073709551615", "1e308"})
        expectToBeRead("date", value);
}

TEST(HistoryCodec, anEntryMayHaveNoEntries) {
    expectToBeRead("entries", "[]");
}

TEST(HistoryCodec, keysOfALaterVersionArePassedOver) {
    for (std::string_view value :
         {"1", "null", R"({"id": 3, "entries": [1]})", "[[[{}]], {}]", "1e999", R"("\ud800")"}) {
        const std::string text = recordText();
        expectToBeRead("date", "1.5, \"later\": " + std::string(value));
        const DecodedHistory inEntry =
            decodeHistory("[" +
                          recordText("entries", R"([{"later": )" + std::string(value) +
                                                    R"(, "original": "file:///a/", "trashed": "file:///t/a/"}])") +
                          "]");
        EXPECT_TRUE(inEntry.isIntact) << value;
        EXPECT_EQ(inEntry.records, std::vector{usualRecord()}) << value;
    }
}

TEST(HistoryCodec, anIdThatStandsTwiceIsKeptTwice) {
    const DecodedHistory history = decodeHistory("[" + recordText() + "," + recordText() + "]");
    EXPECT_TRUE(history.isIntact);
    EXPECT_EQ(history.records, (std::vector{usualRecord(), usualRecord()}));
}

TEST(HistoryCodec, theLastOfAKeyThatStandsTwiceCounts) {
    const DecodedHistory history = decodeHistory(
        "[" +
        recordText("entries", R"([{"original": "file:///x", "trashed": "file:///y"}], "itemCount": 7, "entries": [])") +
        "]");
    ASSERT_THAT(history.records, SizeIs(1));
    EXPECT_EQ(history.records[0].itemCount, 7);
    EXPECT_THAT(history.records[0].entries, IsEmpty());
}

// Damage

TEST(HistoryCodec, aWrongTypeCostsItsRecord) {
    for (std::string_view key : {"id", "date", "module", "itemCount", "reclaimedBytes", "entries"}) {
        for (std::string_view value : {"null", "true", "{}", "[1]", R"([{"a": []}])", R"({"id": 1})"})
            expectToCostOneRecord(recordText(key, value));
    }
    for (std::string_view value : {"1", "true", "{}", "[]"})
        expectToCostOneRecord(recordText("moduleKey", value));
    for (std::string_view key : {"id", "module"})
        expectToCostOneRecord(recordText(key, "1"));
    for (std::string_view key : {"date", "itemCount", "reclaimedBytes", "entries", "id"})
        expectToCostOneRecord(recordText(key, R"("x")"));
}

TEST(HistoryCodec, aMissingKeyCostsItsRecord) {
    for (std::string_view key : {"id", "date", "module", "itemCount", "reclaimedBytes", "entries"})
        expectToCostOneRecord(recordText(key, ""));
    expectToCostOneRecord("{}");
}

TEST(HistoryCodec, whatIsNoRecordIsDroppedLikeABadOne) {
    for (std::string_view element : {"null", "1", "\"x\"", "false", "[]", "[{}]", "1e999", R"("\ud800")"})
        expectToCostOneRecord(element);
    expectToCostOneRecord("[" + recordText() + "]");
}

TEST(HistoryCodec, anIntegerOutOfRangeOrWithAFractionCostsItsRecord) {
    for (std::string_view key : {"itemCount", "reclaimedBytes"}) {
        for (std::string_view value : {"3.5", "9223372036854775808", "-9223372036854775809", "1e30", "-1e30", "1e999"})
            expectToCostOneRecord(recordText(key, value));
    }
}

TEST(HistoryCodec, oneBadEntryCostsItsWholeRecord) {
    const std::string good = R"({"original": "file:///a", "trashed": "file:///b"})";
    for (const std::string bad :
         {R"({"original": "/a", "trashed": "file:///b"})", R"({"original": "file:///a", "trashed": "file:///%zz"})",
          R"({"original": "file:///a"})", R"({"trashed": "file:///a"})",
          R"({"original": null, "trashed": "file:///b"})", R"({"original": "file:///a", "trashed": 1})",
          R"({"original": ["file:///a"], "trashed": "file:///b"})",
          R"({"original": "file:///a%00", "trashed": "file:///b"})", "{}", "null", "[]", "\"file:///a\""}) {
        expectToCostOneRecord(recordText("entries", "[" + good + ", " + bad + ", " + good + "]"));
    }
}

TEST(HistoryCodec, aNumberThatNoDoubleHoldsCostsItsRecord) {
    for (std::string_view key : {"id", "date", "module", "moduleKey", "itemCount", "entries"}) {
        for (std::string_view value : {"1e999", "-1e999", "12345E+400"})
            expectToCostOneRecord(recordText(key, value));
    }
    // In a text it is text.
    expectToBeRead("module", R"("1e999 \" 1e999")");
    expectToCostOneRecord(recordText("module", R"("1e999 \" \\", "date": 1e999)"));
}

TEST(HistoryCodec, bytesThatAreNoTextCostTheirRecord) {
    for (std::string_view value :
         {"\"\xFF\"", "\"a\xC3\"", R"("\ud800")", R"("\udc00\ud800")", "\"a\x01z\"", R"("\x")"}) {
        for (std::string_view key : {"id", "module", "moduleKey", "date", "entries"})
            expectToCostOneRecord(recordText(key, value));
    }
    // As a key it is one that nobody knows.
    expectToCostOneRecord(recordText("date", "1, \"\xFF\" : 1, \"itemCount\": \"\xFF\""));
    expectToBeRead("date", "1, \"\xFF\" : 1");
}

TEST(HistoryCodec, whatIsNoArrayHoldsNothing) {
    for (std::string_view text : {"{}", "null", "1", "\"[]\"", "true", "1e999", R"({"records": []})"})
        expectNothing(text);
    expectNothing("{\"a\": [" + recordText() + "]}");
}

TEST(HistoryCodec, whatIsNoJSONHoldsNothing) {
    const std::string good = "[" + recordText() + "]";
    for (std::string_view text :
         {"", " ", "[", "]", "not json", "[,]", "[1,]", "nul", "\"", "[\"", "-", "[-", "\\", "[\"\\"})
        expectNothing(text);
    for (const std::string& text : {good + "x", good + good, good + ",", "x" + good})
        expectNothing(text);
}

TEST(HistoryCodec, zeroBytesAfterTheEndAreDamageThatCostsNothing) {
    const DecodedHistory history = decodeHistory("[" + recordText() + "]" + std::string(4096, '\0') + "x");
    EXPECT_FALSE(history.isIntact);
    EXPECT_EQ(history.records, std::vector{usualRecord()});
}

TEST(HistoryCodec, aTextCutAnywhereHoldsNothing) {
    const std::string text = encodeHistory({usualRecord(), usualRecord()}).value();
    for (std::size_t length = 0; length < text.size(); ++length)
        expectNothing(std::string_view(text).substr(0, length));
}

TEST(HistoryCodec, whateverByteIsHitNoOtherRecordChanges) {
    std::vector<CleanupRecord> records(3, usualRecord());
    for (CleanupRecord& record : records)
        record.id = UUID::random();
    const std::string text = encodeHistory(records).value();
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (char hit : {'\0', '\xFF', '"', '9', '}'}) {
            std::string damaged = text;
            damaged[at] = hit;
            const DecodedHistory history = decodeHistory(damaged);
            std::size_t changed = history.records.empty() ? 0 : records.size();
            for (const CleanupRecord& record : history.records) {
                if (std::ranges::find(records, record) != records.end()) --changed;
            }
            ASSERT_LE(changed, 1U) << "byte " << at;
        }
    }
}

TEST(HistoryCodec, nestingHoweverDeepOverflowsNothing) {
    constexpr std::size_t depth = 1'000'000;
    const std::string open(depth, '[');
    const std::string close(depth, ']');
    expectNothing(open);
    expectToCostOneRecord(open + close);
    expectToBeRead("date", "1, \"later\": " + open + close);
    expectToCostOneRecord(recordText("entries", open + close));
    std::string objects;
    for (std::size_t i = 0; i < 200'000; ++i)
        objects.append("{\"entries\":[");
    expectNothing("[" + objects);
}

}  // namespace
}  // namespace tavrin
