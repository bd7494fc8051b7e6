// The hash on 500 real pictures: 20 of each of 25 photographs.
#include "Support/Photographs.h"
#include "Support/PretendedFile.h"
#include "Support/ReferenceHash.h"
#include "TavrinCore/Platform/PictureDecoder.h"
#include "TavrinCore/Scanning/PerceptualHash.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tavrin {
namespace {

constexpr unsigned kShotsOfEach = 20;

std::uint64_t hashOf(const std::string& bytes) {
    const test::PretendedFile file{.bytes = bytes};
    const std::optional<GreyPicture> thumbnail = decodeThumbnail(*file.open());
    if (!thumbnail) throw std::runtime_error("This picture couldn't be read.");
    return PerceptualHash::dHash(*thumbnail);
}

class PhotographHash : public testing::TestWithParam<test::Photograph> {};

TEST_P(PhotographHash, liesWithin4BitsOfThePlainWayAnd2OfItsCopyAsPNG) {
    const test::ShotMaker photograph(GetParam());
    for (unsigned i = 0; i < kShotsOfEach; ++i) {
        const test::Shot shot = photograph.shot(i);
        const std::uint64_t hash = hashOf(shot.jpeg);
        EXPECT_LE(PerceptualHash::hammingDistance(hash, test::referenceHash(shot.seen)), 4) << shot.description;
        const std::string copy = test::asPNG(shot.seen, {.isPacked = false});
        EXPECT_LE(PerceptualHash::hammingDistance(hash, hashOf(copy)), 2) << "PNG of " << shot.description;
    }
}

INSTANTIATE_TEST_SUITE_P(Photographs, PhotographHash, testing::ValuesIn(test::kPhotographs),
                         [](const auto& each) { return test::nameOf(each.param); });

}  // namespace
}  // namespace tavrin
