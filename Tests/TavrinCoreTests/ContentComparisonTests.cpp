#include "Support/PretendedFile.h"
#include "TavrinCore/Scanning/ContentComparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::PretendedFile;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr std::size_t kChunk = 1'048'576;

/// Files by number, compared; the groups as lists of numbers.
class Comparison {
  public:
    explicit Comparison(std::vector<PretendedFile> files) : files_(std::move(files)) {}

    std::vector<EqualFiles> run(const CancellationCallback& isCancelled = neverCancelled) {
        const ContentComparison::Open open = [this](std::uint32_t file) { return openFile(file); };
        std::vector<std::uint32_t> numbers(files_.size());
        std::iota(numbers.begin(), numbers.end(), 0U);
        return ContentComparison(open, isCancelled).equalFiles(numbers);
    }
    std::vector<std::vector<std::uint32_t>> groups() {
        std::vector<std::vector<std::uint32_t>> groups;
        for (EqualFiles& equal : run())
            groups.push_back(std::move(equal.files));
        return groups;
    }

    std::function<std::unique_ptr<FileReader>(std::uint32_t)> openFile = [this](std::uint32_t file) {
        return files_[file].open();
    };
    [[nodiscard]] const PretendedFile& file(std::size_t number) const { return files_[number]; }

  private:
    std::vector<PretendedFile> files_;
};

std::string hashOf(const std::string& bytes) {
    SHA256 hash;
    hash.update({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    return hexadecimal(hash.finish());
}

TEST(ContentComparison, equalFilesComeTogetherInTheirOrderWithTheirHash) {
    Comparison comparison({{.bytes = "same"}, {.bytes = "other"}, {.bytes = "same"}, {.bytes = "same"}});
    const std::vector<EqualFiles> found = comparison.run();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THAT(found[0].files, testing::ElementsAre(0U, 2U, 3U));
    EXPECT_EQ(hexadecimal(found[0].hash), hashOf("same"));
}

TEST(ContentComparison, filesThatPartWaysGroupAmongThemselves) {
    const std::string begin(3 * kChunk, 'a');
    Comparison comparison({{.bytes = begin + "1"},
                           {.bytes = begin + "2"},
                           {.bytes = begin + "1"},
                           {.bytes = begin + "3"},
                           {.bytes = begin + "2"},
                           {.bytes = begin}});
    const std::vector<EqualFiles> found = comparison.run();
    std::map<std::string, std::vector<std::uint32_t>> byHash;
    for (const EqualFiles& equal : found)
        byHash[hexadecimal(equal.hash)] = equal.files;
    EXPECT_EQ(byHash, (std::map<std::string, std::vector<std::uint32_t>>{{hashOf(begin + "1"), {0, 2}},
                                                                         {hashOf(begin + "2"), {1, 4}}}));
}

TEST(ContentComparison, setsThatPartEarlyAreReadOnToTheirEnd) {
    const std::string end(2 * kChunk, 'z');
    Comparison comparison({{.bytes = "1" + end},
                           {.bytes = "2" + end},
                           {.bytes = "2" + end},
                           {.bytes = "1" + end},
                           {.bytes = "2" + end + "more"}});
    std::map<std::string, std::vector<std::uint32_t>> byHash;
    for (const EqualFiles& equal : comparison.run())
        byHash[hexadecimal(equal.hash)] = equal.files;
    EXPECT_EQ(byHash, (std::map<std::string, std::vector<std::uint32_t>>{{hashOf("1" + end), {0, 3}},
                                                                         {hashOf("2" + end), {1, 2}}}));
}

TEST(ContentComparison, filesAtTheEdgeOfAChunkAreToldApart) {
    constexpr std::size_t first = ContentComparison::kFirstChunk;
    for (const std::size_t size :
         {first - 1, first, first + 1, first + kChunk - 1, first + kChunk, kChunk, 2 * kChunk}) {
        const std::string bytes(size, 'e');
        Comparison comparison({{.bytes = bytes}, {.bytes = bytes + "e"}, {.bytes = bytes}});
        EXPECT_THAT(comparison.groups(), UnorderedElementsAre(testing::ElementsAre(0U, 2U))) << size;
    }
}

TEST(ContentComparison, emptyFilesAreEqual) {
    EXPECT_THAT(Comparison({{.bytes = ""}, {.bytes = ""}}).groups(),
                UnorderedElementsAre(testing::ElementsAre(0U, 1U)));
    EXPECT_THAT(Comparison({}).groups(), IsEmpty());
    EXPECT_THAT(Comparison({{.bytes = "alone"}}).groups(), IsEmpty());
}

TEST(ContentComparison, whatNobodyIsEqualToIsReadNoFurther) {
    Comparison comparison(
        {{.bytes = "1" + std::string(9 * kChunk, 'x')}, {.bytes = "2" + std::string(9 * kChunk, 'x')}});
    EXPECT_THAT(comparison.groups(), IsEmpty());
    EXPECT_LE(comparison.file(0).bytesRead, kChunk);
    EXPECT_LE(comparison.file(1).bytesRead, kChunk);
}

TEST(ContentComparison, whatDiffersAtItsBeginningIsReadNoFurther) {
    const std::string end(100'000, 'x');
    Comparison comparison({{.bytes = "1" + end}, {.bytes = "2" + end}, {.bytes = "3" + end}, {.bytes = "1" + end}});
    EXPECT_THAT(comparison.groups(), UnorderedElementsAre(testing::ElementsAre(0U, 3U)));
    EXPECT_LE(comparison.file(1).bytesRead, 8'192U);
    EXPECT_LE(comparison.file(2).bytesRead, 8'192U);
    EXPECT_EQ(comparison.file(3).bytesRead, end.size() + 1);
}

TEST(ContentComparison, copiesAreFoundAmongMoreBeginningsThanCanBeHeld) {
    std::vector<PretendedFile> files;
    for (int i = 0; i < 600; ++i)
        files.push_back({.bytes = std::to_string(i % 300) + std::string(20'000, 'x')});
    std::vector<std::vector<std::uint32_t>> groups = Comparison(std::move(files)).groups();
    std::ranges::sort(groups);
    ASSERT_EQ(groups.size(), 300U);
    for (std::uint32_t i = 0; i < 300; ++i)
        EXPECT_THAT(groups[i], testing::ElementsAre(i, i + 300));
}

TEST(ContentComparison, filesThatPartOneAfterTheOtherInTheSameChunkAreComparedWithEachOther) {
    const std::string begin(20'000, 'a');
    for (const std::vector<std::string>& ends :
         {std::vector<std::string>{"1", "2", "2", "1"}, std::vector<std::string>{"1", "2", "3", "2"},
          std::vector<std::string>{"1", "2", "3", "3"}}) {
        std::vector<PretendedFile> files;
        for (const std::string& end : ends)
            files.push_back({.bytes = begin + end});
        std::map<std::string, std::vector<std::uint32_t>> expected;
        for (std::uint32_t i = 0; i < ends.size(); ++i)
            expected[hashOf(begin + ends[i])].push_back(i);
        std::erase_if(expected, [](const auto& group) { return group.second.size() < 2; });
        std::map<std::string, std::vector<std::uint32_t>> found;
        for (const EqualFiles& equal : Comparison(std::move(files)).run())
            found[hexadecimal(equal.hash)] = equal.files;
        EXPECT_EQ(found, expected);
    }
}

TEST(ContentComparison, tellsWhetherAnyFileHadToComeFromTheDisk) {
    for (const bool isOnDisk : {false, true}) {
        const PretendedFile here{.bytes = "same"};
        const PretendedFile there{.bytes = "same", .isOnDisk = isOnDisk};
        const ContentComparison::Open open = [&](std::uint32_t file) { return file == 0 ? here.open() : there.open(); };
        const CancellationCallback isCancelled = neverCancelled;
        ContentComparison comparison(open, isCancelled);
        EXPECT_EQ(comparison.equalFiles(std::vector<std::uint32_t>{0, 1}).size(), 1U);
        EXPECT_EQ(comparison.hadToWait(), isOnDisk);
        EXPECT_THAT(comparison.equalFiles(std::vector<std::uint32_t>{0}), IsEmpty());
        EXPECT_FALSE(comparison.hadToWait());
    }
}

TEST(ContentComparison, noByteIsReadTwiceHoweverManyPartWays) {
    std::vector<PretendedFile> files;
    for (int i = 0; i < 40; ++i)
        files.push_back({.bytes = std::to_string(i % 20) + std::string(kChunk, 'x')});
    Comparison comparison(std::move(files));
    EXPECT_EQ(comparison.groups().size(), 20U);
    for (std::size_t i = 0; i < 40; ++i)
        EXPECT_LE(comparison.file(i).bytesRead, comparison.file(i).bytes.size());
}

TEST(ContentComparison, aFileThatFailsMidwayCountsWithWhatWasRead) {
    const std::string bytes(kChunk + 100, 'x');
    Comparison comparison(
        {{.bytes = bytes, .failsFrom = kChunk + 10}, {.bytes = bytes}, {.bytes = bytes.substr(0, kChunk + 10)}});
    const std::vector<EqualFiles> found = comparison.run();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THAT(found[0].files, testing::ElementsAre(0U, 2U));
    EXPECT_EQ(hexadecimal(found[0].hash), hashOf(bytes.substr(0, kChunk + 10)));
}

TEST(ContentComparison, aFileThatGrowsWhileItIsReadIsLeftOut) {
    const std::string bytes(100, 'x');
    Comparison comparison({{.bytes = bytes, .length = 99}, {.bytes = bytes}, {.bytes = bytes}});
    EXPECT_THAT(comparison.groups(), UnorderedElementsAre(testing::ElementsAre(1U, 2U)));
    // However far it goes on, no more than a chunk past its length is read.
    Comparison endless({{.bytes = std::string(9 * kChunk, 'x'), .length = 50}, {.bytes = bytes}});
    EXPECT_THAT(endless.groups(), IsEmpty());
    EXPECT_LE(endless.file(0).bytesRead, kChunk);
}

TEST(ContentComparison, aFileThatShrinksWhileItIsReadIsWhatItIsNow) {
    Comparison comparison({{.bytes = "short", .length = 5'000}, {.bytes = "short"}});
    EXPECT_THAT(comparison.groups(), UnorderedElementsAre(testing::ElementsAre(0U, 1U)));
}

TEST(ContentComparison, aFileThatCanNotBeOpenedIsLeftOut) {
    Comparison comparison({{.bytes = "same"}, {.bytes = "same"}, {.bytes = "same"}});
    const auto open = comparison.openFile;
    comparison.openFile = [&](std::uint32_t file) { return file == 0 ? nullptr : open(file); };
    EXPECT_THAT(comparison.groups(), UnorderedElementsAre(testing::ElementsAre(1U, 2U)));
}

TEST(ContentComparison, thousandsOfFilesAreNotHeldOpen) {
    std::vector<PretendedFile> files(500, {.bytes = std::string(kChunk + 1, 'x')});
    Comparison comparison(std::move(files));
    int most = 0;
    const auto open = comparison.openFile;
    comparison.openFile = [&](std::uint32_t file) {
        auto reader = open(file);
        int now = 0;
        for (std::size_t i = 0; i < 500; ++i)
            now += comparison.file(i).readersOpen;
        most = std::max(most, now);
        return reader;
    };
    ASSERT_EQ(comparison.groups().size(), 1U);
    EXPECT_GT(most, 10);
    EXPECT_LE(most, 80);
}

TEST(ContentComparison, aCancelIsHeardBeforeEachChunk) {
    Comparison comparison({{.bytes = std::string(5 * kChunk, 'x')}, {.bytes = std::string(5 * kChunk, 'x')}});
    int polls = 0;
    EXPECT_THROW((void)comparison.run([&] { return ++polls > 4; }), ScanError);
    EXPECT_EQ(polls, 5);
    EXPECT_LE(comparison.file(0).bytesRead + comparison.file(1).bytesRead, 4 * kChunk);
}

}  // namespace
}  // namespace tavrin
