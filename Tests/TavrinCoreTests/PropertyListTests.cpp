#include "Support/PropertyLists.h"
#include "TavrinCore/Scanning/PropertyList.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <random>
#include <string>

namespace tavrin {
namespace {

using namespace std::string_literals;
using test::BinaryPropertyList;
using test::TestFolder;
using test::xmlPropertyList;

std::optional<PropertyList> readXML(std::string_view value) {
    return PropertyList::fromBytes(xmlPropertyList(value));
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all.append(text);
    return all;
}

std::string nestedXML(std::size_t depth) {
    return repeated("<array>", depth) + repeated("</array>", depth);
}

std::string nestedBinary(std::size_t depth) {
    BinaryPropertyList list(4);
    for (std::size_t i = 0; i + 1 < depth; ++i)
        list.array({i + 1});
    list.array({});
    return list.bytes(0);
}

/// One value of each type, under a key of its name.
std::string sampleXML() {
    return xmlPropertyList(R"(<dict>
  <!-- <key>off</key><true/> -->
  <key>string</key> <string>Café &amp; &#x65e5; &lt;x&gt;<![CDATA[ <b> & ]]></string>
  <key>yes</key><true/> <key>no</key><false/>
  <key>integer</key><integer>-42</integer>
  <key>real</key><real>2.5</real>
  <key>date</key><date>2024-02-29T12:34:56Z</date>
  <key>data</key><data>
    AAEC/w==
  </data>
  <key>array</key><array><string>a</string><string></string><string/></array>
  <key>dictionary</key><dict><key>inner</key><dict/></dict>
</dict>)");
}

std::string sampleBinary() {
    BinaryPropertyList list;
    const std::size_t text = list.utf16(u"Café & 日 <x> <b> & ");
    const std::size_t yes = list.raw("\x09");
    const std::size_t no = list.raw("\x08");
    const std::size_t integer = list.raw("\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xD6"s);
    const std::size_t real = list.raw("\x23\x40\x04\0\0\0\0\0\0"s);
    const std::size_t date = list.raw("\x33\x41\xC5\xC8\x58\xB8\0\0\0"s);
    const std::size_t data = list.raw("\x44\0\1\2\xFF"s);
    const std::size_t empty = list.string("");
    const std::size_t array = list.array({list.string("a"), empty, empty});
    const std::size_t dictionary = list.dictionary({list.string("inner")}, {list.dictionary({}, {})});
    std::vector<std::size_t> keys;
    for (const char* key : {"string", "yes", "no", "integer", "real", "date", "data", "array", "dictionary"})
        keys.push_back(list.string(key));
    return list.bytes(list.dictionary(keys, {text, yes, no, integer, real, date, data, array, dictionary}));
}

class PropertyListForms : public testing::TestWithParam<std::string> {
  protected:
    const std::string bytes_ = GetParam() == "XML" ? sampleXML() : sampleBinary();
};

TEST_P(PropertyListForms, giveTheValuesOfAllTypes) {
    const std::optional<PropertyList> list = PropertyList::fromBytes(bytes_);
    ASSERT_TRUE(list);
    ASSERT_NE(list->dictionary(), nullptr);
    EXPECT_EQ(list->dictionary()->size(), 9U);
    ASSERT_NE(list->string("string"), nullptr);
    EXPECT_EQ(*list->string("string"), "Café & 日 <x> <b> & ");
    EXPECT_EQ(list->boolean("yes"), true);
    EXPECT_EQ(list->boolean("no"), false);
    EXPECT_EQ(list->integer("integer"), -42);
    EXPECT_EQ(list->real("real"), 2.5);
    EXPECT_EQ(list->date("date"), Date::fromUnix(1'709'210'096));
    ASSERT_NE(list->data("data"), nullptr);
    EXPECT_EQ(list->data("data")->bytes, "\0\1\2\xFF"s);
    ASSERT_NE(list->array("array"), nullptr);
    EXPECT_EQ(*list->array("array"), (PropertyList::Array{PropertyList("a"s), PropertyList(""s), PropertyList(""s)}));
    ASSERT_NE(list->value("dictionary"), nullptr);
    ASSERT_NE(list->value("dictionary")->dictionary("inner"), nullptr);
    EXPECT_TRUE(list->value("dictionary")->dictionary("inner")->empty());
}

TEST_P(PropertyListForms, giveNilForAnotherTypeAndForAMissingKey) {
    const std::optional<PropertyList> list = PropertyList::fromBytes(bytes_);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->string("yes"), nullptr);
    EXPECT_EQ(list->boolean("string"), std::nullopt);
    EXPECT_EQ(list->integer("real"), std::nullopt);
    EXPECT_EQ(list->real("integer"), std::nullopt);
    EXPECT_EQ(list->date("data"), std::nullopt);
    EXPECT_EQ(list->array("dictionary"), nullptr);
    EXPECT_EQ(list->dictionary("array"), nullptr);
    EXPECT_EQ(list->value("missing"), nullptr);
    EXPECT_EQ(list->string(), nullptr);
    EXPECT_EQ(list->value("array")->value("a"), nullptr);
}

TEST_P(PropertyListForms, areNoListOnceCutShort) {
    const std::string whole = bytes_.substr(0, bytes_.find_last_not_of('\n') + 1);
    ASSERT_TRUE(PropertyList::fromBytes(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(PropertyList::fromBytes(whole.substr(0, size))) << size;
}

std::size_t depthOf(const PropertyList& list) {
    std::size_t deepest = 0;
    if (list.array() != nullptr) {
        for (const PropertyList& item : *list.array())
            deepest = std::max(deepest, depthOf(item));
    } else if (list.dictionary() != nullptr) {
        for (const auto& [key, item] : *list.dictionary())
            deepest = std::max(deepest, depthOf(item));
    } else {
        return 0;
    }
    return deepest + 1;
}

TEST_P(PropertyListForms, surviveRandomDamage) {
    std::mt19937 random(20'240'229);
    const PropertyListLimits limits{.maxDepth = 4, .maxNodes = 100};
    std::size_t accepted = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string damaged = bytes_;
        for (std::size_t changes = 1 + random() % 4; changes > 0; --changes) {
            const std::size_t place = random() % damaged.size();
            switch (random() % 4) {
                case 0:
                    damaged[place] = static_cast<char>(random());
                    break;
                case 1:
                    damaged.erase(place, 1 + random() % 8);
                    break;
                case 2:
                    damaged.insert(place, damaged.substr(random() % damaged.size(), random() % 32));
                    break;
                default:
                    damaged[place] = static_cast<char>(damaged[place] ^ (1 << random() % 8));
            }
            if (damaged.empty()) damaged = bytes_;
        }
        const std::optional<PropertyList> list = PropertyList::fromBytes(damaged, limits);
        if (!list) continue;
        ++accepted;
        ASSERT_LE(depthOf(*list), limits.maxDepth);
    }
    EXPECT_GT(accepted, 1000U);
}

INSTANTIATE_TEST_SUITE_P(Both, PropertyListForms, testing::Values("XML", "Binary"),
                         [](const auto& tested) { return tested.param; });

TEST(PropertyList, otherFormatsAreNone) {
    for (std::string_view text : {"", "{}", R"({"CFBundleIdentifier": "com.foo"})", "[1, 2]", "{ a = b; }", "( a, b )",
                                  "\"text\"", "<html><body/></html>", "bplist00", "bplist15", "plain text"})
        EXPECT_FALSE(PropertyList::fromBytes(text)) << text;
}

TEST(PropertyList, xmlMayLackItsPrologAndItsWrapper) {
    EXPECT_TRUE(PropertyList::fromBytes("<plist><dict/></plist>"));
    EXPECT_TRUE(PropertyList::fromBytes("\n <dict></dict >\n"));
    EXPECT_TRUE(PropertyList::fromBytes("\xEF\xBB\xBF" + xmlPropertyList("<dict />")));
    EXPECT_EQ(PropertyList::fromBytes("<string>just text</string>"), PropertyList("just text"s));
}

TEST(PropertyList, malformedXMLIsNone) {
    for (std::string_view value : {"",
                                   "<dict>",
                                   "</dict>",
                                   "<dict></array>",
                                   "<dict><string>a</string></dict>",
                                   "<dict><key>a</key></dict>",
                                   "<dict><key>a</key><key>b</key></dict>",
                                   "<array><key>a</key></array>",
                                   "<dict/><dict/>",
                                   "<unknown/>",
                                   "text",
                                   "<array>text</array>",
                                   "<string>a</strin>",
                                   "<string>a<b/></string>",
                                   "<string>&unknown;</string>",
                                   "<string>&#0;</string>",
                                   "<dict a=\"b\"></dict>",
                                   "<date>today</date>",
                                   "<date>2024-13-01T00:00:00Z</date>",
                                   "<date>2024-00-01T00:00:00Z</date>",
                                   "<true",
                                   "<string><!-- a</string>",
                                   "<string><![CDATA[a</string>"})
        EXPECT_FALSE(readXML(value)) << value;
    EXPECT_FALSE(PropertyList::fromBytes(xmlPropertyList("<dict/>") + "more"));
    EXPECT_FALSE(PropertyList::fromBytes(xmlPropertyList("<string>a\0b</string>"s)));
}

TEST(PropertyList, entitiesOfItsOwnMakeItNone) {
    const std::string bomb = R"(<?xml version="1.0"?>
<!DOCTYPE plist [ <!ENTITY a "aaaaaaaaaa"> <!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;"> ]>
<plist version="1.0"><string>&b;</string></plist>)";
    EXPECT_FALSE(PropertyList::fromBytes(bomb));
    EXPECT_FALSE(PropertyList::fromBytes("<!DOCTYPE plist []><plist><dict/></plist>"));
    EXPECT_FALSE(PropertyList::fromBytes("<!ENTITY a \"b\"><plist><dict/></plist>"));
}

TEST(PropertyList, markupThatCouldHideAnotherIsRefused) {
    EXPECT_FALSE(PropertyList::fromBytes("<?><array><array>?><dict/>"));
    EXPECT_FALSE(PropertyList::fromBytes("<?xml a=\"?><array>\"?><dict/>"));
    EXPECT_FALSE(PropertyList::fromBytes("<plist a=\">\"><dict/></plist>"));
    EXPECT_FALSE(PropertyList::fromBytes("<!DOCTYPE plist \">\"><dict/>"));
}

TEST(PropertyList, nestingIsReadUpToTheLimit) {
    const std::size_t limit = PropertyListLimits{}.maxDepth;
    EXPECT_TRUE(PropertyList::fromBytes(nestedXML(limit)));
    EXPECT_FALSE(PropertyList::fromBytes(nestedXML(limit + 1)));
    EXPECT_TRUE(PropertyList::fromBytes(nestedBinary(limit)));
    EXPECT_FALSE(PropertyList::fromBytes(nestedBinary(limit + 1)));
}

TEST(PropertyList, nestingThatWouldOverflowTheStackIsRefused) {
    const PropertyListLimits limits{.maxBytes = std::size_t{64} << 20U, .maxNodes = 10'000'000};
    EXPECT_FALSE(PropertyList::fromBytes(nestedXML(1'000'000), limits));
    EXPECT_FALSE(PropertyList::fromBytes(nestedBinary(1'000'000), limits));
}

TEST(PropertyList, aFewBytesThatStandForGigabytesAreRefused) {
    const std::string million = test::propertyListBomb(6);
    const std::string hundredMillion = test::propertyListBomb(8);
    EXPECT_EQ(million.size(), 114U);
    EXPECT_EQ(hundredMillion.size(), 138U);
    EXPECT_FALSE(PropertyList::fromBytes(million));
    EXPECT_FALSE(PropertyList::fromBytes(hundredMillion));
    EXPECT_TRUE(PropertyList::fromBytes(test::propertyListBomb(4)));
}

TEST(PropertyList, sharedTextCountsAsOftenAsItIsMet) {
    BinaryPropertyList list;
    const std::size_t text = list.string(std::string(500'000, 'x'));
    const std::size_t root = list.array(std::vector<std::size_t>(30, text));
    EXPECT_TRUE(PropertyList::fromBytes(list.bytes(root)));
    EXPECT_FALSE(PropertyList::fromBytes(list.bytes(list.array({root, root}))));
}

TEST(PropertyList, referencesInACircleAreRefused) {
    BinaryPropertyList itself;
    EXPECT_FALSE(PropertyList::fromBytes(itself.bytes(itself.array({0}))));
    BinaryPropertyList two;
    two.array({1});
    two.dictionary({2}, {0});
    two.string("key");
    EXPECT_FALSE(PropertyList::fromBytes(two.bytes(0)));
}

TEST(PropertyList, aBinaryKeyIsTextWithoutAZero) {
    for (const bool isSound : {true, false}) {
        BinaryPropertyList list;
        const std::size_t key = list.utf16(isSound ? u"aé"s : u"a\0b"s);
        const auto read = PropertyList::fromBytes(list.bytes(list.dictionary({key}, {key})));
        EXPECT_EQ(read.has_value(), isSound);
    }
    BinaryPropertyList number;
    const std::size_t key = number.raw("\x10\x01");
    EXPECT_FALSE(PropertyList::fromBytes(number.bytes(number.dictionary({key}, {key}))));
}

TEST(PropertyList, whatPointsOutsideIsRefused) {
    BinaryPropertyList list;
    EXPECT_FALSE(PropertyList::fromBytes(list.bytes(list.array({7}))));
    for (const char* object : {"\x59"
                               "short",
                               "\x13", "\xA9", "\xD1\x01", "\x4F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF", "\x5F\x59",
                               "\x33\x01", "\x00", "\x70", "\xF0", "\x1F\x01"}) {
        BinaryPropertyList broken;
        EXPECT_FALSE(PropertyList::fromBytes(broken.bytes(broken.raw(object)))) << object;
    }
}

TEST(PropertyList, aListOverTheSizeIsRefused) {
    const std::string list = sampleXML();
    EXPECT_TRUE(PropertyList::fromBytes(list, {.maxBytes = list.size()}));
    EXPECT_FALSE(PropertyList::fromBytes(list, {.maxBytes = list.size() - 1}));
}

TEST(PropertyList, moreValuesThanTheLimitAreRefused) {
    EXPECT_TRUE(PropertyList::fromBytes("<array>" + repeated("<true/>", 9) + "</array>", {.maxNodes = 10}));
    EXPECT_FALSE(PropertyList::fromBytes("<array>" + repeated("<true/>", 10) + "</array>", {.maxNodes = 10}));
    EXPECT_TRUE(PropertyList::fromBytes("<dict><key>a</key><true/></dict>", {.maxNodes = 3}));
    EXPECT_FALSE(PropertyList::fromBytes("<dict><key>a</key><true/></dict>", {.maxNodes = 2}));
    BinaryPropertyList list;
    list.raw("\x09");
    const std::string bytes = list.bytes(list.array(std::vector<std::size_t>(9, 0)));
    EXPECT_TRUE(PropertyList::fromBytes(bytes, {.maxNodes = 10}));
    EXPECT_FALSE(PropertyList::fromBytes(bytes, {.maxNodes = 9}));
}

TEST(PropertyList, whatTheReaderIsSlowAtIsBounded) {
    EXPECT_TRUE(readXML("<string>" + repeated("&lt;", 10'000) + "</string>"));
    EXPECT_FALSE(readXML("<string>" + repeated("&lt;", 200'000) + "</string>"));
    EXPECT_TRUE(readXML("<dict>" + repeated("<key>a</key><true/>", 4'000) + "</dict>"));
    EXPECT_FALSE(readXML("<dict>" + repeated("<key>a</key><true/>", 40'000) + "</dict>"));
}

TEST(PropertyList, datesOutOfReachAreNull) {
    EXPECT_EQ(readXML("<date>2023-01-01T00:00:00Z</date>")->date(), Date::fromUnix(1'672'531'200));
    EXPECT_EQ(readXML("<date>1969-12-31T23:59:59Z</date>")->date(), Date::fromUnix(-1));
    EXPECT_TRUE(readXML("<date>4001-01-01T00:00:00Z</date>")->isNull());
    EXPECT_TRUE(readXML("<date>0001-01-01T00:00:00Z</date>")->isNull());
    BinaryPropertyList list;
    EXPECT_TRUE(PropertyList::fromBytes(list.bytes(list.raw("\x33\x7F\xF8\0\0\0\0\0\0"s)))->isNull());
}

TEST(PropertyList, fractionsOfASecondCountToTheSameSideAsTheSeconds) {
    for (const auto& [object, seconds] :
         {std::pair{"\x33\x3F\xF8\0\0\0\0\0\0"s, 1.5}, {"\x33\xBF\xF8\0\0\0\0\0\0"s, -1.5}}) {
        BinaryPropertyList list;
        EXPECT_EQ(PropertyList::fromBytes(list.bytes(list.raw(object)))->date(), Date::fromReference(seconds));
    }
}

TEST(PropertyListFile, isReadThroughLinks) {
    const TestFolder world;
    world.file("list.plist", sampleXML());
    EXPECT_EQ(PropertyList::fromFile(world.link("link", "list.plist")), PropertyList::fromBytes(sampleXML()));
}

TEST(PropertyListFile, isNoneWhereThereIsNoRegularFile) {
    const TestFolder world;
    const URL fifo = world / "fifo";
    ASSERT_EQ(::mkfifo(fifo.path().c_str(), 0600), 0);
    EXPECT_FALSE(PropertyList::fromFile(fifo));
    EXPECT_FALSE(PropertyList::fromFile(world.folder("folder")));
    EXPECT_FALSE(PropertyList::fromFile(world / "missing"));
    EXPECT_FALSE(PropertyList::fromFile(world.link("dangling", "missing")));
}

TEST(PropertyListFile, mayBeLargeWhereTheCallerSaysSo) {
    const TestFolder world;
    const std::string text(std::size_t{2} << 20U, 'x');
    const URL file = world.file("large.plist", xmlPropertyList("<string>" + text + "</string>"));
    EXPECT_FALSE(PropertyList::fromFile(file));
    EXPECT_EQ(PropertyList::fromFile(file, {.maxBytes = std::size_t{4} << 20U}), PropertyList(text));
}

}  // namespace
}  // namespace tavrin
