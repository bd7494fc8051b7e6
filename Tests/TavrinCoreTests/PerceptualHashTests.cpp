#include "Support/Pictures.h"
#include "Support/ReferenceHash.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Scanning/PerceptualHash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::ColourPicture;
using test::drawnScene;
using test::TestFolder;
using testing::ElementsAre;

std::uint64_t hashOf(const TestFolder& world, const std::string& name, const std::string& bytes) {
    const std::optional<std::uint64_t> hash = PerceptualHash::dHash(world.file(name, bytes));
    EXPECT_TRUE(hash) << name;
    return hash.value_or(0);
}

TEST(PerceptualHash, anImageIsKnownByItsExtensionWhateverItsCase) {
    for (const char* name : {"a.jpg", "a.jpeg", "a.png", "a.heic", "a.heif", "a.gif", "a.tiff", "a.tif", "a.bmp",
                             "a.webp", "IMG.JPG", "b.c.HeIc"})
        EXPECT_TRUE(PerceptualHash::isImage(URL::fromPath(std::string("/") + name))) << name;
    for (const char* name : {"jpg", ".jpg", "a.jpg.txt", "a.svg", "a", "a.jp", "a.jpg2"})
        EXPECT_FALSE(PerceptualHash::isImage(URL::fromPath(std::string("/") + name))) << name;
}

TEST(PerceptualHash, eachBitSaysWhetherAPixelIsBrighterThanItsRightNeighbour) {
    GreyPicture grid{.width = 9, .height = 8, .pixels = std::vector<float>(72, 100)};
    EXPECT_EQ(PerceptualHash::dHash(grid), 0U) << "equal neighbours give 0";
    grid.pixels[0] = 101;
    EXPECT_EQ(PerceptualHash::dHash(grid), 1U) << "the first of the first row is the least bit";
    grid.pixels[0] = 100;
    grid.pixels[9 * 7 + 8] = 99;
    EXPECT_EQ(PerceptualHash::dHash(grid), std::uint64_t{1} << 63U)
        << "the last pair of the last row is the highest bit";
    grid.pixels[9 * 3 + 4] = 255;
    EXPECT_EQ(PerceptualHash::dHash(grid), std::uint64_t{1} << 63U | std::uint64_t{1} << (8 * 3 + 4));
}

TEST(PerceptualHash, uniformPicturesHashTo0) {
    const TestFolder world;
    EXPECT_EQ(hashOf(world, "grey.png", test::asPNG(test::uniform(128, 300, 200))), 0U);
    EXPECT_EQ(hashOf(world, "black.jpg", test::asJPEG(test::uniform(0, 300, 200))), 0U);
}

TEST(PerceptualHash, aPictureFromDarkToLightHasNoBitAndTheMirroredOneHasAll) {
    const TestFolder world;
    ColourPicture picture = test::uniform(0, 180, 80);
    for (std::size_t i = 0; i < picture.rgb.size(); ++i)
        picture.rgb[i] = static_cast<std::uint8_t>(i / 3 % 180);
    EXPECT_EQ(hashOf(world, "a.png", test::asPNG(picture)), 0U);
    EXPECT_EQ(hashOf(world, "b.png", test::asPNG(test::storedFor(2, picture))), UINT64_MAX);
}

TEST(PerceptualHash, theDistanceIsTheNumberOfBitsThatDiffer) {
    EXPECT_EQ(PerceptualHash::hammingDistance(0, 0), 0);
    EXPECT_EQ(PerceptualHash::hammingDistance(0, UINT64_MAX), 64);
    EXPECT_EQ(PerceptualHash::hammingDistance(0b1011, 0b0010), 2);
}

TEST(PerceptualHash, whatCanNotBeReadHasNone) {
    const TestFolder world;
    const URL pipe = world / "pipe.png";
    ASSERT_EQ(::mkfifo(pipe.path().c_str(), 0600), 0);
    EXPECT_EQ(PerceptualHash::dHash(pipe), std::nullopt);
    EXPECT_EQ(PerceptualHash::dHash(world / "missing.png"), std::nullopt);
    EXPECT_EQ(PerceptualHash::dHash(world.file("text.png", "no picture")), std::nullopt);
    EXPECT_EQ(PerceptualHash::dHash(world.folder("folder.png")), std::nullopt);
}

/// The small ones; for large ones there are photographs.
TEST(PerceptualHash, agreesWithThePlainWayOnSmallPictures) {
    const TestFolder world;
    for (unsigned i = 0; i < 100; ++i) {
        const std::size_t width = 80 + i * 37 % 190;
        const ColourPicture scene = drawnScene(i, width, width * (50 + i % 7 * 15) / 100 + 3);
        const std::string jpeg =
            test::asJPEG(scene, {.quality = 60 + static_cast<int>(i % 40), .isProgressive = i % 3 == 0});
        EXPECT_LE(PerceptualHash::hammingDistance(hashOf(world, "picture.jpg", jpeg),
                                                  test::referenceHash(test::plainlyDecoded(jpeg))),
                  4)
            << "scene " << i;
    }
}

TEST(PerceptualHash, hardlyChangesWhenAPictureIsEncodedAnew) {
    const TestFolder world;
    for (unsigned i = 0; i < 30; ++i) {
        const ColourPicture scene = drawnScene(1'000 + i, 250 + i * 17, 200 + i % 5 * 40);
        const std::string jpeg = test::asJPEG(scene, {.isProgressive = i % 2 == 0});
        const std::uint64_t hash = hashOf(world, "a.jpg", jpeg);
        const ColourPicture pixels = test::plainlyDecoded(jpeg);
        const auto distance = [&](const std::string& bytes) {
            return PerceptualHash::hammingDistance(hash, hashOf(world, "b", bytes));
        };
        EXPECT_LE(distance(test::asPNG(pixels)), 2) << "PNG of scene " << i;
        EXPECT_LE(distance(test::asTIFF(pixels)), 2) << "TIFF of scene " << i;
        EXPECT_LE(distance(test::asBMP(pixels)), 2) << "BMP of scene " << i;
        EXPECT_LE(distance(test::asWebP(pixels)), 6) << "WebP of scene " << i;
        if (i % 10 == 0) {
            EXPECT_LE(distance(test::asHEIC(pixels)), 6) << "HEIC of scene " << i;
        }
        EXPECT_LE(distance(test::asPNG(test::shrunk(pixels, 2))), 6) << "half of scene " << i;
    }
}

TEST(PerceptualHash, otherPicturesAreFarAway) {
    const TestFolder world;
    std::vector<std::uint64_t> hashes;
    for (unsigned i = 0; i < 60; ++i)
        hashes.push_back(hashOf(world, "a.png", test::asPNG(drawnScene(2'000 + i, 180, 120))));
    int near = 0;
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j)
            near += PerceptualHash::hammingDistance(hashes[i], hashes[j]) <= 10 ? 1 : 0;
    }
    EXPECT_LE(near, 10) << "of 1,770 pairs";
}

TEST(PerceptualHash, theFirstNearSeedIsFoundByEverySearch) {
    std::mt19937_64 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
    std::vector<std::uint64_t> seeds(1'000);
    std::generate(seeds.begin(), seeds.end(), std::ref(random));
    EXPECT_EQ(PerceptualHash::firstWithin(seeds, seeds[700], 0), 700U);
    EXPECT_EQ(PerceptualHash::firstWithin(seeds, seeds[700] ^ 0x1F, 5), 700U);
    EXPECT_EQ(PerceptualHash::firstWithin(seeds, seeds[700] ^ 0x3F, 5), 1'000U);
    EXPECT_EQ(PerceptualHash::firstWithin(seeds, 0, 64), 0U);
    EXPECT_EQ(PerceptualHash::firstWithin({}, 0, 64), 0U);
    seeds[3] = seeds[700];
    EXPECT_EQ(PerceptualHash::firstWithin(seeds, seeds[700], 0), 3U);
}

/// The group of each, as they come.
std::vector<std::size_t> groupsOf(const std::vector<std::uint64_t>& hashes) {
    SimilarGroups groups(10);
    std::vector<std::size_t> numbers;
    for (const std::uint64_t hash : hashes)
        numbers.push_back(groups.add(hash));
    return numbers;
}

constexpr std::uint64_t bits(unsigned count) {
    return (std::uint64_t{1} << count) - 1;
}

TEST(SimilarGroups, tenBitsJoinAndElevenDoNot) {
    EXPECT_THAT(groupsOf({0, bits(10)}), ElementsAre(0U, 0U));
    EXPECT_THAT(groupsOf({0, bits(11)}), ElementsAre(0U, 1U));
}

TEST(SimilarGroups, ofTwoSeedsInReachTheOneThatOpenedFirstWins) {
    EXPECT_THAT(groupsOf({0, bits(14), bits(10)}), ElementsAre(0U, 1U, 0U)) << "4 bits from the second seed";
}

TEST(SimilarGroups, likenessIsNotPassedOnAndTheOrderMatters) {
    const std::uint64_t a = 0;
    const std::uint64_t b = bits(8);
    const std::uint64_t c = bits(16);
    EXPECT_THAT(groupsOf({a, b, c}), ElementsAre(0U, 0U, 1U));
    EXPECT_THAT(groupsOf({c, a, b}), ElementsAre(0U, 1U, 0U));
    EXPECT_THAT(groupsOf({b, a, c}), ElementsAre(0U, 0U, 0U));
}

}  // namespace
}  // namespace tavrin
