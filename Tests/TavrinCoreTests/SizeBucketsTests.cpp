#include "TavrinCore/Scanning/SizeBuckets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Sizes {
    std::int64_t onDisk;
    std::optional<std::int64_t> length;
};

FileIndex indexOf(const std::vector<Sizes>& files) {
    FileIndex index;
    for (const Sizes& file : files)
        index.add(URL::fromPath("/folder/" + std::to_string(index.count())),
                  {.size = file.length, .allocatedSize = file.onDisk});
    return index;
}

std::vector<std::vector<FileIndex::Number>> bucketsOf(const std::vector<Sizes>& files) {
    const SizeBuckets buckets(indexOf(files));
    std::vector<std::vector<FileIndex::Number>> all;
    for (std::size_t i = 0; i < buckets.count(); ++i)
        all.emplace_back(buckets.bucket(i).begin(), buckets.bucket(i).end());
    return all;
}

TEST(SizeBuckets, comeLargestFirstAndHoldOnlySizesThatOccurMoreThanOnce) {
    EXPECT_THAT(bucketsOf({{4'096, 10}, {8'192, 5'000}, {12'288, 9'000}, {4'096, 10}, {8'192, 5'000}, {4'096, 10}}),
                ElementsAre(ElementsAre(1U, 4U), ElementsAre(0U, 3U, 5U)));
}

TEST(SizeBuckets, holdThoseOfOneLengthTogetherAndNoFileThatHasALengthOfItsOwn) {
    EXPECT_THAT(bucketsOf({{4'096, 30}, {4'096, 10}, {4'096, 20}, {4'096, 30}, {4'096, 10}, {4'096, 30}}),
                ElementsAre(ElementsAre(1U, 4U, 0U, 3U, 5U)));
}

TEST(SizeBuckets, countEvenWhereNobodyInThemHasCompany) {
    EXPECT_THAT(bucketsOf({{4'096, 10}, {8'192, 5'000}, {4'096, 11}, {8'192, 5'000}}),
                ElementsAre(ElementsAre(1U, 3U), IsEmpty()));
}

TEST(SizeBuckets, holdFilesWhoseLengthNobodyKnows) {
    EXPECT_THAT(bucketsOf({{4'096, std::nullopt}, {4'096, 10}, {4'096, std::nullopt}}),
                ElementsAre(ElementsAre(0U, 2U)));
}

TEST(SizeBuckets, ofNothingAreNone) {
    EXPECT_THAT(bucketsOf({}), IsEmpty());
    EXPECT_THAT(bucketsOf({{4'096, 10}}), IsEmpty());
    EXPECT_THAT(SizeBuckets(indexOf({{4'096, 10}})).files(), IsEmpty());
}

TEST(SizeBuckets, runsOfElementsAreCalledWithEachOne) {
    const std::vector<int> elements{1, 1, 2, 3, 3, 3};
    std::vector<std::vector<int>> runs;
    forEachRun(
        std::span<const int>(elements), [](int a, int b) { return a == b; },
        [&](std::span<const int> run) { runs.emplace_back(run.begin(), run.end()); });
    EXPECT_THAT(runs, ElementsAre(ElementsAre(1, 1), ElementsAre(2), ElementsAre(3, 3, 3)));
}

TEST(SizeBuckets, aCancelEndsTheSortingOfManyFiles) {
    const FileIndex many = indexOf(std::vector<Sizes>(10'000, {4'096, 10}));
    EXPECT_THROW((void)SizeBuckets(many, [] { return true; }), ScanError);
    EXPECT_EQ(SizeBuckets(many, [] { return false; }).files().size(), 10'000U);
}

}  // namespace
}  // namespace tavrin
